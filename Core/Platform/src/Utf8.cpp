#include "Platform/Utf8.h"

namespace Platform {
namespace {

constexpr char32_t kFirstSupplementary = 0x10000;
constexpr char32_t kLastCodePoint = 0x10FFFF;

bool IsHighSurrogate(char32_t c) { return c >= 0xD800 && c <= 0xDBFF; }
bool IsLowSurrogate(char32_t c) { return c >= 0xDC00 && c <= 0xDFFF; }

struct SByteRange {
  unsigned char low;
  unsigned char high;

  bool Contains(unsigned char byte) const { return byte >= low && byte <= high; }
};

struct SLead {
  std::size_t length;  // of a complete sequence; 0 for a byte that starts none
  SByteRange second;   // keeps out overlong forms, surrogates and what lies above the last code point
};

SLead ClassifyLead(unsigned char lead) {
  constexpr SByteRange kContinuation{0x80, 0xBF};
  if (lead >= 0xC2 && lead <= 0xDF) {
    return {2, kContinuation};
  }
  switch (lead) {
    case 0xE0: return {3, {0xA0, 0xBF}};
    case 0xED: return {3, {0x80, 0x9F}};
    case 0xF0: return {4, {0x90, 0xBF}};
    case 0xF4: return {4, {0x80, 0x8F}};
    default: break;
  }
  if (lead >= 0xE1 && lead <= 0xEF) {
    return {3, kContinuation};
  }
  if (lead >= 0xF1 && lead <= 0xF3) {
    return {4, kContinuation};
  }
  return {0, kContinuation};
}

SCodePoint DecodeMultiByte(std::string_view text, SLead lead) {
  const auto first = static_cast<unsigned char>(text.front());
  char32_t value = first & (0xFFU >> (lead.length + 1));
  SByteRange range = lead.second;
  for (std::size_t i = 1; i < lead.length; ++i) {
    if (i == text.size() || !range.Contains(static_cast<unsigned char>(text[i]))) {
      return {kReplacementCharacter, i, false};
    }
    value = (value << 6) | (static_cast<unsigned char>(text[i]) & 0x3FU);
    range = {0x80, 0xBF};
  }
  return {value, lead.length, true};
}

char32_t NextCodePoint(std::wstring_view text, std::size_t& position) {
  const auto c = static_cast<char32_t>(text[position++]);
  if (IsHighSurrogate(c) && position < text.size() && IsLowSurrogate(static_cast<char32_t>(text[position]))) {
    const auto low = static_cast<char32_t>(text[position++]);
    return kFirstSupplementary + ((c - 0xD800) << 10) + (low - 0xDC00);
  }
  return IsHighSurrogate(c) || IsLowSurrogate(c) || c > kLastCodePoint ? kReplacementCharacter : c;
}

}  // namespace

SCodePoint DecodeUtf8(std::string_view text) {
  if (text.empty()) {
    return {0, 0, true};
  }
  const auto first = static_cast<unsigned char>(text.front());
  if (first < 0x80) {
    return {first, 1, true};
  }
  const SLead lead = ClassifyLead(first);
  return lead.length == 0 ? SCodePoint{kReplacementCharacter, 1, false} : DecodeMultiByte(text, lead);
}

void AppendUtf8(std::string& text, char32_t codePoint) {
  const auto append = [&text](char32_t byte) { text.push_back(static_cast<char>(byte)); };
  const auto appendContinuation = [&](unsigned int shift) { append(0x80 | ((codePoint >> shift) & 0x3F)); };
  if (codePoint < 0x80) {
    append(codePoint);
  } else if (codePoint < 0x800) {
    append(0xC0 | (codePoint >> 6));
    appendContinuation(0);
  } else if (codePoint < kFirstSupplementary) {
    append(0xE0 | (codePoint >> 12));
    appendContinuation(6);
    appendContinuation(0);
  } else {
    append(0xF0 | (codePoint >> 18));
    appendContinuation(12);
    appendContinuation(6);
    appendContinuation(0);
  }
}

std::string WideToUtf8(std::wstring_view text) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t position = 0; position < text.size();) {
    AppendUtf8(result, NextCodePoint(text, position));
  }
  return result;
}

void AppendUtf16(std::wstring& text, char32_t codePoint) {
  if (codePoint < kFirstSupplementary) {
    text.push_back(static_cast<wchar_t>(codePoint));
    return;
  }
  const char32_t offset = codePoint - kFirstSupplementary;
  text.push_back(static_cast<wchar_t>(0xD800 + (offset >> 10)));
  text.push_back(static_cast<wchar_t>(0xDC00 + (offset & 0x3FF)));
}

}  // namespace Platform
