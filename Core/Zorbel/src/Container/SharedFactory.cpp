#include "Container/SharedFactory.h"

#include <mutex>

#include "BasePool/CbNeverDestroyed.h"
#include "Errors/Raise.h"
#include "Errors/SharedOrigins.h"
#include "Factory/CBeanFactoryImpl.h"
#include "Threads/ThreadState.h"

namespace Zorbel::Internal {
namespace {

struct SSharedFactory {
  std::mutex mutex;  // apart from that of merging: a bean built under that may construct a container
  std::weak_ptr<CBeanFactoryImpl> factory;
};

SSharedFactory& Slot() {
  static const CbNeverDestroyed<SSharedFactory> slot;
  return *slot;
}

// Containers that objects attach while the factory ends find it, unless there is another by now.
void ShareAgain(const std::shared_ptr<CBeanFactoryImpl>& factory) noexcept {
  const std::lock_guard lock(Slot().mutex);
  if (Slot().factory.expired()) {
    Slot().factory = factory;
  }
}

std::shared_ptr<CBeanFactoryImpl> SharedFactory() {
  SSharedFactory& slot = Slot();
  const std::lock_guard lock(slot.mutex);
  std::shared_ptr<CBeanFactoryImpl> factory = slot.factory.lock();
  if (!factory) {
    factory = CBeanFactoryImpl::Create(&ShareAgain);
    slot.factory = factory;
  }
  return factory;
}

/// Watches, for the life of a scope, whether the container that has `held` is destroyed.
class CReplacing {
 public:
  explicit CReplacing(const void* held) : m_frame{held, false, ThisThread().replacing} {
    ThisThread().replacing = &m_frame;
  }
  ~CReplacing() { ThisThread().replacing = m_frame.outer; }
  CReplacing(const CReplacing&) = delete;
  CReplacing& operator=(const CReplacing&) = delete;

  bool IsContainerGone() const { return m_frame.gone; }

 private:
  SReplacing m_frame;
};

}  // namespace

std::shared_ptr<IBeanFactory> CreateFactory(bool integrated) {
  std::shared_ptr<IBeanFactory> factory =
      integrated ? SharedFactory() : CBeanFactoryImpl::Create([](auto&) noexcept {});
  if (!factory) {
    Raise({kContainerFile, "Zorbel::Internal::CreateFactory"}, L"Could not create bean factory");
  }
  return factory;
}

bool IsSharedFactory(const IBeanFactory* factory) {
  std::shared_ptr<IBeanFactory> shared;  // released, perhaps as the last, outside the mutex
  const std::lock_guard lock(Slot().mutex);
  shared = Slot().factory.lock();
  return factory != nullptr && shared.get() == factory;
}

// Bean code may assign to the container meanwhile: what it holds in the end is `next`. It may also destroy it.
void Replace(std::shared_ptr<IBeanFactory>& held, std::shared_ptr<IBeanFactory> next) noexcept {
  if (held == next) {
    return;
  }
  if (const auto factory = std::dynamic_pointer_cast<CBeanFactoryImpl>(held)) {
    const CReplacing replacing(&held);
    factory->EndUnlessShared(2);
    if (replacing.IsContainerGone()) {
      return;
    }
  }
  held.swap(next);
}

void LetGo(std::shared_ptr<IBeanFactory>& held) noexcept {
  for (SReplacing* frame = ThisThread().replacing; frame != nullptr; frame = frame->outer) {
    frame->gone = frame->gone || frame->held == &held;
  }
  Replace(held, nullptr);
}

}  // namespace Zorbel::Internal
