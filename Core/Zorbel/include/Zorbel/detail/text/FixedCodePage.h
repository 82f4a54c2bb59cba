#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <Zorbel/Export.h>

namespace Zorbel::detail {

/// The fixed ANSI code page of systems without code pages of their own: Windows-1252. Its five unassigned bytes are the
/// C1 controls of the same value. One byte is one character, in both directions.
class CodePage {
 public:
  static constexpr char kSubstitute = '?';

  static std::wstring Widen(std::string_view text) {
    std::wstring wide(text.size(), L'\0');
    for (std::size_t i = 0; i < text.size(); ++i) {
      wide[i] = ToWide(text[i]);
    }
    return wide;
  }

  static std::string Narrow(std::wstring_view text) {
    std::string narrow(text.size(), '\0');
    for (std::size_t i = 0; i < text.size(); ++i) {
      narrow[i] = ToNarrow(text[i]);
    }
    return narrow;
  }

  static wchar_t ToWide(char c) noexcept {
    const auto byte = static_cast<unsigned char>(c);
    return IsSpecial(byte) ? kSpecial[byte - kFirstSpecial] : static_cast<wchar_t>(byte);
  }

  /// A character that the code page lacks becomes the substitute.
  static char ToNarrow(wchar_t c) noexcept {
    const auto value = static_cast<char32_t>(c);
    if (value <= 0xFF && !IsSpecial(value)) {
      return static_cast<char>(static_cast<unsigned char>(value));
    }
    for (unsigned int i = 0; i < kSpecialCount; ++i) {
      if (kSpecial[i] == c) {
        return static_cast<char>(static_cast<unsigned char>(kFirstSpecial + i));
      }
    }
    return kSubstitute;
  }

 private:
  static constexpr unsigned int kFirstSpecial = 0x80;
  static constexpr unsigned int kSpecialCount = 32;
  ZORBEL_LOCAL static constexpr wchar_t kSpecial[kSpecialCount] = {
      0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
      0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
      0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

  static constexpr bool IsSpecial(char32_t value) noexcept {
    return value >= kFirstSpecial && value < kFirstSpecial + kSpecialCount;
  }
};

}  // namespace Zorbel::detail
