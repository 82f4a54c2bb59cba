#include "BasePool/CbConversion.h"

#include <stdexcept>

#include "Platform/CodePage.h"
#include "Platform/Utf8.h"

namespace {

template <class F>
std::wstring Decode(std::string_view text, F append) {
  std::wstring result;
  result.reserve(text.size());
  while (!text.empty()) {
    const Platform::SCodePoint next = Platform::DecodeUtf8(text);
    if (!next.wellFormed) {
      throw std::range_error("bad conversion");
    }
    append(result, next.value);
    text.remove_prefix(next.length);
  }
  return result;
}

}  // namespace

std::wstring Utf8ToWide(std::string_view text) { return Decode(text, &Platform::AppendWide); }

std::wstring Utf8ToUtf16(std::string_view text) { return Decode(text, &Platform::AppendUtf16); }

std::wstring AnsiToWide(std::string_view text) { return Platform::AnsiToWide(text); }
