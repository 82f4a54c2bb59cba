#pragma once

#include <functional>
#include <memory>

#include <Zorbel/Export.h>
#include <Zorbel/IObject.h>
#include <Zorbel/ITypeRegistration.h>

namespace Zorbel {

struct SLibrary;

/// The factory behind a container: beans by name, services by the type id of their interface.
/// Names and type ids are compared exactly; null is never found.
/// Ownership: results are shared; they live on when the factory is reset or gone.
/// Thread: every operation may be called from any thread at any time, also from inside bean code. Beans and singleton
/// services are created under the factory's lock; makers of services that are no singletons are called outside it,
/// except while a bean that refers to the service, or whose code asks for it, is being created.
class ZORBEL_INTERFACE IBeanFactory {
 public:
  IBeanFactory() = default;
  IBeanFactory(const IBeanFactory&) = delete;
  IBeanFactory& operator=(const IBeanFactory&) = delete;
  virtual ~IBeanFactory() = default;

  /// Returns whether a bean of that name is configured.
  /// Throws: `CException` when the definitions of the bean's library cannot be built: it cannot be loaded, lacks a
  /// wrapper maker, or a property's value lacks a type; std::range_error "bad conversion" instead where the message
  /// would name a property or module by characters beyond ASCII; what wrapper makers and wrappers throw.
  virtual bool Exists(const char* name) = 0;

  /// Returns an instance from the registration at position `index`, counted from 0; empty when there is none.
  /// Throws: what the registration's maker throws; `CException` when it has none, or is not of the library's own class.
  virtual std::shared_ptr<IObject> GetService(const char* typeId, unsigned int index) = 0;

  /// As above, from the first registration.
  virtual std::shared_ptr<IObject> GetService(const char* typeId) = 0;

  /// Returns the bean, on behalf of `library`, or of the host when that is null; empty when it cannot be had, with the
  /// reason in the log. Never throws.
  virtual std::shared_ptr<IObject> GetBean(const char* name, const SLibrary* library) = 0;

  /// Registers `maker` as an implementation of the interface, before (`front`) or behind the others. A given
  /// `registration` is entered as it is, in place of a new one.
  /// Returns: the registration, to be configured.
  /// Throws: `CException` when `typeId` is null.
  virtual std::shared_ptr<ITypeRegistration> RegisterService(const char* typeId, bool front,
                                                             std::function<std::unique_ptr<IObject>()>&& maker,
                                                             std::shared_ptr<ITypeRegistration> registration) = 0;

  /// Registers a ready-made object likewise.
  /// Throws: `CException` when the object is registered for the interface already and no `registration` is given, or
  /// `typeId` is null.
  virtual std::shared_ptr<ITypeRegistration> RegisterInstance(const char* typeId, bool front,
                                                              std::shared_ptr<IObject> instance,
                                                              std::shared_ptr<ITypeRegistration> registration) = 0;

  /// Removes the registrations that hold an object, as ready-made or as the singleton that their maker made; the first
  /// from each interface.
  /// Throws: `CException` when there are none.
  virtual void ReleaseInstance(const std::shared_ptr<IObject>& instance) = 0;

  /// Returns the number of registrations of the interface.
  virtual unsigned int GetServiceCount(const char* typeId) = 0;
};

}  // namespace Zorbel
