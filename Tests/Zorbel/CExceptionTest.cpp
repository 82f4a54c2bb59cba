#include <Support/LogCapture.h>
#include <Zorbel/CException.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>
#include <utility>

namespace {

using Test::LogCapture;
using Zorbel::CException;

std::wstring TextOf(const char* file, const char* function, int line, unsigned int threadId, const std::wstring& text) {
  const std::string origin = file + std::string("|") + function;
  return std::wstring(origin.begin(), origin.end()) + L"|" + std::to_wstring(line) + L"|" + std::to_wstring(threadId) +
         L"|" + text;
}

std::wstring TextOf(const CException& error) {
  return TextOf(error.GetFilename(), error.GetFunctionName(), static_cast<int>(error.GetCodeLine()),
                error.GetThreadID(), error.GetMessageW());
}

std::wstring TextOf(const Logging::SRecord& line) {
  EXPECT_TRUE(line.channel == L"Zorbel" && line.level == Logging::kLevelError);
  return TextOf(line.file.c_str(), line.function.c_str(), line.line, line.threadId, line.text);
}

}  // namespace

TEST(CException, LogsItsMessageVerbatimOnceWithItsOrigin) {
  const LogCapture log;
  const CException errors[] = {{"a/b", 7, "N::F", L"100%s %d%"}, {"c", 8, "G"}, {nullptr, 9, nullptr, nullptr}};
  EXPECT_STREQ(L"100%s %d%", errors[0].GetMessageW());
  EXPECT_STREQ(L"Unspecified Zorbel exception", errors[1].GetMessageW());
  EXPECT_EQ(TextOf("", "", 9, errors[0].GetThreadID(), L""), TextOf(errors[2]));
  ASSERT_EQ(3U, log.Records().size());
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(TextOf(errors[i]), TextOf(log.Records()[i]));
  }
}

TEST(CException, CopiesKeepAllFieldsAndLogNothing) {
  const LogCapture log(Logging::kLevelTrace);
  CException error("", 0, "");
  std::thread([&] { error = CException("a/b", 7, "N::F", L"message"); }).join();
  const CException other("", 0, "");
  EXPECT_NE(other.GetThreadID(), error.GetThreadID());
  const std::wstring expected = TextOf("a/b", "N::F", 7, error.GetThreadID(), L"message");
  const std::wstring emptied = TextOf("", "", 7, error.GetThreadID(), L"");
  CException copy(other);
  copy = error;
  copy = static_cast<const CException&>(copy);
  const std::unique_ptr<IException> clone = copy.Clone();
  EXPECT_EQ(expected, TextOf(copy));
  EXPECT_EQ(expected, TextOf(dynamic_cast<const CException&>(*clone)));
  CException moved(std::move(error));
  EXPECT_EQ(expected, TextOf(moved));
  EXPECT_EQ(emptied, TextOf(error));  // NOLINT(bugprone-use-after-move)
  error = std::move(moved);
  EXPECT_EQ(expected, TextOf(error));
  EXPECT_EQ(emptied, TextOf(moved));  // NOLINT(bugprone-use-after-move)
  EXPECT_EQ(3U, log.Records().size());
}
