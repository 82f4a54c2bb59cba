#include "ThreadState.h"

#include <condition_variable>
#include <mutex>

namespace Zorbel::Internal {
namespace {

std::mutex releaseMutex;  // guards the two below
std::condition_variable releaseFreed;
bool releasing = false;          // a thread has the release lock
std::size_t pausedReleases = 0;  // threads that have lent it

// What paused threads wait for.
bool HoldsLockBeforeRelease(const SThreadState& thread) { return thread.factoryLocksHeld > 0 || thread.loading; }

void FreeRelease() {
  releasing = false;
  releaseFreed.notify_all();
}

}  // namespace

SThreadState& ThisThread() {
  thread_local SThreadState state;
  return state;
}

CReleaseLock::CReleaseLock() {
  SThreadState& thread = ThisThread();
  if (thread.releaseLocksHeld == 0) {
    std::unique_lock lock(releaseMutex);
    releaseFreed.wait(lock, [&] { return !releasing && (pausedReleases == 0 || HoldsLockBeforeRelease(thread)); });
    releasing = true;
  }
  ++thread.releaseLocksHeld;
}

CReleaseLock::~CReleaseLock() {
  if (--ThisThread().releaseLocksHeld == 0) {
    const std::lock_guard lock(releaseMutex);
    FreeRelease();
  }
}

CReleasePause::CReleasePause() : m_paused(ThisThread().releaseLocksHeld > 0) {
  if (m_paused) {
    const std::lock_guard lock(releaseMutex);
    ++pausedReleases;
    FreeRelease();
  }
}

CReleasePause::~CReleasePause() {
  if (m_paused) {
    std::unique_lock lock(releaseMutex);
    releaseFreed.wait(lock, [] { return !releasing; });
    releasing = true;
    --pausedReleases;
  }
}

}  // namespace Zorbel::Internal
