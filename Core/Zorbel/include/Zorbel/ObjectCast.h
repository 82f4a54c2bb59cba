#pragma once

#include <memory>
#include <type_traits>
#include <typeinfo>

#include <Zorbel/Export.h>
#include <Zorbel/IObject.h>

namespace Zorbel {

/// An object that carries an instance of a class which itself need not derive from `IObject`.
/// Thread: the operations are constant.
class ZORBEL_INTERFACE IBeanObject : public IObject {
 public:
  /// Returns the class of the instance.
  virtual const std::type_info& GetBeanType() const = 0;

  /// Throws: always, a pointer to the instance. Whoever catches it as a base class's pointer has it converted: only
  /// the language's own exception handling knows all bases of a class that has no virtual functions.
  [[noreturn]] virtual void ThrowBeanPointer() = 0;
};

/// Returns the object as a `T`, also when only the instance that it carries is one; null when there is none.
/// Ownership: the object's.
template <class T>
T* ObjectCast(IObject* object) {
  if constexpr (std::is_polymorphic_v<T>) {
    if (T* found = dynamic_cast<T*>(object)) {
      return found;
    }
  }
  if (auto* carrier = dynamic_cast<IBeanObject*>(object)) {
    try {
      carrier->ThrowBeanPointer();
    } catch (T* found) {  // NOLINT(misc-throw-by-value-catch-by-reference): the pointer is what is asked for
      return found;
    } catch (...) {
      return nullptr;
    }
  }
  return nullptr;
}

/// Likewise. Ownership: the result shares the object.
template <class T>
std::shared_ptr<T> ObjectCast(const std::shared_ptr<IObject>& object) {
  T* found = ObjectCast<T>(object.get());
  return found != nullptr ? std::shared_ptr<T>(object, found) : nullptr;
}

}  // namespace Zorbel
