#include "Threads/CFactoryMutex.h"

#include <mutex>

#include "BasePool/CbNeverDestroyed.h"
#include "Threads/ThreadState.h"

namespace Zorbel::Internal {
namespace {

// Guards the list of those who wait. Only they take it: who has a lock that is free does not.
std::mutex& WaitersMutex() {
  static const CbNeverDestroyed<std::mutex> mutex;
  return *mutex;
}

}  // namespace

/// A thread that waits, in the list of all that do. Whoever is in it is blocked, so that what it has stays its own.
struct CFactoryMutex::SWaiter {
  SWaiter(const CFactoryMutex& lock, const char* bean)
      : wanted(&lock), requested(bean), thread(&ThisThread()), resolving(ThisThread().resolving) {}

  void Enter() {
    next = FirstWaiter();
    FirstWaiter() = this;
  }

  void Leave() {
    const std::lock_guard lock(WaitersMutex());
    SWaiter** link = &FirstWaiter();
    while (*link != this) {
      link = &(*link)->next;
    }
    *link = next;
  }

  const CFactoryMutex* wanted;
  const char* requested;
  const SThreadState* thread;
  const SResolving* resolving;
  SWaiter* next = nullptr;
};

CFactoryMutex::SWaiter*& CFactoryMutex::FirstWaiter() {
  static SWaiter* first = nullptr;
  return first;
}

std::string CFactoryMutex::Lock(const char* requested) {
  if (!m_section.TryLock()) {
    if (std::string circle = Wait(requested); !circle.empty()) {
      return circle;
    }
  }
  if (m_depth++ == 0) {
    m_owner.store(&ThisThread(), std::memory_order_release);
  }
  ++ThisThread().factoryLocksHeld;
  return {};
}

void CFactoryMutex::Unlock() {
  --ThisThread().factoryLocksHeld;
  if (--m_depth == 0) {
    m_owner.store(nullptr, std::memory_order_release);
  }
  m_section.Unlock();
}

std::string CFactoryMutex::Wait(const char* requested) {
  const CReleasePause pause;
  SWaiter waiter(*this, requested);
  {
    const std::lock_guard lock(WaitersMutex());
    if (std::string circle = FindCircle(waiter); !circle.empty()) {
      return circle;
    }
    waiter.Enter();
  }
  m_section.Lock();
  waiter.Leave();
  return {};
}

// A thread that does not wait will come to its end, or look for a circle itself.
std::string CFactoryMutex::FindCircle(const SWaiter& waiter) const {
  if (waiter.thread->factoryLocksHeld == 0) {
    return {};
  }
  std::string path;
  for (const SWaiter* next = &waiter; next != nullptr;) {
    path += (path.empty() ? "" : ", ") + PathOf(next->resolving, next->requested);
    const SThreadState* owner = next->wanted->m_owner.load(std::memory_order_acquire);
    if (owner == waiter.thread) {
      return path;
    }
    next = WaiterOf(owner);
  }
  return {};
}

const CFactoryMutex::SWaiter* CFactoryMutex::WaiterOf(const SThreadState* thread) {
  const SWaiter* waiter = FirstWaiter();
  while (waiter != nullptr && waiter->thread != thread) {
    waiter = waiter->next;
  }
  return waiter;
}

}  // namespace Zorbel::Internal
