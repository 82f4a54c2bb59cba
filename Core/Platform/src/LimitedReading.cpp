#include "LimitedReading.h"

#include <algorithm>
#include <memory>

namespace Platform {

EReading ReadLimited(std::FILE* file, std::uint64_t expected, std::size_t limit, std::string& content) {
  if (expected > limit) {
    return EReading::kTooLarge;
  }
  std::setvbuf(file, nullptr, _IONBF, 0);  // the buffer below serves, and nothing is read ahead
  content.clear();
  content.reserve(static_cast<std::size_t>(expected));
  constexpr std::size_t kBlock = std::size_t{64} * 1024;
  const auto buffer = std::make_unique_for_overwrite<char[]>(kBlock);  // too much for the stack of a small thread
  while (content.size() <= limit) {
    const std::size_t count = std::fread(buffer.get(), 1, std::min(kBlock, limit - content.size() + 1), file);
    if (count == 0) {
      return std::ferror(file) != 0 ? EReading::kFailed : EReading::kDone;
    }
    content.append(buffer.get(), count);
  }
  return EReading::kTooLarge;
}

}  // namespace Platform
