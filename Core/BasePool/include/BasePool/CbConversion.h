#pragma once

#include <string>
#include <string_view>

/// Decode UTF-8. Throw: std::range_error "bad conversion" when the text is not valid UTF-8.
/// `Utf8ToWide` gives the system's form of wide text; `Utf8ToUtf16` UTF-16 units, one wide character each.
std::wstring Utf8ToWide(std::string_view text);
std::wstring Utf8ToUtf16(std::string_view text);

/// Decodes by the process's ANSI code page; all bytes of the text, zero bytes included.
std::wstring AnsiToWide(std::string_view text);
