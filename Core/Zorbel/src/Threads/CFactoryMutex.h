#pragma once

#include <atomic>
#include <cstddef>
#include <string>

#include "BasePool/CbCriticalSection.h"

namespace Zorbel::Internal {

struct SThreadState;

/// The re-entrant lock of a factory. It knows which thread has it, so that threads which would wait for each other in a
/// circle, each with a factory of its own, are told instead.
class CFactoryMutex {
 public:
  /// Takes the lock for a request of the bean `requested`, which is empty when it is for none, and returns the empty
  /// text. When waiting would close a circle of waiting threads, the lock is not taken; the text then has what each of
  /// them resolves and requests. Throws: std::bad_alloc, with the lock not taken.
  std::string Lock(const char* requested);
  void Unlock();

 private:
  struct SWaiter;

  static SWaiter*& FirstWaiter();
  std::string Wait(const char* requested);
  std::string FindCircle(const SWaiter& waiter) const;
  static const SWaiter* WaiterOf(const SThreadState* thread);

  CbCriticalSection m_section;
  std::atomic<const SThreadState*> m_owner{nullptr};  // written by the thread that has the lock
  std::size_t m_depth = 0;
};

}  // namespace Zorbel::Internal
