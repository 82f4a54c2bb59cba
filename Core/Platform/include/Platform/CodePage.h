#pragma once

#include <string>
#include <string_view>

namespace Platform {

/// Decodes by the process's ANSI code page; all bytes of `text`, zero bytes included.
std::wstring AnsiToWide(std::string_view text);

/// Decodes UTF-8 and never fails: each maximal ill-formed part becomes one U+FFFD.
std::wstring Utf8ToWideLossy(std::string_view text);

/// Appends `codePoint` to `text` in the system's form of wide text.
void AppendWide(std::wstring& text, char32_t codePoint);

/// Converts the bytes of UTF-16 text, low byte first, to the process's ANSI code page. Returns false when that cannot
/// be done.
bool Utf16ToAnsi(std::string_view bytes, std::string& text);

}  // namespace Platform
