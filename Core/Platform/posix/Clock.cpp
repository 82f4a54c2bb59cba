#include "Platform/Clock.h"

#include <ctime>

namespace Platform {
namespace {

constexpr std::uint64_t kNanosecondsPerSecond = 1'000'000'000;
constexpr std::uint64_t kNanosecondsPerMillisecond = 1'000'000;

}  // namespace

bool GetFineFrequency(std::uint64_t& frequency) {
  frequency = kNanosecondsPerSecond;
  return true;
}

std::uint64_t FineTicks() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<std::uint64_t>(now.tv_sec) * kNanosecondsPerSecond + static_cast<std::uint64_t>(now.tv_nsec);
}

std::uint64_t MillisecondTicks() { return FineTicks() / kNanosecondsPerMillisecond; }

}  // namespace Platform
