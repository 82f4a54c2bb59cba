#include "Threads/ThreadState.h"

#include <condition_variable>
#include <cstddef>
#include <mutex>

#include "BasePool/CbNeverDestroyed.h"
#include "Platform/Thread.h"

namespace Zorbel::Internal {
namespace {

constexpr std::size_t kStackReserve = std::size_t{48} * 1024;

struct SReleaseState {
  std::mutex mutex;  // guards the members behind
  std::condition_variable freed;
  bool taken = false;           // a thread has the release lock
  std::size_t pausedCount = 0;  // threads that have lent it

  void Free() {
    taken = false;
    freed.notify_all();
  }
};

// A thread may wait for it while the process ends.
SReleaseState& ReleaseState() {
  static const CbNeverDestroyed<SReleaseState> state;
  return *state;
}

// What paused threads wait for.
bool HoldsLockBeforeRelease(const SThreadState& thread) { return thread.factoryLocksHeld > 0 || thread.loading; }

}  // namespace

SThreadState& ThisThread() {
  thread_local SThreadState state;
  return state;
}

bool IsStackShort() { return Platform::RemainingStack() < kStackReserve; }

std::string PathOf(const SResolving* innermost, const char* last) {
  std::string path = last;
  for (const SResolving* frame = innermost; frame != nullptr; frame = frame->outer) {
    path.insert(0, path.empty() ? "" : " -> ").insert(0, frame->name);
  }
  return path;
}

CReleaseLock::CReleaseLock() {
  SThreadState& thread = ThisThread();
  if (thread.releaseLocksHeld == 0) {
    SReleaseState& state = ReleaseState();
    std::unique_lock lock(state.mutex);
    state.freed.wait(lock, [&] { return !state.taken && (state.pausedCount == 0 || HoldsLockBeforeRelease(thread)); });
    state.taken = true;
  }
  ++thread.releaseLocksHeld;
}

CReleaseLock::~CReleaseLock() {
  if (--ThisThread().releaseLocksHeld == 0) {
    const std::lock_guard lock(ReleaseState().mutex);
    ReleaseState().Free();
  }
}

CReleasePause::CReleasePause() : m_paused(ThisThread().releaseLocksHeld > 0) {
  if (m_paused) {
    const std::lock_guard lock(ReleaseState().mutex);
    ++ReleaseState().pausedCount;
    ReleaseState().Free();
  }
}

CReleasePause::~CReleasePause() {
  if (m_paused) {
    SReleaseState& state = ReleaseState();
    std::unique_lock lock(state.mutex);
    state.freed.wait(lock, [&] { return !state.taken; });
    state.taken = true;
    --state.pausedCount;
  }
}

CServicesLock::CServicesLock(CbCriticalSection& section) : m_section(section) {
  if (!m_section.TryLock()) {
    const CReleasePause pause;
    m_section.Lock();
  }
  ++ThisThread().factoryLocksHeld;
}

CServicesLock::~CServicesLock() {
  --ThisThread().factoryLocksHeld;
  m_section.Unlock();
}

}  // namespace Zorbel::Internal
