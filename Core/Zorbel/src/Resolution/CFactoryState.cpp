#include "Resolution/CFactoryState.h"

#include <utility>

namespace Zorbel {
namespace {

// An object goes when the map has it no more: its destructor may call back.
template <class Map>
void ReleaseEntries(Map& map) noexcept {
  for (auto count = map.GetCount(); count > 0 && map.GetCount() > 0; --count) {
    auto* first = map.GetStartPosition();
    const auto released = std::move(first->value);
    map.RemoveKey(first->key);
  }
}

}  // namespace

std::shared_ptr<const IBeanWrapper> CFactoryState::GetWrapper(const CBeanConfig& definition) {
  const CStringT<char>& className = definition.GetDescription().className;
  if (const auto* cached = wrappers.Lookup(className)) {
    return *cached;
  }
  std::shared_ptr<const IBeanWrapper> wrapper = definition.GetWrapper();
  wrappers.SetAt(className).value = wrapper;
  return wrapper;
}

void CFactoryState::ReleaseObjects() noexcept {
  ReleaseEntries(singletons);
  ReleaseEntries(wrappers);
}

}  // namespace Zorbel
