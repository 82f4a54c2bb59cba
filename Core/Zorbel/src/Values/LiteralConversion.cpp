#include "Values/LiteralConversion.h"

#include <Zorbel/CStringT.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include "Errors/Raise.h"

namespace Zorbel::Literal {
namespace {

// ASCII's, next line, and the spaces and line ends of Unicode; no locale adds to them.
constexpr std::wstring_view kWhiteSpace =
    L" \t\n\v\f\r\u0085\u00A0\u1680\u2000\u2001\u2002\u2003\u2004\u2005\u2006\u2007\u2008\u2009\u200A"
    L"\u2028\u2029\u202F\u205F\u3000";

struct SSignedText {
  bool negative;
  std::wstring_view digits;
};

SSignedText SplitSign(const wchar_t* text) {
  std::wstring_view rest = text;
  rest.remove_prefix(std::min(rest.find_first_not_of(kWhiteSpace), rest.size()));
  const bool negative = rest.starts_with(L'-');
  if (negative || rest.starts_with(L'+')) {
    rest.remove_prefix(1);
  }
  return {negative, rest};
}

unsigned int DigitOf(wchar_t c) {
  if (c >= L'0' && c <= L'9') {
    return static_cast<unsigned int>(c - L'0');
  }
  const wchar_t lower = c | 0x20;
  constexpr unsigned int kNoDigit = 99;
  return lower >= L'a' && lower <= L'f' ? static_cast<unsigned int>(lower - L'a') + 10 : kNoDigit;
}

// Reads digits up to the first other character; a larger value than `largest` gives `largest`.
std::uint64_t ReadDigits(std::wstring_view text, unsigned int base, std::uint64_t largest) {
  std::uint64_t value = 0;
  for (const wchar_t c : text) {
    const unsigned int digit = DigitOf(c);
    if (digit >= base) {
      break;
    }
    value = std::min(value * base + digit, largest + 1);
  }
  return std::min(value, largest);
}

bool HasHexadecimalPrefix(std::wstring_view text) {
  return text.size() > 2 && text[0] == L'0' && (text[1] == L'x' || text[1] == L'X');
}

std::string LeadingAscii(std::wstring_view text) {
  std::string result;
  for (const wchar_t c : text) {
    if (c <= 0 || c >= 0x80) {
      break;
    }
    result.push_back(static_cast<char>(c));
  }
  return result;
}

// Tells too small from too large by where the first digit stands, which the exponent moves.
bool IsTiny(std::string_view text, std::chars_format format) {
  const bool hexadecimal = format == std::chars_format::hex;
  const std::size_t marker = std::min(text.find_first_of(hexadecimal ? "pP" : "eE"), text.size());
  const std::string_view mantissa = text.substr(0, marker);
  const auto point = static_cast<std::int64_t>(std::min(mantissa.find('.'), mantissa.size()));
  const auto firstDigit = static_cast<std::int64_t>(std::min(mantissa.find_first_not_of("0."), mantissa.size()));
  const std::int64_t places = (point - firstDigit) * (hexadecimal ? 4 : 1);

  std::string_view exponent = text.substr(std::min(marker + 1, text.size()));
  const bool negative = exponent.starts_with('-');
  exponent.remove_prefix(negative || exponent.starts_with('+') ? 1 : 0);
  std::int32_t moved = 0;
  if (std::from_chars(exponent.data(), exponent.data() + exponent.size(), moved).ec == std::errc::result_out_of_range) {
    return negative;
  }
  return negative ? places < moved : places < -std::int64_t{moved};
}

// A value out of the range of double may still be in that of long double.
double OutOfRange(const char* first, const char* last, std::chars_format format) {
  long double value = 0;
  if (std::from_chars(first, last, value, format).ec == std::errc()) {
    return static_cast<double>(value);
  }
  const std::string_view text(first, static_cast<std::size_t>(last - first));
  return IsTiny(text, format) ? 0.0 : std::numeric_limits<double>::infinity();
}

// An exponent without digits does not belong to the number, whatever its signs.
std::string_view WithoutEmptyExponent(std::string_view hexadecimal) {
  const std::size_t marker = hexadecimal.find_first_of("pP");
  if (marker == std::string_view::npos) {
    return hexadecimal;
  }
  std::string_view exponent = hexadecimal.substr(marker + 1);
  exponent.remove_prefix(exponent.starts_with('+') || exponent.starts_with('-') ? 1 : 0);
  return exponent.find_first_of("0123456789") == 0 ? hexadecimal : hexadecimal.substr(0, marker);
}

double ReadDouble(std::string_view text, std::chars_format format, bool negative) {
  const char* first = text.data();
  double value = 0;
  const std::from_chars_result result = std::from_chars(first, first + text.size(), value, format);
  if (result.ec == std::errc::invalid_argument) {
    return 0;  // without a sign
  }
  if (result.ec == std::errc::result_out_of_range) {
    value = OutOfRange(first, result.ptr, format);
  }
  return negative ? -value : value;
}

}  // namespace

bool ToBool(const wchar_t* text) {
  const std::wstring_view value = text;
  if (value != L"true" && value != L"false") {
    Internal::Raise({"Core/Zorbel/src/CTypeManager", "`anonymous-namespace'::stringToBool"}, L"Invalid bool value");
  }
  return value == L"true";
}

char ToChar(const wchar_t* text) { return CStringT<char>(text).GetAt(0); }

int ToInt(const wchar_t* text) {
  constexpr unsigned int kDecimal = 10;
  constexpr auto kLargest = static_cast<std::uint64_t>(std::numeric_limits<std::int32_t>::max());
  const SSignedText number = SplitSign(text);
  const std::uint64_t value = ReadDigits(number.digits, kDecimal, number.negative ? kLargest + 1 : kLargest);
  return static_cast<int>(number.negative ? -static_cast<std::int64_t>(value) : static_cast<std::int64_t>(value));
}

unsigned int ToUnsigned(const wchar_t* text) {
  constexpr std::uint64_t kLargest = std::numeric_limits<std::uint32_t>::max();
  SSignedText number = SplitSign(text);
  unsigned int base = number.digits.starts_with(L'0') ? 8 : 10;
  if (HasHexadecimalPrefix(number.digits)) {
    base = 16;
    number.digits.remove_prefix(2);
  }
  const std::uint64_t value = ReadDigits(number.digits, base, kLargest + 1);
  if (value > kLargest) {
    return static_cast<unsigned int>(kLargest);
  }
  return static_cast<unsigned int>(number.negative ? 0 - value : value);
}

double ToDouble(const wchar_t* text) {
  const SSignedText number = SplitSign(text);
  const std::string digits = LeadingAscii(number.digits);
  // What stands behind a sign or a prefix has to be a number without those: the reading below takes more.
  if (HasHexadecimalPrefix(number.digits)) {
    const std::string_view hexadecimal = std::string_view(digits).substr(2);
    const bool starts = hexadecimal.find_first_of("0123456789abcdefABCDEF.") == 0;
    return starts ? ReadDouble(WithoutEmptyExponent(hexadecimal), std::chars_format::hex, number.negative) : 0;
  }
  return digits.starts_with('-') ? 0 : ReadDouble(digits, std::chars_format::general, number.negative);
}

}  // namespace Zorbel::Literal
