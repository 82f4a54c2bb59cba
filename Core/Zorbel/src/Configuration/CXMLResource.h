#pragma once

#include <Zorbel/CStringT.h>
#include <Zorbel/IBeanFactory.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "BasePool/CbKeyTraits.h"
#include "Definitions/CBeanConfig.h"
#include "Document/SDocument.h"
#include "Registry/CRegistry.h"
#include "Services/CServiceRegistry.h"

namespace Zorbel {

/// One configuration document as read, and a factory's registry of all documents merged into it.
/// Thread: has no lock of its own; a factory calls its registry under the factory's locks, and documents are read under
/// none. Code of plug-ins that is called from here may call back, on the same thread.
class CXMLResource {
 public:
  /// An empty resource. `owner` is asked for the beans behind configured services.
  explicit CXMLResource(IBeanFactory* owner) : m_registry(owner) {}

  /// Reads a document; a null or empty text gives an empty resource. Includes are ignored.
  /// Throws: `CException`, with what is wrong and where; for a bean that provides an interface also what
  /// `FindBeanConfig` and `CLocalLibrary::GetTypeID` throw.
  CXMLResource(IBeanFactory* owner, const char* xmlText);

  /// Reads a document file with the files that it includes. Throws: likewise, and when an included file has a bean of
  /// one included before it.
  CXMLResource(IBeanFactory* owner, const wchar_t* fileName);

  CXMLResource(const CXMLResource&) = delete;
  CXMLResource& operator=(const CXMLResource&) = delete;

  /// Takes over what the document `other` declares; `other` is of no use afterwards. Returns the name of the first bean
  /// that is here already, with nothing changed then; nothing when there is none.
  /// Throws: std::bad_alloc, `CbExceptionContainer`, with nothing changed.
  std::optional<CStringT<char>> Integrate(CXMLResource& other) { return m_registry.Merge(other.m_document); }

  /// Returns the definition of a bean, or null when none is declared. The first use of a bean's library loads it and
  /// builds the definitions of all of its beans. Throws: `CException` when a wrapper maker is missing; what
  /// `CDynamicLibrary` and `CBeanConfig` throw. Those built before stay.
  CBeanConfig* FindBeanConfig(const char* name) {
    return FindBeanConfig(name, CbKeyTraits<CStringT<char>>::Hash(name));
  }
  CBeanConfig* FindBeanConfig(const char* name, std::uint64_t hash) { return m_registry.FindBeanConfig(name, hash); }

  /// Returns the beans to be created at load time, in the order of merging.
  const std::vector<CStringT<char>>& GetEagerBeans() const { return m_registry.GetEagerBeans(); }

  /// Returns the library on whose behalf such a bean is created; null when there is none.
  const SLibrary* FindEagerLibrary(const char* name) const { return m_registry.FindEagerLibrary(name); }

  /// Registers a ready-made object for the interface, or enters a given registration as it is. Returns the
  /// registration; null, with nothing changed, when the object is registered for the interface already.
  std::shared_ptr<ITypeRegistration> RegisterInstance(const char* typeId, bool front,
                                                      const std::shared_ptr<IObject>& instance,
                                                      std::shared_ptr<ITypeRegistration> registration);
  std::shared_ptr<ITypeRegistration> RegisterService(const char* typeId, bool front,
                                                     std::function<std::unique_ptr<IObject>()>&& maker,
                                                     std::shared_ptr<ITypeRegistration> registration);

  /// Removes and returns the registrations that hold `instance`, so that the caller destroys them where it holds no
  /// lock.
  std::vector<std::shared_ptr<ITypeRegistration>> ReleaseInstance(const std::shared_ptr<IObject>& instance);

  /// Returns the registration at position `index`, or null.
  std::shared_ptr<ITypeRegistration> FindService(const char* typeId, unsigned int index);
  unsigned int GetServiceCount(const char* typeId) const { return m_registry.GetServices().GetCount(typeId); }

  bool HasDefinitions() const { return !m_registry.GetDefinitions().IsEmpty(); }
  bool HasServices() const { return !m_registry.GetServices().IsEmpty(); }

  /// Exchanges the registrations of services alone.
  void SwapServices(CServiceRegistry& services) noexcept { m_registry.GetServices().Swap(services); }
  void AbandonServices() noexcept { m_registry.GetServices().Abandon(); }

  /// Throws: `CException` when the type id is null.
  static void RequireTypeId(const char* typeId, const char* function, const wchar_t* message);

  /// Raise what the operations above have told, where no lock is held. Throw: `CException`, always.
  [[noreturn]] static void RaiseOverride(const CStringT<char>& bean);
  [[noreturn]] static void RaiseAlreadyRegistered(const char* typeId);
  [[noreturn]] static void RaiseNotRegistered();

 private:
  SDocument m_document;  // as read, until it is taken over
  CRegistry m_registry;
};

}  // namespace Zorbel
