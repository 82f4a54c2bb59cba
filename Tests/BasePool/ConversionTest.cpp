#include <Support/LogCapture.h>
#include <ThisPlatform.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>

#include "BasePool/CbConversion.h"
#include "BasePool/CbStr.h"
#include "Platform/CodePage.h"
#include "Platform/Thread.h"
#include "Platform/Utf8.h"

namespace {

using Test::LogCapture;

template <class... Arguments>
std::wstring Formatted(const wchar_t* format, Arguments... arguments) {
  std::wstring text = L"replaced";
  EXPECT_EQ(&text, &CbStrT<std::wstring>(text).Format(format, arguments...));
  return text;
}

void ExpectBadConversion(std::wstring (*convert)(std::string_view), std::string_view text) {
  try {
    convert(text);
    ADD_FAILURE() << text;
  } catch (const std::range_error& error) {
    EXPECT_STREQ("bad conversion", error.what());
  }
}

}  // namespace

TEST(Utf8, IsDecodedToWideTextAndToUtf16Units) {
  const struct {
    std::string bytes;
    std::wstring wide, utf16;
  } cases[] = {{"", L"", L""},
               {std::string("a\0b", 3), std::wstring(L"a\0b", 3), std::wstring(L"a\0b", 3)},
               {"\x7F\xC2\x80\xC3\xB6", L"\u007F\u0080\u00F6", L"\u007F\u0080\u00F6"},
               {"\xE0\xA0\x80\xED\x9F\xBF\xEF\xBF\xBF", L"\u0800\uD7FF\uFFFF", L"\u0800\uD7FF\uFFFF"},
               {"\xF0\x90\x80\x80", L"\U00010000", {wchar_t{0xD800}, wchar_t{0xDC00}}},
               {"\xF4\x8F\xBF\xBF", L"\U0010FFFF", {wchar_t{0xDBFF}, wchar_t{0xDFFF}}}};
  for (const auto& [bytes, wide, utf16] : cases) {
    EXPECT_EQ(wide, Utf8ToWide(bytes));
    EXPECT_EQ(wide, Platform::Utf8ToWideLossy(bytes));
    EXPECT_EQ(utf16, Utf8ToUtf16(bytes));
    EXPECT_EQ(bytes, Platform::WideToUtf8(wide));
    EXPECT_EQ(bytes, Platform::WideToUtf8(utf16));
  }
  EXPECT_EQ("\xEF\xBF\xBDz", Platform::WideToUtf8(std::wstring{wchar_t{0xD800}, L'z'}));
}

TEST(Utf8, ThatIsInvalidIsABadConversionOrAReplacementForEachMaximalPart) {
  const std::pair<const char*, std::size_t> cases[] = {
      {"\x80", 1},     {"\xC3", 1},         {"\xE2\x82", 1},     {"\xF0\x9F\x98", 1},     {"\xF5\xFF", 2},
      {"\xC0\x80", 2}, {"\xE0\x9F\xBF", 3}, {"\xED\xA0\x80", 3}, {"\xF0\x8F\xBF\xBF", 4}, {"\xF4\x90\x80\x80", 4}};
  for (const auto& [bytes, parts] : cases) {
    for (const std::string& text : {std::string(bytes), std::string(bytes) + "\xC3\xB6"}) {
      ExpectBadConversion(&Utf8ToWide, text);
      ExpectBadConversion(&Utf8ToUtf16, text);
      const std::wstring valid = text == bytes ? L"" : L"\u00F6";
      const std::wstring lossy = Platform::Utf8ToWideLossy(text);
      const std::size_t count = ::Test::kLossyUtf8CountsMaximalParts ? parts : lossy.size() - valid.size();
      EXPECT_LT(0U, count);
      EXPECT_EQ(std::wstring(count, 0xFFFD) + valid, lossy);
    }
  }
}

TEST(AnsiToWide, ConvertsAllBytes) {
  EXPECT_EQ(L"", AnsiToWide(""));
  EXPECT_EQ(std::wstring(L"a\0\u00F6\u20AC", 4), AnsiToWide(std::string("a\0\xF6\x80", 4)));
}

TEST(CbStr, FormatsByTheWideRules) {
  EXPECT_EQ(L"Bean 'x' requested, but not configured", Formatted(L"Bean '%s' requested, but not configured", L"x"));
  EXPECT_EQ(L"", Formatted(L""));
  EXPECT_EQ(L"18446744073709551615%", Formatted(L"%I64u%%", UINT64_MAX));
  EXPECT_EQ(L"-9223372036854775808 -1 7", Formatted(L"%I64d %I32d %Iu", INT64_MIN, -1, std::size_t{7}));
  EXPECT_EQ(L"w n n w \u20AC", Formatted(L"%s %S %hs %ls %C", L"w", "n", "n", L"w", '\x80'));
  EXPECT_EQ(L"[  ab][ab  ][ ab][a ]", Formatted(L"[%4.2s][%-4s][%*.*s][%*c]", L"abc", L"ab", 3, 2, L"abc", -2, 'a'));
  EXPECT_EQ(L"(null) +05 0x1f 0.13 1e+10", Formatted(L"%s %+.2d %#x %.2f %g", nullptr, 5, 31, 0.125001, 1e10));
  EXPECT_EQ(L"cut", Formatted(L"cut%cbehind", 0));
  const std::wstring longText(5000, L'x');
  EXPECT_EQ(longText + std::wstring(4999, L' ') + L'7', Formatted(L"%s%5000d", longText.c_str(), 7));
}

TEST(CbStr, RaisesForAFormatThatCannotBeCarriedOutAndLogsNothing) {
  const LogCapture log(Logging::kLevelTrace);
  for (const wchar_t* format : {static_cast<const wchar_t*>(nullptr), L"%", L"%y", L"x%-", L"%n", L"%99999999999d"}) {
    std::wstring target = L"unchanged";
    try {
      CbStrT<std::wstring>(target).Format(format, 1);
      ADD_FAILURE() << format;
    } catch (const IException& error) {
      std::unique_ptr<IException> clone;
      std::thread([&] { clone = error.Clone(); }).join();
      EXPECT_NE(nullptr, dynamic_cast<const CbStrT<std::wstring>::CException*>(clone.get()));
      EXPECT_STREQ("Core/BasePool/CbStr", clone->GetFilename());
      EXPECT_STREQ(
          "CbStrT<class std::basic_string<wchar_t,struct std::char_traits<wchar_t>,class "
          "std::allocator<wchar_t> > >::Format",
          clone->GetFunctionName());
      EXPECT_LT(0U, clone->GetCodeLine());
      EXPECT_EQ(Platform::CurrentThreadId(), clone->GetThreadID());
    }
    EXPECT_EQ(L"unchanged", target);
  }
  EXPECT_TRUE(log.Records().empty());
}
