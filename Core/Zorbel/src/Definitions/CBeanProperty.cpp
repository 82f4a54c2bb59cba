#include "Definitions/CBeanProperty.h"

#include "BasePool/CbNeverDestroyed.h"
#include "BasePool/CbPlexManager.h"
#include "Values/CArgumentList.h"

namespace Zorbel {
namespace {

constexpr unsigned int kPoolBlockSize = 1000;

using Pool = CbPlexManager<CBeanProperty, 1, unsigned int>;

// Definitions may be released by the last static objects of the process.
Pool& PropertyPool() {
  static const CbNeverDestroyed<Pool> pool(kPoolBlockSize);
  return *pool;
}

}  // namespace

CBeanProperty::Owner CBeanProperty::Make(const SPropertyDescription& description) {
  CBeanProperty* storage = PropertyPool().getFreeElement();
  try {
    return Owner(new (storage) CBeanProperty(description));
  } catch (...) {
    PropertyPool().releaseElement(storage);
    throw;
  }
}

void CBeanProperty::SReturnToPool::operator()(CBeanProperty* property) const noexcept {
  property->~CBeanProperty();
  PropertyPool().releaseElement(property);
}

bool CBeanProperty::Apply(IBeanFactory* factory, IObject* object, const IBeanWrapper* wrapper,
                          const CTypeManager* typeManager, const SLibrary* library) const {
  const CArgumentList arguments(m_arguments, factory, *typeManager, library);
  return wrapper->CallMethod(object, m_name, arguments.GetCount(), arguments.GetValues());
}

}  // namespace Zorbel
