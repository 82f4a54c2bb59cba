#include "ThreadState.h"

#include <mutex>

namespace Zorbel::Internal {
namespace {

std::recursive_mutex releaseMutex;

}  // namespace

SThreadState& ThisThread() {
  thread_local SThreadState state;
  return state;
}

CReleaseLock::CReleaseLock() {
  releaseMutex.lock();
  ++ThisThread().releaseLocksHeld;
}

CReleaseLock::~CReleaseLock() {
  --ThisThread().releaseLocksHeld;
  releaseMutex.unlock();
}

CReleasePause::CReleasePause() : m_count(ThisThread().releaseLocksHeld) {
  for (std::size_t i = 0; i < m_count; ++i) {
    releaseMutex.unlock();
  }
}

CReleasePause::~CReleasePause() {
  for (std::size_t i = 0; i < m_count; ++i) {
    releaseMutex.lock();
  }
}

}  // namespace Zorbel::Internal
