#pragma once

#include <Zorbel/CStringT.h>
#include <Zorbel/IBeanFactory.h>

#include <cstddef>
#include <cstdint>
#include <list>
#include <optional>
#include <vector>

#include "BasePool/CbMap.h"
#include "Definitions/CDefinitions.h"
#include "Document/SDocument.h"
#include "Services/CServiceRegistry.h"

namespace Zorbel {

/// All that the documents merged into a factory declare: the libraries with their beans, the definitions built from
/// them, the beans to be created at load time, and the services.
/// Thread: guarded by its owner. Code of plug-ins that is called from here may call back, on the same thread.
class CRegistry {
 public:
  /// `owner` is asked for the beans behind configured services.
  explicit CRegistry(IBeanFactory* owner) : m_owner(owner) {}
  CRegistry(const CRegistry&) = delete;
  CRegistry& operator=(const CRegistry&) = delete;

  /// Takes over what a document declares, which is of no use afterwards. Returns the name of the first bean that is
  /// here already, with nothing changed then; nothing when there is none.
  /// Throws: std::bad_alloc, `CbExceptionContainer`, with nothing changed.
  std::optional<CStringT<char>> Merge(SDocument& document);

  /// Returns the definition of a bean, or null when none is declared. The first use of a bean's library builds the
  /// definitions of all of its beans. Throws: as `CDefinitions::processLibrary`.
  CBeanConfig* FindBeanConfig(const char* name, std::uint64_t hash);

  /// Returns the beans to be created at load time, in the order of merging.
  const std::vector<CStringT<char>>& GetEagerBeans() const { return m_eagerBeans; }

  /// Returns the library on whose behalf such a bean is created; null when there is none.
  const SLibrary* FindEagerLibrary(const char* name) const;

  CDefinitions& GetDefinitions() { return m_definitions; }
  const CDefinitions& GetDefinitions() const { return m_definitions; }
  CServiceRegistry& GetServices() { return m_services; }
  const CServiceRegistry& GetServices() const { return m_services; }

 private:
  class CMerge;

  struct SLibraryRecord : SLibraryProgress {
    SLibrary* declared = nullptr;  // the same one, which merging adds to
    std::size_t order = 0;         // position among the libraries
  };

  const CStringT<char>* FindOverride(const SDocument& document) const;
  void IndexBean(SLibraryRecord& record, const CStringT<char>& name);

  IBeanFactory* m_owner;
  std::vector<CStringT<char>> m_eagerBeans;
  CbMap<CStringT<char>, const SLibrary*> m_eagerLibraries;
  std::list<SLibrary> m_libraries;                         // never moved or removed
  CbMap<CStringT<char>, SLibraryRecord> m_records;         // of the libraries above, by path
  CbMap<CStringT<char>, SLibraryRecord*> m_recordsByBean;  // the first, in their order, with a bean of that name
  CDefinitions m_definitions;
  CServiceRegistry m_services;
};

}  // namespace Zorbel
