#include "Internal.h"

#include <mutex>

#include "CBeanFactoryImpl.h"
#include "Raise.h"
#include "ThreadState.h"

namespace Zorbel::Internal {
namespace {

constexpr const char* kFile = "Core/Zorbel/src/CContainer";
constexpr const char* kIntegrate = "Zorbel::Internal::IntegrateResource";

std::mutex integrationMutex;
std::mutex slotMutex;  // apart from the one above: a bean built under that may construct a container
std::weak_ptr<CBeanFactoryImpl> sharedFactory;

std::shared_ptr<CBeanFactoryImpl> SharedFactory() {
  const std::lock_guard lock(slotMutex);
  std::shared_ptr<CBeanFactoryImpl> factory = sharedFactory.lock();
  if (!factory) {
    factory = std::make_shared<CBeanFactoryImpl>();
    sharedFactory = factory;
  }
  return factory;
}

/// Holds the integration mutex and marks the thread as loading.
class CLoading {
 public:
  CLoading() : m_lock(integrationMutex, std::defer_lock) {
    RequireNotLoading();
    Lock();
    ThisThread().loading = true;
  }
  ~CLoading() { ThisThread().loading = false; }
  CLoading(const CLoading&) = delete;
  CLoading& operator=(const CLoading&) = delete;

 private:
  // The mutex comes before any factory's lock. Code that runs under one must not wait for the mutex: its holder may be
  // waiting for that lock.
  void Lock() {
    if (m_lock.try_lock()) {
      return;
    }
    if (ThisThread().factoryLocksHeld > 0) {
      Raise({kFile, kIntegrate}, L"Configuration is being loaded by another thread");
    }
    const CReleasePause pause;
    m_lock.lock();
  }

  std::unique_lock<std::mutex> m_lock;
};

}  // namespace

std::shared_ptr<IBeanFactory> CreateFactory(bool integrated) {
  std::shared_ptr<IBeanFactory> factory = integrated ? SharedFactory() : std::make_shared<CBeanFactoryImpl>();
  if (!factory) {
    Raise({kFile, "Zorbel::Internal::CreateFactory"}, L"Could not create bean factory");
  }
  return factory;
}

bool IsSharedFactory(const IBeanFactory* factory) {
  std::shared_ptr<IBeanFactory> shared;  // released, perhaps as the last, outside the mutex
  const std::lock_guard lock(slotMutex);
  shared = sharedFactory.lock();
  return factory != nullptr && shared.get() == factory;
}

void RequireNotLoading() {
  if (ThisThread().loading) {
    Raise({kFile, kIntegrate}, L"Configuration is being loaded on this thread");
  }
}

void IntegrateResource(CBeanFactoryImpl& factory, CXMLResource& resource) {
  const CLoading loading;
  factory.Integrate(resource);
  factory.CreateEagerBeans();
}

}  // namespace Zorbel::Internal
