#pragma once

#include <cstddef>
#include <string>

#include "BasePool/CbCriticalSection.h"

namespace Zorbel::Internal {

class CCallValues;

/// A bean being resolved on this thread, on the stack of its resolution.
struct SResolving {
  const void* definition;
  const char* name;
  const SResolving* outer;
};

/// A container that lets go of its factory, which may bring its own end about, on the stack of that.
struct SReplacing {
  const void* held;
  bool gone;
  SReplacing* outer;
};

/// What the library is doing on this thread, for all factories.
struct SThreadState {
  const SResolving* resolving = nullptr;    ///< innermost
  const CCallValues* callValues = nullptr;  ///< innermost
  SReplacing* replacing = nullptr;          ///< innermost
  std::size_t resolutionDepth = 0;
  std::size_t factoryLocksHeld = 0;
  std::size_t releaseLocksHeld = 0;
  bool loading = false;           ///< a document is being merged
  bool holdsIntegration = false;  ///< the thread has the integration mutex
};

SThreadState& ThisThread();

/// Returns whether so little of the thread's stack is left that nothing more may nest on it: what a bean, a document or
/// a line of the log takes has to fit in.
bool IsStackShort();

/// Returns the names of the beans being resolved, from the outermost to `innermost`, and behind them `last` unless it
/// is empty, joined by " -> ".
std::string PathOf(const SResolving* innermost, const char* last);

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

/// Holds the lock of a factory's services for the life of a scope.
class CServicesLock {
 public:
  explicit CServicesLock(CbCriticalSection& section);
  ~CServicesLock();
  CServicesLock(const CServicesLock&) = delete;
  CServicesLock& operator=(const CServicesLock&) = delete;

 private:
  CbCriticalSection& m_section;
};

}  // namespace Zorbel::Internal
