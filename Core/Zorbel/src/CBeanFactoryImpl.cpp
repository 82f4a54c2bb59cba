#include "CBeanFactoryImpl.h"

#include <vector>

#include "CBeanResolution.h"
#include "CServiceConfig.h"
#include "Raise.h"
#include "ThreadState.h"

namespace Zorbel {
namespace {

const Logging::CLogger logger(L"Zorbel");

void WarnOfException(const char* name) noexcept {
  try {
    Internal::Warn(logger, {kFactoryFile, kResolutionFunction},
                   L"Could not resolve bean '%s', unknown exception was thrown", std::string_view(name));
  } catch (...) {
    // Memory for the line cannot be had; the empty result has to tell.
  }
}

}  // namespace

/// Holds the factory's lock, and the factory itself: code of plug-ins may let go of the last container.
class CBeanFactoryImpl::CCall {
 public:
  explicit CCall(CBeanFactoryImpl& factory) : m_factory(factory.weak_from_this().lock()), m_lock(factory.m_lock) {}

 private:
  std::shared_ptr<CBeanFactoryImpl> m_factory;
  Internal::CFactoryLock m_lock;
};

SBean CBeanFactoryImpl::GetBeanWrapper(const char* name, const SLibrary* library) noexcept {
  const CCall call(*this);
  CBeanResolution resolution(*this, m_state, name != nullptr ? name : "", library);
  try {
    return resolution.Run();
  } catch (...) {
    WarnOfException(name != nullptr ? name : "");
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
  const std::shared_ptr<CBeanFactoryImpl> alive = weak_from_this().lock();
  if (std::shared_ptr<IObject> kept = FindKeptService(typeId, index)) {
    return kept;
  }
  std::shared_ptr<ITypeRegistration> registration;
  {
    const CCall call(*this);
    registration = m_state->configuration.FindService(typeId, index);
  }
  if (!registration) {
    return nullptr;
  }
  auto* service = dynamic_cast<CServiceConfig*>(registration.get());
  if (service == nullptr) {
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
    const Internal::CFactoryLock lock(m_servicesLock);
    registration = m_state->configuration.FindService(typeId, index);
  }
  const auto* service = dynamic_cast<const CServiceConfig*>(registration.get());
  return service != nullptr ? service->GetKeptInstance() : nullptr;
}

std::shared_ptr<ITypeRegistration> CBeanFactoryImpl::RegisterService(const char* typeId, bool front,
                                                                     std::function<std::unique_ptr<IObject>()>&& maker,
                                                                     std::shared_ptr<ITypeRegistration> registration) {
  const CCall call(*this);
  const Internal::CFactoryLock services(m_servicesLock);
  return m_state->configuration.RegisterService(typeId, front, std::move(maker), std::move(registration));
}

std::shared_ptr<ITypeRegistration> CBeanFactoryImpl::RegisterInstance(const char* typeId, bool front,
                                                                      std::shared_ptr<IObject> instance,
                                                                      std::shared_ptr<ITypeRegistration> registration) {
  const CCall call(*this);
  const Internal::CFactoryLock services(m_servicesLock);
  return m_state->configuration.RegisterInstance(typeId, front, instance, std::move(registration));
}

void CBeanFactoryImpl::ReleaseInstance(const std::shared_ptr<IObject>& instance) {
  std::vector<std::shared_ptr<ITypeRegistration>> removed;  // destroyed outside the lock
  const CCall call(*this);
  const Internal::CFactoryLock services(m_servicesLock);
  removed = m_state->configuration.ReleaseInstance(instance);
}

unsigned int CBeanFactoryImpl::GetServiceCount(const char* typeId) {
  const CCall call(*this);
  return m_state->configuration.GetServiceCount(typeId);
}

void CBeanFactoryImpl::Integrate(CXMLResource& resource) {
  const CCall call(*this);
  const Internal::CFactoryLock services(m_servicesLock);
  m_state->configuration.Integrate(resource);
}

void CBeanFactoryImpl::CreateEagerBeans() {
  const CCall call(*this);
  const std::shared_ptr<CFactoryState> state = m_state;  // keeps the libraries of the list
  for (const auto& [name, library] : state->configuration.GetEagerBeans()) {
    GetBeanWrapper(name, library);
  }
}

// The new state is in place before the old one is released: destructors of plug-ins may call back.
void CBeanFactoryImpl::Clear() {
  const CCall call(*this);
  CBeanFactoryImpl fresh(this);
  std::shared_ptr<CFactoryState> old;
  {
    const Internal::CFactoryLock services(m_servicesLock);
    old = std::move(m_state);
    *this = std::move(fresh);
  }
  old->ReleaseObjects();
}

CBeanFactoryImpl& CBeanFactoryImpl::operator=(CBeanFactoryImpl&& source) {  // NOLINT(*-noexcept-move-constructor)
  const CCall call(*this);
  if (m_state) {
    Internal::Raise({kFactoryFile, "Zorbel::CBeanFactoryImpl::operator ="}, L"Internal error");
  }
  const Internal::CFactoryLock services(m_servicesLock);
  m_state = std::move(source.m_state);
  return *this;
}

}  // namespace Zorbel
