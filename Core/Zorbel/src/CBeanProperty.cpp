#include "CBeanProperty.h"

#include "BasePool/CbPlexManager.h"
#include "CArgumentList.h"

namespace Zorbel {
namespace {

constexpr unsigned int kPoolBlockSize = 1000;

CbPlexManager<CBeanProperty, 1, unsigned int> pool(kPoolBlockSize);

}  // namespace

CBeanProperty::Owner CBeanProperty::Make(const SPropertyDescription& description) {
  CBeanProperty* storage = pool.getFreeElement();
  try {
    return Owner(new (storage) CBeanProperty(description));
  } catch (...) {
    pool.releaseElement(storage);
    throw;
  }
}

void CBeanProperty::SReturnToPool::operator()(CBeanProperty* property) const noexcept {
  property->~CBeanProperty();
  pool.releaseElement(property);
}

bool CBeanProperty::Apply(IBeanFactory* factory, IObject* object, const IBeanWrapper* wrapper,
                          const CTypeManager* typeManager, const SLibrary* library) const {
  const CArgumentList arguments(m_arguments, factory, *typeManager, library);
  return wrapper->CallMethod(object, m_name, arguments.GetCount(), arguments.GetValues());
}

}  // namespace Zorbel
