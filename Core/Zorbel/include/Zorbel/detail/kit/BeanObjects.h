#pragma once

#include <functional>
#include <memory>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <vector>

#include <Zorbel/IObject.h>
#include <Zorbel/ObjectCast.h>

namespace Zorbel::Kit {

template <class T>
inline constexpr bool kIsObject = std::is_convertible_v<T*, IObject*>;  // in one way, and publicly

/// What an object of a bean has to keep and to do beyond its class: what it depends on, and its exit method.
struct SLifetime {
  std::vector<std::shared_ptr<IObject>> dependencies;
  std::function<void(IObject*)> exit;  // never throws; empty when there is none

  bool IsPlain() const { return dependencies.empty() && !exit; }
};

/// The base that outlives the instance: it keeps the dependencies until after the exit method and the destructor.
class CBeanRoot : public IBeanCarrier {
 public:
  explicit CBeanRoot(SLifetime&& lifetime)
      : m_lifetime(lifetime.IsPlain() ? nullptr : std::make_unique<SLifetime>(std::move(lifetime))) {}

 protected:
  void RunExit(IObject* object) noexcept {
    if (m_lifetime && m_lifetime->exit) {
      m_lifetime->exit(object);
    }
  }

 private:
  std::unique_ptr<SLifetime> m_lifetime;
};

/// Makes an object of the container from a class that is none, or is one in several ways.
struct SAddedObject : IObject {};
struct SNothingAdded {};

/// An instance of `T` that is also an object of the container, whatever `T` derives from.
template <class T>
class CBean final : public CBeanRoot, public std::conditional_t<kIsObject<T>, SNothingAdded, SAddedObject>, public T {
 public:
  template <class... Args>
  explicit CBean(SLifetime&& lifetime, Args&&... args)
      : CBeanRoot(std::move(lifetime)), T(std::forward<Args>(args)...) {}
  ~CBean() override { CBeanRoot::RunExit(AsObject(this)); }

  static IObject* AsObject(CBean* bean) {
    if constexpr (kIsObject<T>) {
      return static_cast<T*>(bean);
    } else {
      return static_cast<SAddedObject*>(bean);
    }
  }

  const std::type_info& GetBeanType() const override { return typeid(T); }
  void* GetBeanPointer() override { return static_cast<T*>(this); }
  IObject* GetBeanObject() override { return nullptr; }  // a cast from this object reaches all that it is
  [[noreturn]] void ThrowBeanPointer() override {
    throw static_cast<T*>(this);  // NOLINT(misc-throw-by-value-catch-by-reference)
  }
};

/// Holds an instance that cannot be a base: one of a final class, or one that a factory method made.
template <class T>
class CHeldBean final : public CBeanRoot, public IObject {
 public:
  CHeldBean(SLifetime&& lifetime, std::unique_ptr<T> instance)
      : CBeanRoot(std::move(lifetime)), m_instance(std::move(instance)) {}
  ~CHeldBean() override { RunExit(this); }

  const std::type_info& GetBeanType() const override {
    const T& instance = *m_instance;
    return typeid(instance);
  }
  void* GetBeanPointer() override {
    if constexpr (std::is_polymorphic_v<T>) {
      return dynamic_cast<void*>(m_instance.get());
    } else {
      return m_instance.get();
    }
  }
  IObject* GetBeanObject() override {
    if constexpr (kIsObject<T>) {
      return m_instance.get();
    } else {
      return nullptr;
    }
  }
  [[noreturn]] void ThrowBeanPointer() override {
    throw m_instance.get();  // NOLINT(misc-throw-by-value-catch-by-reference)
  }

 private:
  std::unique_ptr<T> m_instance;
};

/// Returns an existing instance as an object of the container.
template <class T>
std::unique_ptr<IObject> Adopt(SLifetime&& lifetime, std::unique_ptr<T> instance) {
  if constexpr (kIsObject<T>) {
    if (lifetime.IsPlain()) {
      return instance;
    }
  }
  return std::make_unique<CHeldBean<T>>(std::move(lifetime), std::move(instance));
}

/// Makes an instance of `T`, with nothing added where nothing is needed.
template <class T, class... Args>
std::unique_ptr<IObject> MakeInstance(SLifetime&& lifetime, Args&&... args) {
  if constexpr (kIsObject<T>) {
    if (lifetime.IsPlain()) {
      return std::make_unique<T>(std::forward<Args>(args)...);
    }
  }
  if constexpr (std::is_final_v<T>) {
    return Adopt(std::move(lifetime), std::make_unique<T>(std::forward<Args>(args)...));
  } else {
    return std::unique_ptr<IObject>(CBean<T>::AsObject(new CBean<T>(std::move(lifetime), std::forward<Args>(args)...)));
  }
}

}  // namespace Zorbel::Kit
