#include "Services/CServiceConfig.h"

#include <utility>

#include "BasePool/CbMap.h"
#include "BasePool/CbNeverDestroyed.h"
#include "Errors/Raise.h"
#include "Threads/ThreadState.h"

namespace Zorbel {
namespace {

constexpr const char* kFile = "Core/Zorbel/src/CServiceConfig";

const Logging::CLogger logger(L"Zorbel.Modules");

using ReleaseTable = CbMap<const IObject*, CServiceConfig::ReleaseFunction>;

// Guarded by the release lock, and there as long.
ReleaseTable& Releases() {
  static const CbNeverDestroyed<ReleaseTable> table;
  return *table;
}

using Holders = CbMap<const void*, CServiceConfig*>;  // the first of each instance

Holders& HoldersByInstance() {
  static const CbNeverDestroyed<Holders> holders;
  return *holders;
}

const void* WholeOf(const std::shared_ptr<IObject>& instance) { return dynamic_cast<const void*>(instance.get()); }

bool Succeeds(const CServiceConfig::ReleaseFunction& function, const IObject* object) noexcept {
  try {
    function(object);
    return true;
  } catch (...) {
    return false;
  }
}

// Runs in a destructor of a shared pointer, where an exception would end the process. Tells of one where the lock is
// not held any more.
template <class F>
void ReleaseContained(F succeeds) noexcept {
  bool succeeded = false;
  {
    const Internal::CReleaseLock lock;
    succeeded = succeeds();
  }
  if (!succeeded) {
    Internal::Warn(logger, {kFile, "Zorbel::CServiceConfig::Release"},
                   L"Release function of a service threw exception");
  }
}

struct SReleaser {
  void operator()(IObject* object) const noexcept {
    ReleaseContained([object] { return CallReleaseFunction(object); });
    delete object;
  }

 private:
  static bool CallReleaseFunction(const IObject* object) noexcept {
    CServiceConfig::ReleaseFunction* entry = Releases().Lookup(object);
    if (entry == nullptr) {
      return true;
    }
    const CServiceConfig::ReleaseFunction function = std::move(*entry);
    Releases().RemoveKey(object);
    return Succeeds(function, object);
  }
};

// A null instance has no address to enter its function under. The shared pointer moves its deleter, which must not
// throw.
std::shared_ptr<IObject> WrapNull(CServiceConfig::ReleaseFunction function) {
  return {static_cast<IObject*>(nullptr), [function = std::move(function)](const IObject* object) noexcept {
            ReleaseContained([&] { return Succeeds(function, object); });
          }};
}

void EnterRelease(const IObject* object, const CServiceConfig::ReleaseFunction& function) {
  const Internal::CReleaseLock lock;
  Releases().SetAt(object).value = CServiceConfig::ReleaseFunction(function);  // copied before its entry is made
}

std::shared_ptr<IObject> WrapReleased(std::unique_ptr<IObject> made, const CServiceConfig::ReleaseFunction& function) {
  if (!made) {
    return WrapNull(function);
  }
  try {
    EnterRelease(made.get(), function);
  } catch (...) {
    ReleaseContained([&] { return Succeeds(function, made.get()); });  // no instance goes without it
    throw;
  }
  return {made.release(), SReleaser()};
}

}  // namespace

void CServiceConfig::SetReleaseFunction(ReleaseFunction function) {
  SharedReleaseFunction next;
  if (function) {
    next = std::make_shared<const ReleaseFunction>(std::move(function));
  }
  const std::lock_guard lock(m_mutex);
  m_releaseFunction.swap(next);
}

CServiceConfig::ReleaseFunction CServiceConfig::GetReleaseFunction() const {
  const SharedReleaseFunction function = CurrentReleaseFunction();
  return function ? *function : ReleaseFunction();
}

CServiceConfig::SharedReleaseFunction CServiceConfig::CurrentReleaseFunction() const {
  const std::lock_guard lock(m_mutex);
  return m_releaseFunction;
}

std::shared_ptr<IObject> CServiceConfig::GetInstance() {
  if (std::shared_ptr<IObject> kept = GetKeptInstance()) {
    return kept;
  }
  std::shared_ptr<IObject> made = Produce();
  return m_singleton ? Keep(made) : made;
}

std::shared_ptr<IObject> CServiceConfig::Produce() {
  if (m_sharedMaker) {
    return m_sharedMaker();
  }
  std::unique_ptr<IObject> made = m_ownedMaker();
  const SharedReleaseFunction release = CurrentReleaseFunction();
  return release ? WrapReleased(std::move(made), *release) : std::shared_ptr<IObject>(std::move(made));
}

// The first instance stays, also when its maker has asked for the service itself. A null one is kept until the next.
std::shared_ptr<IObject> CServiceConfig::Keep(const std::shared_ptr<IObject>& instance) {
  std::shared_ptr<IObject> replaced;  // gone outside the mutex: a release function may come with it
  const std::lock_guard lock(m_mutex);
  if (m_hasInstance) {
    return m_instance;
  }
  if (!instance) {
    replaced = std::exchange(m_nullInstance, instance);
    return instance;
  }
  BecomeHolder(WholeOf(instance));
  replaced.swap(m_nullInstance);
  m_instance = instance;
  m_hasInstance.store(true, std::memory_order_release);
  return instance;
}

std::shared_ptr<IObject> CServiceConfig::GetKeptInstance() const {
  return m_hasInstance.load(std::memory_order_acquire) ? m_instance : nullptr;
}

CServiceConfig::~CServiceConfig() {
  if (m_hasInstance) {
    CeaseToHold();
  }
}

CbCriticalSection& CServiceConfig::HoldersLock() {
  static const CbNeverDestroyed<CbCriticalSection> section;
  return *section;
}

const CServiceConfig* CServiceConfig::FirstHolder(const std::shared_ptr<IObject>& instance) {
  CServiceConfig* const* first = instance ? HoldersByInstance().Lookup(WholeOf(instance)) : nullptr;
  return first != nullptr ? *first : nullptr;
}

void CServiceConfig::BecomeHolder(const void* object) {
  const CbLock lock(HoldersLock());
  CServiceConfig*& first = HoldersByInstance().SetAt(object).value;
  m_held = object;
  m_nextHolder = std::exchange(first, this);
  if (m_nextHolder != nullptr) {
    m_nextHolder->m_previousHolder = this;
  }
}

void CServiceConfig::CeaseToHold() noexcept {
  const CbLock lock(HoldersLock());
  if (m_nextHolder != nullptr) {
    m_nextHolder->m_previousHolder = m_previousHolder;
  }
  if (m_previousHolder != nullptr) {
    m_previousHolder->m_nextHolder = m_nextHolder;
  } else if (m_nextHolder != nullptr) {
    *HoldersByInstance().Lookup(m_held) = m_nextHolder;
  } else {
    HoldersByInstance().RemoveKey(m_held);
  }
}

}  // namespace Zorbel
