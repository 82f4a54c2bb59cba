#include "Errors/Raise.h"

#include <Zorbel/CException.h>

namespace Zorbel::Internal {

void Raise(const SOrigin& origin, const std::wstring& message) {
  throw CException(origin.file, origin.line, origin.function, message.c_str());
}

}  // namespace Zorbel::Internal
