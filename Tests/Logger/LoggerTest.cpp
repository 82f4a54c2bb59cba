#include <Logging/CLogger.h>
#include <Logging/Logging.h>
#include <ThisPlatform.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "Platform/Thread.h"

using namespace Logging;
namespace fs = std::filesystem;

namespace {

const CLogger logger(L"Test");

void LogError(const wchar_t* text) { logger.Error("a/b.cpp", 7, "N::F", L"%s", text); }

std::string Utf8(const fs::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

bool Contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

bool FileContains(const fs::path& path, const std::string& part) {
  std::ifstream file(path, std::ios::binary);
  return Contains({std::istreambuf_iterator<char>(file), {}}, part);
}

class Logger : public testing::Test {
 protected:
  Logger() {
    SetLevel(kLevelTrace);
    SetSink([this](const SRecord& record) { m_records.push_back(record); });
  }
  ~Logger() override {
    SetSink({});
    SetLevel(kDefaultLevel);
    fs::remove_all(m_folder);
  }

  std::vector<SRecord> m_records;
  const fs::path m_folder = fs::temp_directory_path() / ("LoggerTest" + std::to_string(Platform::CurrentThreadId()));
};

}  // namespace

TEST_F(Logger, WritesTheLevelsFromTheOneSetUpwardsAndNoneWhenOff) {
  for (const int level : {kLevelTrace, kLevelInformation, kLevelWarning, kLevelError, kLevelOff}) {
    SetLevel(level);
    std::vector<int> expected;
    for (const int each : {kLevelInformation, kLevelWarning, kLevelError}) {
      EXPECT_EQ(each >= level, logger.IsLogLevelEnabled(each)) << level;
      expected.insert(expected.end(), each >= level ? 1U : 0U, each);
    }
    EXPECT_FALSE(logger.IsLogLevelEnabled(kLevelOff));
    m_records.clear();
    logger.Info("", 0, "", L"");
    logger.Warn("", 0, "", L"");
    logger.Error("", 0, "", L"");
    std::vector<int> written;
    for (const SRecord& record : m_records) {
      written.push_back(record.level);
    }
    EXPECT_EQ(expected, written) << level;
  }
}

TEST_F(Logger, TheLastCallSetsTheLevelOfAChannelPresentOrFuture) {
  SetLevel(L"Late", kLevelDebug);
  const CLogger late(L"Late");
  EXPECT_TRUE(late.IsLogLevelEnabled(kLevelDebug));
  SetLevel(kLevelError);
  const CLogger later(L"Later");
  EXPECT_FALSE(late.IsLogLevelEnabled(kLevelWarning) || later.IsLogLevelEnabled(kLevelWarning));
  SetLevel(L"Late", kLevelWarning);
  EXPECT_TRUE(late.IsLogLevelEnabled(kLevelWarning) && CLogger(L"Late").IsLogLevelEnabled(kLevelWarning));
  EXPECT_FALSE(late.IsLogLevelEnabled(kLevelInformation) || later.IsLogLevelEnabled(kLevelWarning));
}

TEST_F(Logger, ARecordTellsWhatWasLoggedWhereAndWhen) {
  const auto before = std::chrono::system_clock::now();
  logger.Warn("a/b.cpp", 7, "N::F", L"%s|%I64u|%d%%", L"\x43B", 0xFFFFFFFFFFFFFFFFULL, -3);
  ASSERT_EQ(1U, m_records.size());
  const SRecord& record = m_records.front();
  EXPECT_EQ(L"Test", record.channel);
  EXPECT_EQ(kLevelWarning, record.level);
  EXPECT_EQ("a/b.cpp", record.file);
  EXPECT_EQ(7, record.line);
  EXPECT_EQ("N::F", record.function);
  EXPECT_EQ(L"\x43B|18446744073709551615|-3%", record.text);
  EXPECT_EQ(Platform::CurrentThreadId(), record.threadId);
  EXPECT_TRUE(before <= record.time && record.time <= std::chrono::system_clock::now());
}

TEST_F(Logger, TakesNullForEmptyAndAFormatThatCannotBeCarriedOutForTheText) {
  CLogger(nullptr).Error(nullptr, 7, nullptr, nullptr);
  logger.Error("", 7, "", L"100%");
  ASSERT_EQ(2U, m_records.size());
  EXPECT_EQ(L"", m_records[0].channel + m_records[0].text);
  EXPECT_EQ("", m_records[0].file + m_records[0].function);
  EXPECT_EQ(L"100%", m_records[1].text);
}

TEST_F(Logger, ASinkMayLogAndReplaceItself) {
  SetSink([this, own = std::string(100, 'x')](const SRecord& record) {
    SetSink([this](const SRecord& next) { m_records.push_back(next); });
    LogError(L"inner");
    EXPECT_EQ(std::string(100, 'x'), own);
    m_records.push_back(record);
  });
  LogError(L"outer");
  ASSERT_EQ(2U, m_records.size());
  EXPECT_EQ(L"inner", m_records[0].text);
  EXPECT_EQ(L"outer", m_records[1].text);
}

TEST_F(Logger, NeitherEndlessNorThrowingSinksReachTheCaller) {
  int calls = 0;
  SetSink([&calls](const SRecord&) {
    ++calls;
    LogError(L"again");
    throw std::runtime_error("not written");
  });
  EXPECT_NO_THROW(LogError(L"first"));
  const int nested = calls;
  EXPECT_TRUE(nested > 1 && nested < 100) << nested;
  EXPECT_NO_THROW(LogError(L"second"));
  EXPECT_EQ(2 * nested, calls);
}

TEST_F(Logger, TheDefaultSinkWritesUtf8ToStandardError) {
  testing::internal::CaptureStderr();
  SetSink({});
  LogError(L"caf\xE9 \xD83D\xDE00");
  logger.Warn(nullptr, 7, nullptr, L"bare");
  const std::string output = testing::internal::GetCapturedStderr();
  const std::string id = "[" + std::to_string(Platform::CurrentThreadId()) + "]";
  EXPECT_TRUE(Contains(output, "error   " + id + " Test: caf\xC3\xA9 \xF0\x9F\x98\x80 (N::F, a/b.cpp:7)\n")) << output;
  EXPECT_TRUE(Contains(output, "warning " + id + " Test: bare\n")) << output;
}

TEST_F(Logger, TheDefaultSinksEscapeWhatCouldForgeALineAndTheRecordKeepsIt) {
  const std::wstring text = L"\n\r\t\x1B[m\x7F\x80\x9F\xA0\x2027\x2028\x2029\\n";
  testing::internal::CaptureStderr();
  SetSink([this, write = StandardErrorSink()](const SRecord& record) {
    write(record);
    m_records.push_back(record);
  });
  CLogger(L"a\nb").Error("c\x1B\n.cpp", 7, "F\r\xC2\x85\xE9", L"%s%c", text.c_str(), 0);
  const std::string output = testing::internal::GetCapturedStderr();
  const std::string kept = "\xC2\xA0\xE2\x80\xA7";
  const std::string line =
      R"(a\nb: \n\r\t\x1B[m\x7F\x80\x9F)" + kept + R"(\u2028\u2029\n\x00 (F\r\x85\xE9, c\x1B\n.cpp:7))";
  EXPECT_TRUE(Contains(output, line + "\n")) << output;
  EXPECT_EQ(text + L'\0', m_records.at(0).text);
}

TEST_F(Logger, ARotatingFileKeepsItsFolderItsSizeAndTheLastOlderFiles) {
  const fs::path name = u8"logs/\u00E9.log";
  const fs::path path = m_folder / name;
  const fs::path before = fs::current_path();
  fs::create_directories(m_folder);
  fs::current_path(m_folder);
  SetSink(RotatingFileSink(Utf8(name).c_str(), 150, 1));
  fs::current_path(before);
  for (const wchar_t* text : {L"one", L"two", L"three", L"four", L"five"}) {
    LogError(text);
  }
  EXPECT_TRUE(FileContains(path, ": five ("));
  EXPECT_TRUE(FileContains(path.parent_path() / u8"\u00E9.1.log", ": four ("));
  EXPECT_LE(fs::file_size(path), 150U);
  EXPECT_EQ(2, std::distance(fs::directory_iterator(path.parent_path()), {}));
}

TEST_F(Logger, ARotatingFileComesBackWhenItsFolderDoes) {
  if (!::Test::kOpenFilesMayBeRemoved) {
    GTEST_SKIP() << "the folder of an open file stays";
  }
  SetSink(RotatingFileSink(Utf8(m_folder / "a.log").c_str(), 200, 1));
  LogError(L"first");
  fs::remove_all(m_folder);
  std::ofstream(m_folder) << "in the way";
  LogError(std::wstring(200, L'x').c_str());
  LogError(L"lost");
  fs::remove(m_folder);
  LogError(L"back");
  EXPECT_TRUE(FileContains(m_folder / "a.log", ": back ("));
}

TEST_F(Logger, ARotatingFileThatCannotBeOpenedIsNamed) {
  std::ofstream(m_folder) << "no folder";
  for (const std::string& path : {Utf8(m_folder / "a.log"), std::string()}) {
    try {
      RotatingFileSink(path.c_str(), 100, 1);
      FAIL();
    } catch (const std::runtime_error& failure) {
      EXPECT_TRUE(Contains(failure.what(), "Log file '" + path + "'")) << failure.what();
    }
  }
}

TEST(LoggerThreads, LogWhileSinkAndLevelsChange) {
  constexpr int kThreads = 4;
  constexpr int kLines = 2000;
  std::atomic<int> lines = 0;
  const auto count = [&lines](const SRecord& record) { lines += record.text == L"line" ? 1 : 0; };
  SetSink(count);
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([name = L"Thread" + std::to_wstring(i % 2)] {
      for (int line = 0; line < kLines; ++line) {
        logger.Error("", line, "", L"%s", L"line");
        CLogger(name.c_str()).Info("", line, "", L"may be off");
      }
    });
  }
  for (int i = 0; i < kLines; ++i) {
    SetSink(count);
    SetLevel(i % kLevelWarning);
    SetLevel(L"Thread0", kLevelError);
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  SetSink({});
  SetLevel(kDefaultLevel);
  EXPECT_EQ(kThreads * kLines, lines);
}
