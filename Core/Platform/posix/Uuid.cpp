#include "Platform/Uuid.h"

#include <uuid/uuid.h>

namespace Platform {

bool CreateUuidText(std::string& text) {
  constexpr std::size_t kTextLength = 36;
  uuid_t uuid;
  char buffer[kTextLength + 1];
  uuid_generate(uuid);
  uuid_unparse_lower(uuid, buffer);
  text.assign(buffer, kTextLength);
  return true;
}

}  // namespace Platform
