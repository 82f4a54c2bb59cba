#pragma once

#include <cstddef>

#include "BasePool/CbCriticalSection.h"

namespace Zorbel {

class CArgumentList;
class CBeanConfig;

namespace Internal {

/// A bean being resolved on this thread, on the stack of its resolution.
struct SResolving {
  const CBeanConfig* bean;
  const SResolving* outer;
};

/// What the library is doing on this thread, for all factories.
struct SThreadState {
  const SResolving* resolving = nullptr;     ///< innermost
  const CArgumentList* arguments = nullptr;  ///< innermost
  std::size_t resolutionDepth = 0;
  std::size_t factoryLocksHeld = 0;
  std::size_t releaseLocksHeld = 0;
  bool loading = false;
};

SThreadState& ThisThread();

/// Holds the process's release lock, which the release functions of services run under, for the life of a scope: they
/// run one after the other. Recursive: a release function may produce and release other services.
class CReleaseLock {
 public:
  CReleaseLock();
  ~CReleaseLock();
  CReleaseLock(const CReleaseLock&) = delete;
  CReleaseLock& operator=(const CReleaseLock&) = delete;
};

/// Lets others that hold a lock which comes before the release lock have that one, where the thread holds it, for the
/// life of a scope: a release function that waits for their lock would otherwise block them, and itself.
class CReleasePause {
 public:
  CReleasePause();
  ~CReleasePause();
  CReleasePause(const CReleasePause&) = delete;
  CReleasePause& operator=(const CReleasePause&) = delete;

 private:
  const bool m_paused;
};

/// Holds a factory's lock for the life of a scope.
class CFactoryLock {
 public:
  explicit CFactoryLock(CbCriticalSection& section) : m_section(section) {
    if (!m_section.TryLock()) {
      const CReleasePause pause;
      m_section.Lock();
    }
    ++ThisThread().factoryLocksHeld;
  }
  ~CFactoryLock() {
    --ThisThread().factoryLocksHeld;
    m_section.Unlock();
  }
  CFactoryLock(const CFactoryLock&) = delete;
  CFactoryLock& operator=(const CFactoryLock&) = delete;

 private:
  CbCriticalSection& m_section;
};

}  // namespace Internal
}  // namespace Zorbel
