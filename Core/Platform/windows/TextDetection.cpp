#include "Platform/TextDetection.h"

#include <climits>

#include "WindowsApi.h"

namespace Platform {

bool IsUtf16Text(std::string_view bytes) {
  const int size = bytes.size() > INT_MAX ? INT_MAX : static_cast<int>(bytes.size());
  return IsTextUnicode(bytes.data(), size, nullptr) != FALSE;
}

}  // namespace Platform
