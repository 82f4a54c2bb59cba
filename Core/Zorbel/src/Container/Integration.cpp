#include "Container/Integration.h"

#include <mutex>
#include <optional>

#include "BasePool/CbNeverDestroyed.h"
#include "Configuration/CXMLResource.h"
#include "Errors/Raise.h"
#include "Errors/SharedOrigins.h"
#include "Factory/CBeanFactoryImpl.h"
#include "Threads/ThreadState.h"

namespace Zorbel::Internal {
namespace {

constexpr const char* kIntegrate = "Zorbel::Internal::IntegrateResource";

std::mutex& IntegrationMutex() {
  static const CbNeverDestroyed<std::mutex> mutex;
  return *mutex;
}

// The mutex comes before any factory's lock. Code that runs under one must not wait for the mutex: its holder may be
// waiting for that lock.
bool TakeIntegration() {
  SThreadState& thread = ThisThread();
  RequireNotLoading();
  if (thread.holdsIntegration) {
    return false;
  }
  if (!IntegrationMutex().try_lock()) {
    if (thread.factoryLocksHeld > 0) {
      Raise({kContainerFile, kIntegrate}, L"Configuration is being loaded by another thread");
    }
    const CReleasePause pause;
    IntegrationMutex().lock();
  }
  thread.holdsIntegration = true;
  return true;
}

/// Marks the thread as merging.
class CLoading {
 public:
  CLoading() { ThisThread().loading = true; }
  ~CLoading() { ThisThread().loading = false; }
  CLoading(const CLoading&) = delete;
  CLoading& operator=(const CLoading&) = delete;
};

}  // namespace

CIntegration::CIntegration() : m_taken(TakeIntegration()) {}

CIntegration::~CIntegration() {
  if (m_taken) {
    ThisThread().holdsIntegration = false;
    IntegrationMutex().unlock();
  }
}

void RequireNotLoading() {
  if (ThisThread().loading) {
    Raise({kContainerFile, kIntegrate}, L"Configuration is being loaded on this thread");
  }
}

void IntegrateResource(CBeanFactoryImpl& factory, CXMLResource& resource) {
  std::optional<CStringT<char>> overridden;
  {
    const CIntegration integration;
    const CLoading loading;
    overridden = factory.Integrate(resource);
  }
  if (overridden) {
    CXMLResource::RaiseOverride(*overridden);
  }
}

}  // namespace Zorbel::Internal
