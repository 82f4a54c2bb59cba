#include "Platform/CodePage.h"

#include <Zorbel/detail/text/FixedCodePage.h>

#include "Platform/Utf8.h"

namespace Platform {
namespace {

using Zorbel::detail::CodePage;

char32_t UnitAt(std::string_view bytes, std::size_t index) {
  const auto low = static_cast<unsigned char>(bytes[2 * index]);
  const auto high = static_cast<unsigned char>(bytes[2 * index + 1]);
  return static_cast<char32_t>(low | (high << 8));
}

bool IsPair(char32_t first, char32_t second) {
  return first >= 0xD800 && first <= 0xDBFF && second >= 0xDC00 && second <= 0xDFFF;
}

}  // namespace

std::wstring AnsiToWide(std::string_view text) { return CodePage::Widen(text); }

std::wstring Utf8ToWideLossy(std::string_view text) {
  std::wstring result;
  result.reserve(text.size());
  while (!text.empty()) {
    const SCodePoint next = DecodeUtf8(text);
    AppendWide(result, next.value);
    text.remove_prefix(next.length);
  }
  return result;
}

void AppendWide(std::wstring& text, char32_t codePoint) { text.push_back(static_cast<wchar_t>(codePoint)); }

// A character outside the code page is one substitute, also when it takes a pair of units.
bool Utf16ToAnsi(std::string_view bytes, std::string& text) {
  const std::size_t units = bytes.size() / 2;
  text.clear();
  text.reserve(units);
  for (std::size_t i = 0; i < units; ++i) {
    const char32_t unit = UnitAt(bytes, i);
    text.push_back(CodePage::ToNarrow(static_cast<wchar_t>(unit)));
    if (i + 1 < units && IsPair(unit, UnitAt(bytes, i + 1))) {
      ++i;
    }
  }
  return true;
}

}  // namespace Platform
