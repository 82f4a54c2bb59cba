#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <Zorbel/CStringT.h>

namespace Zorbel::Kit {

inline constexpr char32_t kNoCodePoint = 0xFFFFFFFF;

/// Takes one code point off the start of a text that is not empty; `kNoCodePoint` when no valid one stands there.
inline char32_t TakeCodePoint(std::string_view& text) {
  constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};  // by length: shorter forms only
  const auto lead = static_cast<unsigned char>(text.front());
  const std::size_t length = lead < 0x80 ? 1 : lead < 0xC0 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  if (length == 0 || lead >= 0xF8 || text.size() < length) {
    return kNoCodePoint;
  }
  char32_t point = length == 1 ? lead : lead & (0x7FU >> length);
  for (const char c : text.substr(1, length - 1)) {
    if ((static_cast<unsigned char>(c) & 0xC0U) != 0x80U) {
      return kNoCodePoint;
    }
    point = (point << 6) | (static_cast<unsigned char>(c) & 0x3FU);
  }
  text.remove_prefix(length);
  const bool valid = point >= kSmallest[length] && point <= 0x10FFFF && (point < 0xD800 || point > 0xDFFF);
  return valid ? point : kNoCodePoint;
}

inline void AppendCodePoint(std::wstring& text, char32_t point) {
  if (sizeof(wchar_t) == 2 && point >= 0x10000) {
    text += static_cast<wchar_t>(0xD800 + ((point - 0x10000) >> 10));
    text += static_cast<wchar_t>(0xDC00 + ((point - 0x10000) & 0x3FF));
  } else {
    text += static_cast<wchar_t>(point);
  }
}

/// Widens a text of unknown encoding: as UTF-8 when it is that, else by the thread's ANSI code page.
inline CStringT<wchar_t> Decoded(const std::string& text) {
  std::wstring wide;
  for (std::string_view rest = text; !rest.empty();) {
    const char32_t point = TakeCodePoint(rest);
    if (point == kNoCodePoint) {
      return CStringT<wchar_t>(text.c_str());
    }
    AppendCodePoint(wide, point);
  }
  return CStringT<wchar_t>(wide.c_str());
}
inline CStringT<wchar_t> Decoded(CStringT<wchar_t> text) { return text; }

}  // namespace Zorbel::Kit
