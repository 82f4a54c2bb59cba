#include <ThisPlatform.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <limits>
#include <set>
#include <string>
#include <thread>

#include "Platform/Clock.h"
#include "Platform/CodePage.h"
#include "Platform/File.h"
#include "Platform/Module.h"
#include "Platform/TextDetection.h"
#include "Platform/Thread.h"
#include "Platform/Uuid.h"
#include "Support/SmallStack.h"

namespace fs = std::filesystem;
using namespace std::string_literals;

namespace {

class File : public testing::Test {
 protected:
  File() { fs::create_directories(m_folder / L"sub"); }
  ~File() override { fs::remove_all(m_folder); }

  void Write(const fs::path& name, const std::string& content) {
    std::ofstream(m_folder / name, std::ios::binary) << content;
  }
  std::wstring Name(const std::wstring& name) const { return m_folder.wstring() + L"/" + name; }

  const fs::path m_folder = fs::temp_directory_path() / ("PlatformTest" + std::to_string(Platform::CurrentThreadId()));
};

std::wstring WhyNot(const std::string& path) {
  std::wstring whyNot;
  EXPECT_EQ(nullptr, Platform::LoadModule(path, &whyNot));
  return whyNot;
}

std::size_t RemainingBelow(std::size_t frames) {
  volatile char used[1024] = {};
  const std::size_t remaining = frames == 0 ? Platform::RemainingStack() : RemainingBelow(frames - 1);
  return remaining + static_cast<std::size_t>(used[0]);
}

}  // namespace

TEST(Module, IsFoundByBareNameBesideTheProgramAndByPathWhateverTheCurrentFolder) {
  const fs::path plugin = EMPTY_PLUGIN;
  void* module = Platform::LoadModule("emptyplugin");
  ASSERT_NE(nullptr, module);
  EXPECT_EQ(module, Platform::LoadModule(plugin.filename().string()));
  EXPECT_EQ(module, Platform::LoadModule(plugin.string()));
  for (const char* missing : {"", "missing", "emptyplugin.", "missing/emptyplugin"}) {
    EXPECT_EQ(nullptr, Platform::LoadModule(missing)) << missing;
    EXPECT_NE(L"", WhyNot(missing)) << missing;
  }
  if (::Test::kDotPathsGetNoExtension) {
    EXPECT_EQ(nullptr, Platform::LoadModule("./emptyplugin"));
  }
}

TEST(Module, ThatIsFoundButCannotBeLoadedIsToldRatherThanWhereItIsMissing) {
  const fs::path broken = fs::path(EMPTY_PLUGIN).replace_filename("broken.txt");
  std::ofstream(broken) << "text";
  EXPECT_EQ(WhyNot(broken.string()), WhyNot("broken.txt"));
  EXPECT_NE(WhyNot("missing.txt"), WhyNot("broken.txt"));
  fs::remove(broken);
}

TEST(Module, GivesOnlyFunctionsOfItsOwnByTheirExactName) {
  void* module = Platform::LoadModule("emptyplugin");
  ASSERT_NE(nullptr, Platform::FindFunction(module, "PluginVersion"));
  EXPECT_EQ(1, reinterpret_cast<int (*)()>(Platform::FindFunction(module, "PluginVersion"))());
  for (const char* missing : {"pluginversion", "", "malloc"}) {  // the last one is of a library that it depends on
    EXPECT_EQ(nullptr, Platform::FindFunction(module, missing)) << missing;
  }
}

TEST(StackThreads, HaveAsMuchAsTheyWereGivenAndLessInDeeperFrames) {
  constexpr std::size_t kSize = ::Test::kSmallStack;
  std::size_t first = 0;
  std::size_t deeper = 0;
  ::Test::RunOnThread(kSize, [&] {
    first = Platform::RemainingStack();
    deeper = RemainingBelow(32);
  });
  EXPECT_LT(first, kSize);
  EXPECT_GT(first, kSize / 3);  // sanitizers take a part for themselves
  EXPECT_LE(deeper + 32 * 1024, first);
  EXPECT_GT(Platform::RemainingStack(), kSize);
  EXPECT_NE(Platform::RemainingStack(), std::numeric_limits<std::size_t>::max());
}

TEST(TextDetection, TellsUtf16FromOtherBytes) {
  for (const std::string& text :
       {"\xFF\xFE<\0"s, "\xEF\xFF<\0z\0/\0>\0"s, "<\0z\0/\0>\0"s, "<\0!\0-\0-\0\0\x30"s}) {  // the last one has U+3000
    EXPECT_TRUE(Platform::IsUtf16Text(text)) << testing::PrintToString(text);
  }
  for (const std::string& text : {""s, "<"s, "<z/>"s, "\xEF\xBB\xBF<z/>"s, "<\0z\0>"s, "<\0\0\0z\0\0\0"s}) {
    EXPECT_FALSE(Platform::IsUtf16Text(text)) << testing::PrintToString(text);
  }
  EXPECT_NE(::Test::kHighByteFirstIsNoUtf16, Platform::IsUtf16Text("\0<\0z"s));
}

TEST(CodePage, TakesUtf16WithASubstituteForWhatItLacks) {
  std::string text = "replaced";
  EXPECT_TRUE(Platform::Utf16ToAnsi("a\0\xF6\0\xAC\x20\x16\x04\x3D\xD8\0\xDE\x3D\xD8z"s, text));
  // The fifth and sixth unit are one character, the seventh is half of one.
  EXPECT_EQ("a\xF6\x80?"s + ::Test::kSubstituteForAPair + "?", text);
  EXPECT_TRUE(Platform::Utf16ToAnsi("", text));
  EXPECT_EQ("", text);
}

TEST_F(File, IsReadWholeAndUnchangedUpToTheLimitWithEitherSeparator) {
  std::string content = "a\r\n\0\x1A\xFF"s;
  content.append(200'000, 'x');
  Write(u8"sub/gr\u00FC\u00DF.xml", content);
  Write(L"empty", "");
  const auto read = [](const std::wstring& name, std::size_t limit) {
    std::string result = "rest";
    const Platform::EReading reading = Platform::ReadFile(name, limit, result);
    return reading == Platform::EReading::kDone ? result : reading == Platform::EReading::kFailed ? "failed" : "large";
  };
  EXPECT_EQ(content, read(Name(L"sub\\gr\u00FC\u00DF.xml"), content.size()));
  EXPECT_EQ(content, read(Name(L"sub/gr\u00FC\u00DF.xml"), 1'000'000));
  EXPECT_EQ("large", read(Name(L"sub/gr\u00FC\u00DF.xml"), content.size() - 1));
  EXPECT_EQ("", read(Name(L"empty"), 0));
  for (const wchar_t* unreadable : {L"missing", L"sub", L"sub/", L"empty/x"}) {
    EXPECT_EQ("failed", read(Name(unreadable), 1'000'000)) << unreadable;
  }
  EXPECT_EQ("failed", read(L"", 1));
}

TEST_F(File, IsResolvedToOneTextWhateverItsName) {
  Write(L"sub/file", "");
  Write(L"file", "");
  const std::wstring resolved = Platform::ResolveFileName(Name(L"sub/file"));
  for (const wchar_t* same : {L"sub\\file", L"./sub//file", L"sub/../sub/file"}) {
    EXPECT_EQ(resolved, Platform::ResolveFileName(Name(same))) << same;
  }
  EXPECT_NE(resolved, Platform::ResolveFileName(Name(L"file")));
  EXPECT_EQ(Name(L"./missing"), Platform::ResolveFileName(Name(L"./missing")));
}

TEST(Uuid, IsLowerCaseTextAndNewEachTime) {
  constexpr std::size_t kCount = 300;  // more than are drawn together
  std::set<std::string> texts;
  for (std::size_t i = 0; i < kCount; ++i) {
    std::string text;
    ASSERT_TRUE(Platform::CreateUuidText(text));
    texts.insert(text);
    EXPECT_EQ("4", text.substr(14, 1));  // the version
    EXPECT_EQ(19U, text.find_first_of("89ab", 19)) << text;
    for (char& c : text) {
      c = "0123456789abcdef"s.find(c) != std::string::npos ? 'x' : c;
    }
    EXPECT_EQ("xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx", text);
  }
  EXPECT_EQ(kCount, texts.size());
}

TEST(Clock, CountsAtItsFrequency) {
  std::uint64_t frequency = 0;
  ASSERT_TRUE(Platform::GetFineFrequency(frequency));
  const std::uint64_t fine = Platform::FineTicks();
  const std::uint64_t coarse = Platform::MillisecondTicks();
  std::this_thread::sleep_for(std::chrono::milliseconds(50));
  const std::uint64_t coarseSpan = Platform::MillisecondTicks() - coarse;
  const std::uint64_t fineSpan = (Platform::FineTicks() - fine) * 1000 / frequency;
  EXPECT_LE(34U, coarseSpan);  // a coarse clock moves in steps of up to 16 ms
  EXPECT_LE(coarseSpan, fineSpan + 16);
}
