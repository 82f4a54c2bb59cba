#include "Platform/CodePage.h"

#include <climits>
#include <cstring>

#include "Platform/Utf8.h"
#include "WindowsApi.h"

namespace Platform {
namespace {

std::wstring Decode(UINT codePage, std::string_view text) {
  if (text.empty() || text.size() > INT_MAX) {
    return {};
  }
  const int size = static_cast<int>(text.size());
  const int length = MultiByteToWideChar(codePage, 0, text.data(), size, nullptr, 0);
  std::wstring result(static_cast<std::size_t>(length), L'\0');
  MultiByteToWideChar(codePage, 0, text.data(), size, result.data(), length);
  return result;
}

}  // namespace

std::wstring AnsiToWide(std::string_view text) { return Decode(CP_ACP, text); }

std::wstring Utf8ToWideLossy(std::string_view text) { return Decode(CP_UTF8, text); }

void AppendWide(std::wstring& text, char32_t codePoint) { AppendUtf16(text, codePoint); }

bool Utf16ToAnsi(std::string_view bytes, std::string& text) {
  std::wstring units(bytes.size() / sizeof(wchar_t), L'\0');
  std::memcpy(units.data(), bytes.data(), units.size() * sizeof(wchar_t));
  text.clear();
  if (units.empty() || units.size() > INT_MAX) {
    return units.empty();
  }
  const int count = static_cast<int>(units.size());
  const int length = WideCharToMultiByte(CP_ACP, 0, units.data(), count, nullptr, 0, nullptr, nullptr);
  text.resize(static_cast<std::size_t>(length));
  return WideCharToMultiByte(CP_ACP, 0, units.data(), count, text.data(), length, nullptr, nullptr) > 0;
}

}  // namespace Platform
