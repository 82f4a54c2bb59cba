#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "Platform/CodePage.h"
#include "Platform/File.h"
#include "Platform/Module.h"
#include "Platform/TextDetection.h"
#include "Platform/Utf8.h"

namespace fs = std::filesystem;

TEST(WindowsText, HasCharactersAboveTheBasicOnesAsTwoUnits) {
  const std::pair<const char*, std::wstring> kCases[] = {{"\xF0\x90\x80\x80", {0xD800, 0xDC00}},
                                                         {"\xF0\x9F\x98\x80", {0xD83D, 0xDE00}},
                                                         {"\xF4\x8F\xBF\xBF", {0xDBFF, 0xDFFF}}};
  for (const auto& [utf8, units] : kCases) {
    EXPECT_EQ(units, Platform::Utf8ToWideLossy(utf8));
    EXPECT_EQ(utf8, Platform::WideToUtf8(units));
    std::wstring appended;
    Platform::AppendWide(appended, Platform::DecodeUtf8(utf8).value);
    EXPECT_EQ(units, appended);
  }
}

TEST(WindowsText, ThatTheCodePageLacksBecomesWhatTheSystemTakesForIt) {
  const std::pair<std::wstring, const char*> kCases[] = {{L"\u00F6", "\xF6"},
                                                         {L"\u20AC", "\x80"},
                                                         {L"\u0416", "?"},
                                                         {L"\u0142", "l"},  // what looks alike
                                                         {L"\U0001F600", "??"}};
  for (const auto& [wide, ansi] : kCases) {
    const std::string bytes(reinterpret_cast<const char*>(wide.data()), wide.size() * sizeof(wchar_t));
    std::string text;
    EXPECT_TRUE(Platform::Utf16ToAnsi(bytes, text));
    EXPECT_EQ(ansi, text);
  }
}

TEST(WindowsFile, NamesMayHaveAnyLetterCaseAndEitherSeparator) {
  const fs::path folder = fs::temp_directory_path() / "ZorbelWindowsTest";
  fs::create_directories(folder);
  std::ofstream(folder / "File.xml") << "text";
  const std::wstring name = folder.wstring() + L"\\File.xml";
  for (const wchar_t* same : {L"\\file.XML", L"/FILE.xml", L"\\.\\File.xml"}) {
    std::string text;
    EXPECT_EQ(Platform::EReading::kDone, Platform::ReadFile(folder.wstring() + same, 4, text));
    EXPECT_EQ("text", text);
    EXPECT_EQ(Platform::ResolveFileName(name), Platform::ResolveFileName(folder.wstring() + same));
  }
  fs::remove_all(folder);
}
