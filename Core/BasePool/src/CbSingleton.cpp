#include "BasePool/CbSingleton.h"

#include <utility>

#include "BasePool/CbNeverDestroyed.h"
#include "Platform/ModuleEnd.h"

namespace {

CbSingletonRegistry::SDestroyer* lastArranged = nullptr;

void DestroyAll() {
  while (lastArranged != nullptr) {
    std::exchange(lastArranged, lastArranged->next)->destroy();
  }
}

}  // namespace

CbCriticalSection& CbSingletonRegistry::Lock() {
  static const CbNeverDestroyed<CbCriticalSection> lock;
  return *lock;
}

void CbSingletonRegistry::Arrange(SDestroyer& destroyer) {
  if (destroyer.arranged) {
    return;
  }
  if (lastArranged == nullptr) {
    Platform::AtModuleEnd(&DestroyAll);
  }
  destroyer.arranged = true;
  destroyer.next = std::exchange(lastArranged, &destroyer);
}
