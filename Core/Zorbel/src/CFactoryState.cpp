#include "CFactoryState.h"

#include "ObjectType.h"

namespace Zorbel {

CFactoryState::CFactoryState(IBeanFactory* owner) : configuration(owner) {
  typeManager.SetObjectType(std::make_unique<ObjectType>());
}

std::shared_ptr<const IBeanWrapper> CFactoryState::GetWrapper(const CBeanConfig& definition) {
  const CStringT<char>& className = definition.GetDescription().className;
  if (const auto* cached = wrappers.Lookup(className)) {
    return *cached;
  }
  std::shared_ptr<const IBeanWrapper> wrapper = definition.GetWrapper();
  wrappers.SetAt(className).value = wrapper;
  return wrapper;
}

// The maps are empty before their contents go: destructors of plug-ins may call back.
void CFactoryState::ReleaseObjects() {
  decltype(singletons)().Swap(singletons);
  decltype(wrappers)().Swap(wrappers);
}

}  // namespace Zorbel
