#pragma once

#include <Zorbel/ITypeRegistration.h>

#include <atomic>
#include <memory>
#include <mutex>

#include "BasePool/CbCriticalSection.h"

namespace Zorbel {

/// A service registration: a ready-made instance, or a maker of shared or of owned instances.
/// Thread: instances may be asked for on any thread. Productions of one singleton are serialised by the caller.
class CServiceConfig : public ITypeRegistration {
 public:
  using SharedMaker = std::function<std::shared_ptr<IObject>()>;
  using OwnedMaker = std::function<std::unique_ptr<IObject>()>;
  using ReleaseFunction = std::function<void(const IObject*)>;

  explicit CServiceConfig(SharedMaker&& maker) : m_sharedMaker(std::move(maker)) {}
  explicit CServiceConfig(OwnedMaker&& maker) : m_ownedMaker(std::move(maker)) {}
  explicit CServiceConfig(const std::shared_ptr<IObject>& instance) { Keep(instance); }
  ~CServiceConfig() override;

  void SetSingleton() override { m_singleton = true; }
  bool IsSingleton() const override { return m_singleton; }
  void SetReleaseFunction(ReleaseFunction function) override;
  ReleaseFunction GetReleaseFunction() const override;

  bool HasMaker() const { return m_sharedMaker || m_ownedMaker; }

  /// Returns the kept instance, or else a new one, which a singleton keeps unless it is null.
  /// Requires: a maker. Throws: what that throws.
  std::shared_ptr<IObject> GetInstance();

  /// Returns the ready-made instance or the singleton's; empty when there is none yet. Takes no lock.
  std::shared_ptr<IObject> GetKeptInstance() const;

  /// Calls `visit` with each registration of the process whose kept instance is `instance`; a null one is held by none.
  /// An object that is an `IObject` in several ways counts as one. Requires: `visit` calls no code of plug-ins.
  template <class F>
  static void ForEachHolder(const std::shared_ptr<IObject>& instance, F visit) {
    const CbLock lock(HoldersLock());
    for (const CServiceConfig* holder = FirstHolder(instance); holder != nullptr; holder = holder->m_nextHolder) {
      visit(*holder);
    }
  }

 private:
  static CbCriticalSection& HoldersLock();
  static const CServiceConfig* FirstHolder(const std::shared_ptr<IObject>& instance);

  using SharedReleaseFunction = std::shared_ptr<const ReleaseFunction>;  // shared: taking it needs no memory

  SharedReleaseFunction CurrentReleaseFunction() const;
  std::shared_ptr<IObject> Produce();
  std::shared_ptr<IObject> Keep(const std::shared_ptr<IObject>& instance);
  void BecomeHolder(const void* object);
  void CeaseToHold() noexcept;

  std::shared_ptr<IObject> m_instance;  // written once, before m_hasInstance is set
  std::atomic<bool> m_hasInstance{false};
  std::shared_ptr<IObject> m_nullInstance;  // what a singleton's maker gave last, with what that has to release
  SharedMaker m_sharedMaker;
  OwnedMaker m_ownedMaker;
  std::atomic<bool> m_singleton{false};
  mutable std::mutex m_mutex;  // guards the release function and the writing of the instance; no code runs under it
  SharedReleaseFunction m_releaseFunction;  // null for none
  const void* m_held = nullptr;             // the kept instance as a whole
  CServiceConfig* m_nextHolder = nullptr;   // of the same instance
  CServiceConfig* m_previousHolder = nullptr;
};

}  // namespace Zorbel
