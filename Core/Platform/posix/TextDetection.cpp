#include "Platform/TextDetection.h"

#include <cstddef>

namespace Platform {
namespace {

constexpr std::string_view kMarks[] = {"\xFF\xFE", "\xEF\xFF"};  // the second is no byte-order mark, but in use

bool HasZeroUnit(std::string_view bytes) {
  for (std::size_t i = 0; i < bytes.size(); i += 2) {
    if (bytes[i] == '\0' && bytes[i + 1] == '\0') {
      return true;
    }
  }
  return false;
}

}  // namespace

// Without a mark, markup shows: its first character has a zero high byte. No text has a zero unit; binary data has, and
// so have characters of 32 bits.
bool IsUtf16Text(std::string_view bytes) {
  for (const std::string_view mark : kMarks) {
    if (bytes.starts_with(mark)) {
      return true;
    }
  }
  if (bytes.size() < 2 || bytes.size() % 2 != 0) {
    return false;
  }
  constexpr std::size_t kSample = 256;  // enough for a declaration or a root element, even of the shortest files
  const std::string_view sample = bytes.substr(0, kSample);
  return sample[1] == '\0' && !HasZeroUnit(sample);
}

}  // namespace Platform
