#include "Platform/Thread.h"

#include <pthread.h>
#include <unistd.h>

#include <cstdint>
#include <limits>

namespace Platform {
namespace {

struct SStack {
  std::uintptr_t low;
  std::uintptr_t high;  // 0 while the system has not been asked
};

constexpr SStack kUnknownStack{std::numeric_limits<std::uintptr_t>::max(), std::numeric_limits<std::uintptr_t>::max()};

// The system leaves the guard area out. Of the first thread it has to read the map of the process.
SStack StackOfThisThread() {
  pthread_attr_t attributes;
  if (pthread_getattr_np(pthread_self(), &attributes) != 0) {
    return kUnknownStack;
  }
  void* low = nullptr;
  std::size_t size = 0;
  const bool known = pthread_attr_getstack(&attributes, &low, &size) == 0;
  pthread_attr_destroy(&attributes);
  const auto address = reinterpret_cast<std::uintptr_t>(low);
  return known ? SStack{address, address + size} : kUnknownStack;
}

// Needs no destruction: beans go, and ask for others, also at the very end of a thread.
thread_local SStack stack{};

}  // namespace

unsigned int CurrentThreadId() { return static_cast<unsigned int>(gettid()); }

std::size_t MaximumRecursionDepth() { return 1000; }

std::size_t RemainingStack() {
  if (stack.high == 0) {
    stack = StackOfThisThread();
  }
  const auto here = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
  return here >= stack.low && here < stack.high ? here - stack.low : std::numeric_limits<std::size_t>::max();
}

}  // namespace Platform
