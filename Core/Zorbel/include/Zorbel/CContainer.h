#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

#include <Zorbel/CException.h>
#include <Zorbel/Export.h>
#include <Zorbel/IBeanFactory.h>
#include <Zorbel/IObject.h>
#include <Zorbel/ITypeRegistration.h>
#include <Zorbel/ObjectCast.h>

namespace Zorbel {

/// A host's way to its beans and services: holds a bean factory and loads configuration documents into it.
///
/// *Integrated* and default-constructed containers of a process share one factory, which lives as long as any of them.
/// A *stand-alone* container has its own, shared only with its copies.
/// A moved-from container is empty: `Exists` is false, the getters give nothing, all else throws `CException` "Zorbel
/// is not configured".
/// Thread: every operation may be called from any thread at any time, except that a container object must not be
/// assigned to, moved from or destroyed while another thread uses that same object.
class ZORBEL_API CContainer {
 public:
  /// Attaches to the shared factory, which may be empty. Loads nothing.
  CContainer();

  /// Makes an empty factory of its own.
  CContainer(std::nullptr_t);

  /// Loads the document text `xml`, in UTF-8; a null or empty text loads nothing. Its includes are ignored.
  /// Throws: `CException` when the document is in error or repeats a bean of the factory, when a document is being
  /// loaded on this thread, or, from bean code, on another one; std::range_error "bad conversion" instead, with nothing
  /// logged, where the message would name a bean, interface, property or module by characters beyond ASCII; what
  /// wrapper makers and wrappers throw, which are called for a document in which a bean provides an interface. A bean
  /// to be made at load time that fails is no error of the document.
  CContainer(const char* xml, bool integration);

  /// Loads the document file `path` with the files that it includes. Throws: likewise.
  CContainer(const wchar_t* path, bool integration);

  CContainer(const CContainer& other);
  CContainer(CContainer&& other) noexcept;
  CContainer& operator=(const CContainer& other);
  CContainer& operator=(CContainer&& other) noexcept;
  ~CContainer();

  /// Returns whether a bean of that name is configured. Throws: as `IBeanFactory::Exists`.
  bool Exists(const char* name) const;

  /// Removes the service registrations of an object, as `IBeanFactory::ReleaseInstance`. Throws: `CException` when
  /// there are none.
  void ReleaseInstance(std::shared_ptr<IObject> instance);

  /// Empties the factory, for all containers that share it: its singletons are released, its configuration and
  /// services forgotten. Objects held elsewhere live on.
  void Reset();

  /// Empties the factory, then loads as the constructors do; the factory stays empty when that throws.
  void Reset(const char* xml);
  void Reset(const wchar_t* path);

  /// Returns the factory; empty when moved from.
  const std::shared_ptr<IBeanFactory>& GetFactory() const { return m_factory; }

  /// Returns the bean as a `T`; empty when it cannot be had (the log has the reason) or is no `T`.
  template <class T = IObject>
  std::shared_ptr<T> GetBean(const char* name) const {
    return m_factory ? ObjectCast<T>(m_factory->GetBean(name, nullptr)) : nullptr;
  }

  /// Returns the service at position `index` of its interface, as a `T`; empty when there is none or it is no `T`.
  /// Throws: what the service's maker throws; `CException` when the registration has no maker.
  template <class T = IObject>
  std::shared_ptr<T> GetService(const char* typeId, unsigned int index = 0) const {
    return m_factory ? ObjectCast<T>(m_factory->GetService(typeId, index)) : nullptr;
  }

  /// The first service of an interface that names its type id, as `T::kTypeId`. Throws: likewise.
  template <class T>
  std::shared_ptr<T> GetService() const {
    return GetService<T>(T::kTypeId);
  }

  /// Returns all services of the interface in their order, but for those that are no `T`. Throws: likewise.
  template <class T = IObject>
  std::vector<std::shared_ptr<T>> GetServices(const char* typeId) const {
    std::vector<std::shared_ptr<T>> services;
    const CContainer kept(*this);  // the makers may drop this one
    for (unsigned int index = 0; index < kept.GetServiceCount(typeId); ++index) {
      if (auto service = kept.GetService<T>(typeId, index)) {
        services.push_back(std::move(service));
      }
    }
    return services;
  }
  template <class T>
  std::vector<std::shared_ptr<T>> GetServices() const {
    return GetServices<T>(T::kTypeId);
  }

  unsigned int GetServiceCount(const char* typeId) const { return m_factory ? m_factory->GetServiceCount(typeId) : 0; }

  /// Registers `maker` as an implementation of the interface, before (`front`) or behind the others.
  /// Returns: the registration, to be configured before its first use. Throws: `CException` when `typeId` is null.
  std::shared_ptr<ITypeRegistration> RegisterService(const char* typeId,
                                                     std::function<std::unique_ptr<IObject>()> maker,
                                                     bool front = false) {
    return Configured("Zorbel::CContainer::RegisterService").RegisterService(typeId, front, std::move(maker), nullptr);
  }

  /// Registers a ready-made object likewise. Throws: likewise, and when it is registered for the interface already.
  std::shared_ptr<ITypeRegistration> RegisterInstance(const char* typeId, std::shared_ptr<IObject> instance,
                                                      bool front = false) {
    return Configured("Zorbel::CContainer::RegisterInstance")
        .RegisterInstance(typeId, front, std::move(instance), nullptr);
  }

  /// Both for an interface that names its type id, as `I::kTypeId`: the compiler checks that what is registered
  /// implements it. `maker` returns a `std::unique_ptr` to an implementation. Throws: likewise.
  template <class I, class F>
  std::shared_ptr<ITypeRegistration> RegisterService(F maker, bool front = false) {
    using Made = typename std::invoke_result_t<F>::element_type;
    static_assert(std::is_convertible_v<Made*, I*>, "the maker's object does not implement the interface");
    return RegisterService(
        I::kTypeId,
        [maker = std::move(maker)]() mutable -> std::unique_ptr<IObject> { return std::unique_ptr<I>(maker()); },
        front);
  }
  template <class I>
  std::shared_ptr<ITypeRegistration> RegisterInstance(std::shared_ptr<I> instance, bool front = false) {
    return RegisterInstance(I::kTypeId, std::move(instance), front);
  }

 private:
  IBeanFactory& Configured(const char* function) const {
    if (!m_factory) {
      throw CException("Core/Zorbel/src/CContainer", __LINE__, function, L"Zorbel is not configured");
    }
    return *m_factory;
  }

  std::shared_ptr<IBeanFactory> m_factory;
};

}  // namespace Zorbel
