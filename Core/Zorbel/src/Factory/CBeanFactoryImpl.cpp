#include "Factory/CBeanFactoryImpl.h"

#include <new>
#include <string>
#include <utility>
#include <vector>

#include "Errors/Raise.h"
#include "Errors/SharedOrigins.h"
#include "Resolution/CBeanResolution.h"
#include "Services/CServiceConfig.h"
#include "Threads/ThreadState.h"

namespace Zorbel {
namespace {

const Logging::CLogger logger(L"Zorbel");

constexpr int kMostRounds = 100;  // of releasing; code that goes on making objects while they are released does not end

struct SUnlock {
  void operator()(Internal::CFactoryMutex* mutex) const { mutex->Unlock(); }
};

void WarnOfException(const char* name) noexcept {
  try {
    Internal::Warn(logger, {Internal::kFactoryFile, Internal::kResolutionFunction},
                   L"Could not resolve bean '%s', unknown exception was thrown", std::string_view(name));
  } catch (...) {
    // Memory for the line cannot be had; the empty result has to tell.
  }
}

}  // namespace

/// Owns the factory, if that is not ending: code of plug-ins may let go of the last container.
class CBeanFactoryImpl::COwner {
 public:
  explicit COwner(CBeanFactoryImpl& factory) : m_factory(factory.weak_from_this().lock()) {}
  ~COwner() {
    if (m_factory) {
      m_factory->EndUnlessShared(1);
    }
  }
  COwner(const COwner&) = delete;
  COwner& operator=(const COwner&) = delete;

 private:
  const std::shared_ptr<CBeanFactoryImpl> m_factory;
};

/// Holds the factory and its lock.
class CBeanFactoryImpl::CCall {
 public:
  /// For a request of a bean; the call has to ask whether it has the lock.
  CCall(CBeanFactoryImpl& factory, const char* bean)
      : m_owner(factory), m_lock(factory.m_lock), m_circle(m_lock.Lock(bean)) {}

  /// Throws: `CException` when the lock cannot be had.
  explicit CCall(CBeanFactoryImpl& factory) : CCall(factory, "") {
    if (!HasLock()) {
      Internal::Raise({Internal::kFactoryFile, "Zorbel::CBeanFactoryImpl::CCall"},
                      L"Factory is requested on threads that wait for each other (%s)", AnsiToWide(m_circle));
    }
  }
  ~CCall() {
    if (HasLock()) {
      m_lock.Unlock();
    }
  }
  CCall(const CCall&) = delete;
  CCall& operator=(const CCall&) = delete;

  bool HasLock() const { return m_circle.empty(); }

  /// Returns what the threads that wait for each other do; empty when the lock is held.
  const std::string& GetCircle() const { return m_circle; }

 private:
  const COwner m_owner;
  Internal::CFactoryMutex& m_lock;
  const std::string m_circle;
};

/// Deletes the factory, when it is empty. Owners that let go at the same time, and those that are no container, leave
/// that to it.
struct CBeanFactoryImpl::SDisposer {
  void operator()(CBeanFactoryImpl* factory) const noexcept {
    if (factory->m_goes || !factory->HasContent()) {
      delete factory;
      return;
    }
    try {
      factory->EndOwnedAgain(*this);
    } catch (const std::bad_alloc&) {
      return;  // it is gone: the destructor needs no memory
    }
  }

  OwnedAgain ownedAgain;
};

std::shared_ptr<CBeanFactoryImpl> CBeanFactoryImpl::Create(OwnedAgain ownedAgain) {
  return {new CBeanFactoryImpl, SDisposer{ownedAgain}};
}

SBean CBeanFactoryImpl::GetBeanWrapper(const char* name, const SLibrary* library) noexcept {
  const char* bean = name != nullptr ? name : "";
  try {
    return Resolve(bean, library);
  } catch (...) {
    WarnOfException(bean);
  }
  return {};
}

SBean CBeanFactoryImpl::Resolve(const char* name, const SLibrary* library) {
  const CCall call(*this, name);
  if (!call.HasLock()) {
    Internal::Warn(logger, {Internal::kFactoryFile, Internal::kResolutionFunction},
                   L"Bean '%s' requested on two threads that wait for each other (%s)", std::string_view(name),
                   call.GetCircle());
    return {};
  }
  CBeanResolution resolution(*this, m_state, name, library);
  try {
    return resolution.Run();
  } catch (...) {
    WarnOfException(name);
  }
  return {};
}

std::shared_ptr<IObject> CBeanFactoryImpl::GetBean(const char* name, const SLibrary* library) {
  return GetBeanWrapper(name, library).second;
}

// Each operation keeps the state that it works on: code of plug-ins that it calls may empty the factory.

bool CBeanFactoryImpl::Exists(const char* name) {
  const CCall call(*this);
  const std::shared_ptr<CFactoryState> state = m_state;
  return name != nullptr && state->configuration.FindBeanConfig(name) != nullptr;
}

std::shared_ptr<IObject> CBeanFactoryImpl::GetService(const char* typeId, unsigned int index) {
  const COwner owner(*this);
  if (std::shared_ptr<IObject> kept = FindKeptService(typeId, index)) {
    return kept;
  }
  std::shared_ptr<ITypeRegistration> registration;
  {
    const CCall call(*this);
    const Internal::CServicesLock services(m_servicesLock);
    registration = m_state->configuration.FindService(typeId, index);
  }
  if (!registration) {
    return nullptr;
  }
  auto* service = dynamic_cast<CServiceConfig*>(registration.get());
  if (std::shared_ptr<IObject> kept = service != nullptr ? service->GetKeptInstance() : nullptr) {
    return kept;  // another registration may stand here by now
  }
  if (service == nullptr || !service->HasMaker()) {
    Internal::Raise({"Core/Zorbel/src/CServiceConfig", "Zorbel::CServiceConfig::GetInstance"},
                    L"No constructor for service type registered");
  }
  if (!service->IsSingleton()) {
    return service->GetInstance();
  }
  const CCall call(*this);
  return service->GetInstance();
}

std::shared_ptr<IObject> CBeanFactoryImpl::FindKeptService(const char* typeId, unsigned int index) {
  std::shared_ptr<ITypeRegistration> registration;
  {
    const Internal::CServicesLock lock(m_servicesLock);
    registration = m_state->configuration.FindService(typeId, index);
  }
  const auto* service = dynamic_cast<const CServiceConfig*>(registration.get());
  return service != nullptr ? service->GetKeptInstance() : nullptr;
}

std::shared_ptr<ITypeRegistration> CBeanFactoryImpl::RegisterService(const char* typeId, bool front,
                                                                     std::function<std::unique_ptr<IObject>()>&& maker,
                                                                     std::shared_ptr<ITypeRegistration> registration) {
  CXMLResource::RequireTypeId(typeId, "Zorbel::CXMLResource::RegisterService", L"RegisterService: the type id is null");
  const CCall call(*this);
  const Internal::CServicesLock services(m_servicesLock);
  return m_state->configuration.RegisterService(typeId, front, std::move(maker), std::move(registration));
}

// Errors are raised, and so written to the log, where no lock is held.

std::shared_ptr<ITypeRegistration> CBeanFactoryImpl::RegisterInstance(const char* typeId, bool front,
                                                                      std::shared_ptr<IObject> instance,
                                                                      std::shared_ptr<ITypeRegistration> registration) {
  CXMLResource::RequireTypeId(typeId, "Zorbel::CXMLResource::RegisterInstance",
                              L"RegisterInstance: the type id is null");
  std::shared_ptr<ITypeRegistration> registered;
  {
    const CCall call(*this);
    const Internal::CServicesLock services(m_servicesLock);
    registered = m_state->configuration.RegisterInstance(typeId, front, instance, std::move(registration));
  }
  if (!registered) {
    CXMLResource::RaiseAlreadyRegistered(typeId);
  }
  return registered;
}

void CBeanFactoryImpl::ReleaseInstance(const std::shared_ptr<IObject>& instance) {
  std::vector<std::shared_ptr<ITypeRegistration>> removed;  // destroyed outside the lock
  {
    const CCall call(*this);
    const Internal::CServicesLock services(m_servicesLock);
    removed = m_state->configuration.ReleaseInstance(instance);
  }
  if (removed.empty()) {
    CXMLResource::RaiseNotRegistered();
  }
}

unsigned int CBeanFactoryImpl::GetServiceCount(const char* typeId) {
  const CCall call(*this);
  return m_state->configuration.GetServiceCount(typeId);
}

// What is merged stays: nothing behind that fails.
std::optional<CStringT<char>> CBeanFactoryImpl::Integrate(CXMLResource& resource) {
  const CCall call(*this);
  std::optional<CStringT<char>> taken = Merge(resource);
  if (!taken) {
    CreateEagerBeans();
  }
  return taken;
}

// A document that comes in the last step of the end would survive it.
std::optional<CStringT<char>> CBeanFactoryImpl::Merge(CXMLResource& resource) {
  if (m_inLastStep) {
    return std::nullopt;
  }
  const Internal::CServicesLock services(m_servicesLock);
  return m_state->configuration.Integrate(resource);
}

// In the order of merging, also those of earlier documents: one that is no singleton is made again. The list stays as
// it is, for no document is merged meanwhile.
void CBeanFactoryImpl::CreateEagerBeans() {
  const std::shared_ptr<CFactoryState> state = m_state;
  for (const CStringT<char>& name : state->configuration.GetEagerBeans()) {
    GetBeanWrapper(name, state->configuration.FindEagerLibrary(name));
  }
}

void CBeanFactoryImpl::WhileLocked(const std::function<void()>& work) {
  const CCall call(*this);
  work();
}

void CBeanFactoryImpl::Clear() {
  const CCall call(*this);
  End(std::make_shared<CFactoryState>(this));
}

// Who comes meanwhile, and has the factory from the slot of the shared one, waits for the lock and finds it empty.
void CBeanFactoryImpl::EndUnlessShared(long owners) noexcept {
  if (weak_from_this().use_count() > owners) {
    return;
  }
  try {
    if (m_lock.Lock("").empty()) {
      const std::unique_ptr<Internal::CFactoryMutex, SUnlock> lock(&m_lock);
      if (weak_from_this().use_count() <= owners && HasContent()) {
        End(std::make_shared<CFactoryState>(this));
      }
    }
  } catch (const std::bad_alloc&) {
    return;  // the destructor needs no memory
  }
}

// The lock is free as long as nobody is told. Throws: std::bad_alloc, with the factory deleted.
void CBeanFactoryImpl::EndOwnedAgain(const SDisposer& disposer) {
  m_goes = true;
  const std::shared_ptr<CBeanFactoryImpl> owner(this, disposer);
  auto empty = std::make_shared<CFactoryState>(this);
  m_goes = false;
  const CCall call(*this);
  disposer.ownedAgain(owner);
  End(std::move(empty));
}

// No thread but this one knows the factory any more, and no owner can be had: the empty state need not outlive it.
CBeanFactoryImpl::~CBeanFactoryImpl() {
  if (m_state && HasContent()) {
    CFactoryState empty(this);
    End({std::shared_ptr<void>(), &empty});
    m_state.reset();
  }
}

bool CBeanFactoryImpl::HasContent() const {
  return m_state->HasObjects() || m_state->configuration.HasServices() || m_state->configuration.HasDefinitions();
}

// Destructors and exit methods may call back. First they find everything as it was, and what they make is released in
// its turn; those of services and of what belongs to definitions find nothing configured.
void CBeanFactoryImpl::End(std::shared_ptr<CFactoryState> empty) noexcept {
  for (int round = 0; round < kMostRounds && m_state->HasObjects(); ++round) {
    const std::shared_ptr<CFactoryState> state = m_state;
    state->ReleaseObjects();
  }
  std::shared_ptr<CFactoryState> old;
  {
    const Internal::CServicesLock services(m_servicesLock);
    old = std::move(m_state);
    *this = CBeanFactoryImpl(std::move(empty));
  }
  const bool wasInLastStep = std::exchange(m_inLastStep, true);
  old->ReleaseObjects();
  {
    CServiceRegistry released;
    old->configuration.SwapServices(released);
  }
  old.reset();
  for (int round = 0; round < kMostRounds && m_state->configuration.HasServices(); ++round) {
    ReleaseServices();
  }
  m_state->configuration.AbandonServices();
  m_inLastStep = wasInLastStep;
}

void CBeanFactoryImpl::ReleaseServices() noexcept {
  CServiceRegistry released;  // gone outside of the services' lock
  const Internal::CServicesLock services(m_servicesLock);
  m_state->configuration.SwapServices(released);
}

CBeanFactoryImpl& CBeanFactoryImpl::operator=(CBeanFactoryImpl&& source) {  // NOLINT(*-noexcept-move-constructor)
  const CCall call(*this);
  if (m_state) {
    Internal::Raise({Internal::kFactoryFile, "Zorbel::CBeanFactoryImpl::operator ="}, L"Internal error");
  }
  const Internal::CServicesLock services(m_servicesLock);
  m_state = std::move(source.m_state);
  return *this;
}

}  // namespace Zorbel
