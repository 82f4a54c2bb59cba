#include "Platform/Clock.h"

#include "WindowsApi.h"

namespace Platform {

bool GetFineFrequency(std::uint64_t& frequency) {
  LARGE_INTEGER value{};
  if (!QueryPerformanceFrequency(&value)) {
    return false;
  }
  frequency = static_cast<std::uint64_t>(value.QuadPart);
  return true;
}

std::uint64_t FineTicks() {
  LARGE_INTEGER value{};
  QueryPerformanceCounter(&value);
  return static_cast<std::uint64_t>(value.QuadPart);
}

std::uint64_t MillisecondTicks() { return GetTickCount64(); }

}  // namespace Platform
