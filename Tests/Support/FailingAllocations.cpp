#include "Support/FailingAllocations.h"

#include <atomic>
#include <cstdlib>
#include <new>
#include <stdexcept>

namespace Test::Allocations {
namespace {

std::atomic<int> untilFailure = -1;  // allocations that succeed before one fails; negative: none does
std::atomic<bool> failsOnwards = false;
std::atomic<bool> hasFailed = false;
std::atomic<int> count = 0;
std::atomic<int> live = 0;
std::atomic<std::size_t> lastSize = 0;
std::atomic<std::size_t> failedSize = 0;

bool Fails() {
  const bool fails = (hasFailed && failsOnwards) || (untilFailure >= 0 && untilFailure-- == 0);
  hasFailed = hasFailed || fails;
  return fails;
}

void* AllocateOrThrow(std::size_t size) {
  void* made = Allocate(size);
  return made != nullptr ? made : throw std::bad_alloc();
}

}  // namespace

void FailAfter(int succeeding, bool onwards) noexcept {
  hasFailed = false;
  failsOnwards = onwards;
  untilFailure = succeeding;
}

bool Restore() noexcept {
  failsOnwards = false;
  untilFailure = -1;
  return hasFailed;
}

bool AreSharedByModules() {
  const int before = count;
  const std::runtime_error copiesItsText("in the library");
  return count != before;
}

int Count() noexcept { return count; }
int Live() noexcept { return live; }
std::size_t LastSize() noexcept { return lastSize; }
std::size_t FailedSize() noexcept { return failedSize; }

void* Allocate(std::size_t size) noexcept {
  ++count;
  const bool fails = Fails();
  (fails ? failedSize : lastSize) = size;
  live += fails ? 0 : 1;
  return fails ? nullptr : std::malloc(size + 1);
}

// The compiler would take it for the wrong counterpart of an operator new if it saw it.
[[gnu::noinline]] void Free(void* memory) noexcept {
  live -= memory != nullptr ? 1 : 0;
  std::free(memory);
}

}  // namespace Test::Allocations

using namespace Test::Allocations;

void* operator new(std::size_t size) { return AllocateOrThrow(size); }
void* operator new[](std::size_t size) { return AllocateOrThrow(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void operator delete(void* memory) noexcept { Free(memory); }
void operator delete[](void* memory) noexcept { Free(memory); }
void operator delete(void* memory, std::size_t) noexcept { Free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { Free(memory); }
