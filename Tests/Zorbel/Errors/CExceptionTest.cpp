#include <Support/LogCapture.h>
#include <Zorbel/CException.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>
#include <tuple>
#include <utility>

namespace {

using Test::LogCapture;
using Zorbel::CException;

using Fields = std::tuple<std::string, std::string, unsigned int, unsigned int, std::wstring>;

Fields FieldsOf(const CException& error) {
  return {error.GetFilename(), error.GetFunctionName(), error.GetCodeLine(), error.GetThreadID(), error.GetMessageW()};
}

Fields FieldsOf(const Logging::SRecord& line) {
  EXPECT_TRUE(line.channel == L"Zorbel" && line.level == Logging::kLevelError);
  return {line.file, line.function, static_cast<unsigned int>(line.line), line.threadId, line.text};
}

}  // namespace

TEST(CException, LogsItsMessageVerbatimOnceWithItsOrigin) {
  const LogCapture log;
  const CException errors[] = {{"a/b", 7, "N::F", L"100%s %d%"}, {"c", 8, "G"}, {nullptr, 9, nullptr, nullptr}};
  EXPECT_STREQ(L"100%s %d%", errors[0].GetMessageW());
  EXPECT_STREQ(L"Unspecified Zorbel exception", errors[1].GetMessageW());
  EXPECT_EQ(Fields("", "", 9, errors[0].GetThreadID(), L""), FieldsOf(errors[2]));
  ASSERT_EQ(3U, log.Records().size());
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(FieldsOf(errors[i]), FieldsOf(log.Records()[i]));
  }
}

TEST(CException, CopiesKeepAllFieldsAndLogNothing) {
  const LogCapture log(Logging::kLevelTrace);
  CException error("", 0, "");
  std::thread([&] { error = CException("a/b", 7, "N::F", L"message"); }).join();
  const CException other("", 0, "");
  EXPECT_NE(other.GetThreadID(), error.GetThreadID());
  const Fields expected("a/b", "N::F", 7, error.GetThreadID(), L"message");
  const Fields emptied("", "", 7, error.GetThreadID(), L"");
  CException copy(other);
  copy = error;
  copy = static_cast<const CException&>(copy);
  const std::unique_ptr<IException> clone = copy.Clone();
  EXPECT_EQ(expected, FieldsOf(copy));
  EXPECT_EQ(expected, FieldsOf(dynamic_cast<const CException&>(*clone)));
  CException moved(std::move(error));
  EXPECT_EQ(expected, FieldsOf(moved));
  EXPECT_EQ(emptied, FieldsOf(error));  // NOLINT(bugprone-use-after-move)
  error = std::move(moved);
  EXPECT_EQ(expected, FieldsOf(error));
  EXPECT_EQ(emptied, FieldsOf(moved));  // NOLINT(bugprone-use-after-move)
  EXPECT_EQ(3U, log.Records().size());
}
