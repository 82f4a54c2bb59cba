#pragma once

#include <climits>
#include <stdexcept>
#include <string>
#include <string_view>

// The two functions as the system's own header declares them, which defines too many macros to be included here.
extern "C" {
__declspec(dllimport) int __stdcall MultiByteToWideChar(unsigned int codePage, unsigned long flags, const char* narrow,
                                                        int narrowLength, wchar_t* wide, int wideLength);
__declspec(dllimport) int __stdcall WideCharToMultiByte(unsigned int codePage, unsigned long flags, const wchar_t* wide,
                                                        int wideLength, char* narrow, int narrowLength,
                                                        const char* substitute, int* usedSubstitute);
}

namespace Zorbel::detail {

/// The thread's ANSI code page. A character that it lacks becomes the system's default character.
class CodePage {
 public:
  static std::wstring Widen(std::string_view text) {
    const int size = Size(text.size());
    std::wstring wide(static_cast<std::size_t>(size), L'\0');  // never more characters than bytes
    const int length = size == 0 ? 0 : MultiByteToWideChar(kThreadCodePage, 0, text.data(), size, &wide[0], size);
    wide.resize(static_cast<std::size_t>(length));
    return wide;
  }

  static std::string Narrow(std::wstring_view text) {
    const int size = Size(text.size());
    if (size == 0) {
      return {};
    }
    const int length = WideCharToMultiByte(kThreadCodePage, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(kThreadCodePage, 0, text.data(), size, &narrow[0], length, nullptr, nullptr);
    return narrow;
  }

 private:
  static constexpr unsigned int kThreadCodePage = 3;  // CP_THREAD_ACP

  static int Size(std::size_t size) {
    if (size > INT_MAX) {
      throw std::length_error("text is too long");
    }
    return static_cast<int>(size);
  }
};

}  // namespace Zorbel::detail
