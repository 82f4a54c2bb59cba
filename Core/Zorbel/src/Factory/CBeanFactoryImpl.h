#pragma once

#include <Zorbel/IBeanFactory.h>

#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include "BasePool/CbCriticalSection.h"
#include "Configuration/CXMLResource.h"
#include "Resolution/CFactoryState.h"
#include "Threads/CFactoryMutex.h"

namespace Zorbel {

/// The bean factory. One re-entrant lock guards all of it; it is held while beans and singleton services are created.
/// Services that are kept are looked up under a lock of their own.
/// Ownership: shared; while one of its calls runs, that call is an owner too. Whoever lets go of it as the last has its
/// objects released first, when the factory still answers, and can be owned anew.
/// Throws: every operation but `GetBean` a `CException` where waiting for the lock would close a circle of threads.
class CBeanFactoryImpl : public IBeanFactory, public std::enable_shared_from_this<CBeanFactoryImpl> {
 public:
  /// Told of a factory that is owned again, while it ends, though its owners had let go of it.
  using OwnedAgain = void (*)(const std::shared_ptr<CBeanFactoryImpl>& factory) noexcept;

  static std::shared_ptr<CBeanFactoryImpl> Create(OwnedAgain ownedAgain);

  CBeanFactoryImpl() : CBeanFactoryImpl(std::make_shared<CFactoryState>(this)) {}
  ~CBeanFactoryImpl() override;

  /// Takes over what `source` holds. Throws: `CException` when this factory is not emptied.
  CBeanFactoryImpl& operator=(CBeanFactoryImpl&& source);  // NOLINT(performance-noexcept-move-constructor)

  bool Exists(const char* name) override;
  std::shared_ptr<IObject> GetService(const char* typeId, unsigned int index) override;
  std::shared_ptr<IObject> GetService(const char* typeId) override { return GetService(typeId, 0); }
  std::shared_ptr<IObject> GetBean(const char* name, const SLibrary* library) override;
  std::shared_ptr<ITypeRegistration> RegisterService(const char* typeId, bool front,
                                                     std::function<std::unique_ptr<IObject>()>&& maker,
                                                     std::shared_ptr<ITypeRegistration> registration) override;
  std::shared_ptr<ITypeRegistration> RegisterInstance(const char* typeId, bool front, std::shared_ptr<IObject> instance,
                                                      std::shared_ptr<ITypeRegistration> registration) override;
  void ReleaseInstance(const std::shared_ptr<IObject>& instance) override;
  unsigned int GetServiceCount(const char* typeId) override;

  /// Resolves a bean on behalf of `library`, or of the host when that is null. Returns empty parts, with the reason in
  /// the log, when it cannot be had. Never throws.
  SBean GetBeanWrapper(const char* name, const SLibrary* library) noexcept;

  /// Merges a document, then creates every bean that is to be created at load time. Returns the name of a bean that is
  /// taken, with nothing merged then. Throws: as `CXMLResource::Integrate`, with nothing merged.
  std::optional<CStringT<char>> Integrate(CXMLResource& resource);

  /// Runs `work` under the factory's lock, which cannot be refused to it then.
  void WhileLocked(const std::function<void()>& work);

  /// Forgets everything. Objects held elsewhere live on. Throws: std::bad_alloc, with nothing forgotten.
  void Clear();

  /// Forgets everything unless there are more owners than that.
  void EndUnlessShared(long owners) noexcept;

 private:
  class COwner;
  class CCall;
  struct SDisposer;

  explicit CBeanFactoryImpl(std::shared_ptr<CFactoryState> state) : m_state(std::move(state)) {}

  SBean Resolve(const char* name, const SLibrary* library);
  std::optional<CStringT<char>> Merge(CXMLResource& resource);
  void CreateEagerBeans();
  bool HasContent() const;
  void EndOwnedAgain(const SDisposer& disposer);
  void End(std::shared_ptr<CFactoryState> empty) noexcept;
  void ReleaseServices() noexcept;

  /// Returns the ready-made instance or the singleton's, without waiting for what is being made; null when there is
  /// none.
  std::shared_ptr<IObject> FindKeptService(const char* typeId, unsigned int index);

  Internal::CFactoryMutex m_lock;
  CbCriticalSection m_servicesLock;  // taken last, for a short time; what changes services or `m_state` has both
  std::shared_ptr<CFactoryState> m_state;
  bool m_inLastStep = false;  // of its end, when it takes no documents
  bool m_goes = false;        // with its next last owner, whatever it holds
};

}  // namespace Zorbel
