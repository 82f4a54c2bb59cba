#pragma once

#include <memory>
#include <type_traits>
#include <typeinfo>

#include <Zorbel/Export.h>
#include <Zorbel/IObject.h>

namespace Zorbel {

/// Implemented by an object that carries an instance of a class which need not derive from `IObject`.
/// Thread: the operations are constant. Ownership: what is returned is the object's.
class ZORBEL_INTERFACE IBeanCarrier {
 public:
  IBeanCarrier() = default;
  IBeanCarrier(const IBeanCarrier&) = delete;
  IBeanCarrier& operator=(const IBeanCarrier&) = delete;
  virtual ~IBeanCarrier() = default;

  /// Returns the class of the instance, and the address of the instance as one of that class.
  virtual const std::type_info& GetBeanType() const = 0;
  virtual void* GetBeanPointer() = 0;

  /// Returns the instance when it is an `IObject` of its own, else null.
  virtual IObject* GetBeanObject() = 0;

  /// Throws: always, a pointer to the instance. Whoever catches it as a base class's pointer has it converted: only
  /// the language's own exception handling knows all bases of a class that has no virtual functions.
  [[noreturn]] virtual void ThrowBeanPointer() = 0;
};

namespace Kit {

template <class T>
T* CatchBeanPointer(IBeanCarrier& carrier) {
  T* found = nullptr;
  try {
    carrier.ThrowBeanPointer();
  } catch (T* pointer) {  // NOLINT(misc-throw-by-value-catch-by-reference): the pointer is what is asked for
    found = pointer;
  } catch (...) {
    found = nullptr;
  }
  return found;
}

template <class T>
T* BeanOf(IBeanCarrier& carrier) {
  if (carrier.GetBeanType() == typeid(T)) {
    return static_cast<T*>(carrier.GetBeanPointer());
  }
  if constexpr (std::is_polymorphic_v<T>) {
    if (T* found = dynamic_cast<T*>(carrier.GetBeanObject())) {
      return found;
    }
  }
  return CatchBeanPointer<T>(carrier);
}

}  // namespace Kit

/// Returns the object as a `T`, also when only the instance that it carries is one; null when there is none.
/// Ownership: the object's.
template <class T>
T* ObjectCast(IObject* object) {
  if constexpr (std::is_polymorphic_v<T>) {
    if (T* found = dynamic_cast<T*>(object)) {
      return found;
    }
  }
  auto* carrier = dynamic_cast<IBeanCarrier*>(object);
  return carrier != nullptr ? Kit::BeanOf<T>(*carrier) : nullptr;
}

/// Likewise. Ownership: the result shares the object.
template <class T>
std::shared_ptr<T> ObjectCast(const std::shared_ptr<IObject>& object) {
  T* found = ObjectCast<T>(object.get());
  return found != nullptr ? std::shared_ptr<T>(object, found) : nullptr;
}

}  // namespace Zorbel
