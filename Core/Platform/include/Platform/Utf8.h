#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Platform {

inline constexpr char32_t kReplacementCharacter = 0xFFFD;

struct SCodePoint {
  char32_t value;      // U+FFFD when ill-formed
  std::size_t length;  // bytes taken: of the sequence, or of the maximal ill-formed part; 0 only at the end of the text
  bool wellFormed;
};

/// Decodes the first code point of `text`. Overlong forms, surrogates and values above U+10FFFF are ill-formed.
SCodePoint DecodeUtf8(std::string_view text);

void AppendUtf8(std::string& text, char32_t codePoint);

/// Encodes as UTF-8 and never fails: pairs of surrogates are joined, what is no code point becomes U+FFFD.
std::string WideToUtf8(std::wstring_view text);

/// Appends `codePoint` as UTF-16 units, one wide character each.
void AppendUtf16(std::wstring& text, char32_t codePoint);

}  // namespace Platform
