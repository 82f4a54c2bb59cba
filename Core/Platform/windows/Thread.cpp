#include "Platform/Thread.h"

#include <limits>

#include "WindowsApi.h"

namespace Platform {

unsigned int CurrentThreadId() { return GetCurrentThreadId(); }

std::size_t MaximumRecursionDepth() { return 256; }  // a thread's stack is 1 MB

// The limits are asked for each time: they change with the fiber, and are two reads of the thread's own memory. The
// lowest pages are the system's, for the moment when the stack overflows.
std::size_t RemainingStack() {
  constexpr std::size_t kSystemsPages = std::size_t{3} * 4096;
  ULONG_PTR low = 0;
  ULONG_PTR high = 0;
  GetCurrentThreadStackLimits(&low, &high);
  const auto here = reinterpret_cast<ULONG_PTR>(__builtin_frame_address(0));
  if (here < low || here >= high) {
    return std::numeric_limits<std::size_t>::max();
  }
  return here - low > kSystemsPages ? here - low - kSystemsPages : 0;
}

}  // namespace Platform
