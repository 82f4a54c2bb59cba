#include "BasePool/CbStopWatch.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace {

std::uint64_t now = 0;

std::uint64_t Now() { return now; }

std::wstring Measure(std::uint64_t ticks, int unit, std::uint64_t frequency) {
  const CbPerformanceCounter counter(&Now, frequency);
  CbStopWatch watch(unit, counter);
  now = 5;
  watch.Start();
  now += ticks;
  return watch.GetElapsedText();
}

}  // namespace

TEST(FormatGrouped, SeparatesGroupsOfThreeAndAppendsTheUnit) {
  EXPECT_EQ(L"0ms", FormatGrouped(0, 1000));
  EXPECT_EQ(L"999ms", FormatGrouped(999, 1000));
  EXPECT_EQ(L"1'000ms", FormatGrouped(1000, 1000));
  EXPECT_EQ(L"1'234'567s", FormatGrouped(1234567, 1));
  EXPECT_EQ(L"123'456\u00B5s", FormatGrouped(123456, 1000000));
  EXPECT_EQ(L"42", FormatGrouped(42, 60));
  EXPECT_EQ(L"18'446'744'073'709'551'615ns", FormatGrouped(UINT64_MAX, 1000000000));
}

TEST(CbStopWatch, ScalesTicksToItsUnitAndTruncates) {
  EXPECT_EQ(L"1'234ms", Measure(1234, 1000, 1000));  // the frequency of the coarse counter
  EXPECT_EQ(L"1s", Measure(1999, 1, 1000));
  EXPECT_EQ(L"666ms", Measure(2, 1000, 3));
  EXPECT_EQ(L"540", Measure(90, 60, 10));
  EXPECT_EQ(L"3'600'000'000'000ns", Measure(36'000'000'000, 1000000000, 10'000'000));  // a product of 65 bits
  EXPECT_EQ(L"18'446'744'073'709'551'615ns", Measure(UINT64_MAX - 5, 1000000000, 1));
}

TEST(CbStopWatch, AddsUpSpansAndIgnoresRepeatedStartsAndStops) {
  const CbPerformanceCounter counter(&Now, 1000);
  CbStopWatch watch(1000, counter);
  const auto at = [&](std::uint64_t time, void (CbStopWatch::*action)()) {
    now = time;
    (watch.*action)();
    return watch.GetElapsedText();
  };
  EXPECT_EQ(L"0ms", at(100, &CbStopWatch::Stop));
  EXPECT_EQ(L"0ms", at(110, &CbStopWatch::Start));
  EXPECT_EQ(L"5ms", at(115, &CbStopWatch::Start));
  EXPECT_EQ(L"7ms", at(117, &CbStopWatch::Stop));
  EXPECT_EQ(L"7ms", at(150, &CbStopWatch::Stop));
  EXPECT_EQ(L"7ms", at(200, &CbStopWatch::Start));
  EXPECT_EQ(L"10ms", at(203, &CbStopWatch::Stop));
}
