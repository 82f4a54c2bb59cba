#pragma once

#include <functional>
#include <memory>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <vector>

#include <Zorbel/IObject.h>
#include <Zorbel/ObjectCast.h>
#include <Zorbel/detail/CallLog.h>

namespace Zorbel::Kit {

/// What an object of a bean has to keep and to do beyond its class: what it depends on, and its exit method.
struct SLifetime {
  std::vector<std::shared_ptr<IObject>> dependencies;
  std::function<void(IObject*)> exit;  // never throws; empty when there is none

  bool IsPlain() const { return dependencies.empty() && !exit; }
};

/// The base that outlives the instance: it keeps the dependencies until after the exit method and the destructor.
class CBeanRoot : public IBeanObject {
 public:
  explicit CBeanRoot(SLifetime&& lifetime)
      : m_lifetime(lifetime.IsPlain() ? nullptr : std::make_unique<SLifetime>(std::move(lifetime))) {}

 protected:
  void RunExit() noexcept {
    if (m_lifetime && m_lifetime->exit) {
      m_lifetime->exit(this);
    }
  }

 private:
  std::unique_ptr<SLifetime> m_lifetime;
};

/// An instance of `T` that is also an object of the container, whatever `T` derives from.
template <class T>
class CBean final : public CBeanRoot, public T {
 public:
  template <class... Args>
  explicit CBean(SLifetime&& lifetime, Args&&... args)
      : CBeanRoot(std::move(lifetime)), T(std::forward<Args>(args)...) {}
  ~CBean() override { RunExit(); }

  const std::type_info& GetBeanType() const override { return typeid(T); }
  [[noreturn]] void ThrowBeanPointer() override {
    throw static_cast<T*>(this);  // NOLINT(misc-throw-by-value-catch-by-reference)
  }
};

/// Holds an instance that cannot be a base: one of a final class, or one that a factory method made.
template <class T>
class CHeldBean final : public CBeanRoot {
 public:
  CHeldBean(SLifetime&& lifetime, std::unique_ptr<T> instance)
      : CBeanRoot(std::move(lifetime)), m_instance(std::move(instance)) {}
  ~CHeldBean() override { RunExit(); }

  const std::type_info& GetBeanType() const override {
    const T& instance = *m_instance;
    return typeid(instance);
  }
  [[noreturn]] void ThrowBeanPointer() override {
    throw m_instance.get();  // NOLINT(misc-throw-by-value-catch-by-reference)
  }

 private:
  std::unique_ptr<T> m_instance;
};

/// Returns an existing instance as an object of the container; empty for a null one.
template <class T>
std::unique_ptr<IObject> Adopt(SLifetime&& lifetime, std::unique_ptr<T> instance) {
  if (!instance) {
    return nullptr;
  }
  if constexpr (std::is_convertible_v<T*, IObject*>) {
    if (lifetime.IsPlain()) {
      return instance;
    }
  }
  return std::make_unique<CHeldBean<T>>(std::move(lifetime), std::move(instance));
}

/// Makes an instance of `T`, with nothing added where nothing is needed.
template <class T, class... Args>
std::unique_ptr<IObject> MakeInstance(SLifetime&& lifetime, Args&&... args) {
  if constexpr (std::is_convertible_v<T*, IObject*>) {
    if (lifetime.IsPlain()) {
      return std::make_unique<T>(std::forward<Args>(args)...);
    }
  }
  if constexpr (std::is_final_v<T>) {
    return Adopt(std::move(lifetime), std::make_unique<T>(std::forward<Args>(args)...));
  } else {
    return std::unique_ptr<CBeanRoot>(new CBean<T>(std::move(lifetime), std::forward<Args>(args)...));
  }
}

}  // namespace Zorbel::Kit
