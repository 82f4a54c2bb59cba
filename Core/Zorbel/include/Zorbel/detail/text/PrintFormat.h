#pragma once

#include <climits>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include <Zorbel/Export.h>
#include <Zorbel/detail/text/CodePage.h>

namespace Zorbel::detail {

/// printf for both widths of text, with the wide rules that the system's formats are written in, on every platform:
/// `%s` and `%c` take the width of the format, `%S` and `%C` the other one, `h` narrow and `l` wide text, and `I64`
/// is a length like `ll`. Text of the other width is converted by the thread's code page. Numbers are the C library's.
template <class C>
class PrintFormatter {
 public:
  PrintFormatter(const PrintFormatter&) = delete;
  PrintFormatter& operator=(const PrintFormatter&) = delete;

  /// Replaces `target` by the formatted text. Returns false, leaving `target` alone, when `format` is null or holds a
  /// conversion that cannot be carried out, or when the text would be longer than an int counts.
  static bool Format(std::basic_string<C>& target, const C* format, va_list arguments) {
    if (format == nullptr) {
      return false;
    }
    PrintFormatter formatter(format, arguments);
    if (!formatter.Run()) {
      return false;
    }
    target = std::move(formatter.m_text);
    return true;
  }

 private:
  enum class ELength { none, hh, h, l, ll, j, z, t, L, I32 };

  struct SConversion {
    std::string flags;
    bool left = false;
    int width = 0;
    int precision = -1;
    ELength length = ELength::none;
    char letter = 0;
  };

  PrintFormatter(const C* format, va_list arguments) : m_next(format) { va_copy(m_arguments, arguments); }
  ~PrintFormatter() { va_end(m_arguments); }

  bool Run() {
    while (*m_next != 0) {
      if (*m_next != '%') {
        AppendLiteral();
      } else if (!AppendConversion()) {
        return false;
      }
    }
    return m_text.size() <= kLongest;
  }

  void AppendLiteral() {
    const C* first = m_next;
    while (*m_next != 0 && *m_next != '%') {
      ++m_next;
    }
    m_text.append(first, static_cast<std::size_t>(m_next - first));
  }

  bool AppendConversion() {
    ++m_next;  // the percent sign
    if (*m_next == '%') {
      m_text.push_back(*m_next++);
      return true;
    }
    SConversion conversion;
    ReadFlags(conversion);
    if (!ReadWidth(conversion) || !ReadPrecision(conversion)) {
      return false;
    }
    ReadLength(conversion);
    conversion.letter = *m_next > 0 && *m_next < 0x80 ? static_cast<char>(*m_next) : '\0';
    if (conversion.letter == '\0') {
      return false;
    }
    ++m_next;
    return Append(conversion);
  }

  void ReadFlags(SConversion& conversion) {
    for (; *m_next == '-' || *m_next == '+' || *m_next == ' ' || *m_next == '#' || *m_next == '0'; ++m_next) {
      conversion.flags.push_back(static_cast<char>(*m_next));
      conversion.left = conversion.left || *m_next == '-';
    }
  }

  bool ReadWidth(SConversion& conversion) {
    if (!ReadNumber(conversion.width) || conversion.width == INT_MIN) {
      return false;
    }
    if (conversion.width < 0) {
      conversion.width = -conversion.width;
      conversion.left = true;
      conversion.flags.push_back('-');
    }
    return true;
  }

  bool ReadPrecision(SConversion& conversion) {
    if (*m_next != '.') {
      return true;
    }
    ++m_next;
    conversion.precision = 0;
    return ReadNumber(conversion.precision);
  }

  bool ReadNumber(int& number) {
    if (*m_next == '*') {
      ++m_next;
      number = va_arg(m_arguments, int);
      return true;
    }
    for (; *m_next >= '0' && *m_next <= '9'; ++m_next) {
      const int digit = static_cast<int>(*m_next - '0');
      if (number > (INT_MAX - digit) / 10) {
        return false;
      }
      number = number * 10 + digit;
    }
    return true;
  }

  ZORBEL_LOCAL void ReadLength(SConversion& conversion) {
    struct SName {
      const char* text;
      ELength length;
    };
    static constexpr SName kNames[] = {{"I64", ELength::ll}, {"I32", ELength::I32}, {"I", ELength::t},
                                       {"hh", ELength::hh},  {"h", ELength::h},     {"ll", ELength::ll},
                                       {"l", ELength::l},    {"w", ELength::l},     {"j", ELength::j},
                                       {"z", ELength::z},    {"t", ELength::t},     {"L", ELength::L}};
    for (const SName& name : kNames) {
      if (Skip(name.text)) {
        conversion.length = name.length;
        return;
      }
    }
  }

  bool Skip(const char* text) {
    const C* end = m_next;
    for (; *text != '\0'; ++text, ++end) {
      if (*end != static_cast<C>(*text)) {
        return false;
      }
    }
    m_next = end;
    return true;
  }

  bool Append(const SConversion& conversion) {
    switch (conversion.letter) {
      case 'd':
      case 'i': return AppendNumber(conversion, "ll", SignedArgument(conversion.length));
      case 'u':
      case 'o':
      case 'x':
      case 'X': return AppendNumber(conversion, "ll", UnsignedArgument(conversion.length));
      case 'f':
      case 'F':
      case 'e':
      case 'E':
      case 'g':
      case 'G':
      case 'a':
      case 'A':
        return conversion.length == ELength::L ? AppendNumber(conversion, "L", va_arg(m_arguments, long double))
                                               : AppendNumber(conversion, "", va_arg(m_arguments, double));
      case 'p': return AppendNumber(conversion, "", va_arg(m_arguments, void*));
      case 'c':
      case 'C': return AppendCharacter(conversion);
      case 's':
      case 'S': return AppendString(conversion);
      default: return false;
    }
  }

  long long SignedArgument(ELength length) {
    switch (length) {
      case ELength::hh: return static_cast<signed char>(va_arg(m_arguments, int));
      case ELength::h: return static_cast<short>(va_arg(m_arguments, int));
      case ELength::l: return va_arg(m_arguments, long);
      case ELength::ll: return va_arg(m_arguments, long long);
      case ELength::j: return va_arg(m_arguments, std::intmax_t);
      case ELength::z:
      case ELength::t: return va_arg(m_arguments, std::ptrdiff_t);
      default: return va_arg(m_arguments, int);
    }
  }

  unsigned long long UnsignedArgument(ELength length) {
    switch (length) {
      case ELength::hh: return static_cast<unsigned char>(va_arg(m_arguments, unsigned int));
      case ELength::h: return static_cast<unsigned short>(va_arg(m_arguments, unsigned int));
      case ELength::l: return va_arg(m_arguments, unsigned long);
      case ELength::ll: return va_arg(m_arguments, unsigned long long);
      case ELength::j: return va_arg(m_arguments, std::uintmax_t);
      case ELength::z:
      case ELength::t: return va_arg(m_arguments, std::size_t);
      default: return va_arg(m_arguments, unsigned int);
    }
  }

  template <class T>
  bool AppendNumber(const SConversion& conversion, const char* length, T value) {
    const std::string format = "%" + conversion.flags + "*.*" + length + conversion.letter;
    char buffer[128];
    const int count =
        std::snprintf(buffer, sizeof buffer, format.c_str(), conversion.width, conversion.precision, value);
    if (count < 0 || !Fits(static_cast<std::size_t>(count))) {
      return false;
    }
    const auto size = static_cast<std::size_t>(count);
    if (size < sizeof buffer) {
      AppendAscii(buffer, size);
      return true;
    }
    std::string text(size + 1, '\0');
    std::snprintf(text.data(), text.size(), format.c_str(), conversion.width, conversion.precision, value);
    AppendAscii(text.data(), size);
    return true;
  }

  bool AppendCharacter(const SConversion& conversion) {
    if (IsWideText(conversion)) {
      const auto c = static_cast<wchar_t>(va_arg(m_arguments, int));
      return AppendText(conversion, std::wstring_view(&c, 1));
    }
    const auto c = static_cast<char>(va_arg(m_arguments, int));
    return AppendText(conversion, std::string_view(&c, 1));
  }

  bool AppendString(const SConversion& conversion) {
    if (IsWideText(conversion)) {
      const auto* text = va_arg(m_arguments, const wchar_t*);
      return AppendText(conversion, Bounded(text != nullptr ? text : L"(null)", conversion.precision));
    }
    const auto* text = va_arg(m_arguments, const char*);
    return AppendText(conversion, Bounded(text != nullptr ? text : "(null)", conversion.precision));
  }

  static bool IsWideText(const SConversion& conversion) {
    if (conversion.length == ELength::l || conversion.length == ELength::ll) {
      return true;
    }
    if (conversion.length == ELength::h || conversion.length == ELength::hh) {
      return false;
    }
    const bool ownWidth = conversion.letter == 's' || conversion.letter == 'c';
    return std::is_same_v<C, wchar_t> == ownWidth;
  }

  template <class D>
  static std::basic_string_view<D> Bounded(const D* text, int precision) {
    std::size_t length = 0;
    while ((precision < 0 || length < static_cast<std::size_t>(precision)) && text[length] != 0) {
      ++length;
    }
    return {text, length};
  }

  template <class D>
  bool AppendText(const SConversion& conversion, std::basic_string_view<D> text) {
    if constexpr (std::is_same_v<C, D>) {
      return AppendPadded(conversion, text);
    } else if constexpr (std::is_same_v<D, char>) {
      return AppendPadded(conversion, std::basic_string_view<C>(CodePage::Widen(text)));
    } else {
      return AppendPadded(conversion, std::basic_string_view<C>(CodePage::Narrow(text)));
    }
  }

  bool AppendPadded(const SConversion& conversion, std::basic_string_view<C> text) {
    const auto width = static_cast<std::size_t>(conversion.width);
    const std::size_t padding = width > text.size() ? width - text.size() : 0;
    if (!Fits(text.size()) || !Fits(padding)) {
      return false;
    }
    if (!conversion.left) {
      m_text.append(padding, static_cast<C>(' '));
    }
    m_text.append(text.data(), text.size());
    if (conversion.left) {
      m_text.append(padding, static_cast<C>(' '));
    }
    return true;
  }

  void AppendAscii(const char* text, std::size_t size) {
    for (std::size_t i = 0; i < size; ++i) {
      m_text.push_back(static_cast<C>(static_cast<unsigned char>(text[i])));
    }
  }

  bool Fits(std::size_t size) const { return size <= kLongest && m_text.size() <= kLongest - size; }

  static constexpr std::size_t kLongest = INT_MAX;

  const C* m_next;
  va_list m_arguments;
  std::basic_string<C> m_text;
};

}  // namespace Zorbel::detail
