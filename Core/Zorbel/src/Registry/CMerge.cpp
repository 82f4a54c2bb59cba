// Merging: what a document declares into the registry.

#include <cstddef>
#include <list>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "Registry/CRegistry.h"
#include "Services/CServiceConfig.h"

namespace Zorbel {

/// One merge: what it has added is taken away again unless it is committed. No bean of the document has a name that the
/// registry knows.
class CRegistry::CMerge {
 public:
  CMerge(CRegistry& target, SDocument& source)
      : m_target(target),
        m_source(source),
        m_eagerBeans(target.m_eagerBeans.size()),
        m_libraries(target.m_libraries.size()) {}
  ~CMerge() {
    if (!m_committed) {
      Undo();
    }
  }
  CMerge(const CMerge&) = delete;
  CMerge& operator=(const CMerge&) = delete;

  /// Registers the services that the document's beans provide. Comes before its libraries are taken.
  void AddServices() {
    for (const SLibrary& library : m_source.libraries) {
      for (const SBeanDescription& bean : library.beans) {
        AddServicesOf(bean);
      }
    }
  }

  void AddDeclarations() {
    m_target.m_eagerBeans.insert(m_target.m_eagerBeans.end(), m_source.eagerBeans.begin(), m_source.eagerBeans.end());
    m_extended.reserve(m_source.libraries.size());
    for (auto next = m_source.libraries.begin(); next != m_source.libraries.end();) {
      AddLibrary(next++);
    }
  }

  /// Tells the registry on whose behalf its eager beans are made. Comes last.
  void NoteEagerBeans() {
    for (const auto& [library, count] : m_extended) {
      for (std::size_t i = count; i < library->beans.size(); ++i) {
        if (!library->beans[i].lazy) {
          m_target.m_eagerLibraries.SetAt(library->beans[i].name).value = library;
        }
      }
    }
  }

  void Commit() { m_committed = true; }

 private:
  void AddServicesOf(const SBeanDescription& bean) {
    if (bean.interfaces.empty()) {
      return;
    }
    auto registration = std::make_shared<CServiceConfig>(CServiceConfig::SharedMaker(
        [owner = m_target.m_owner, name = bean.name] { return owner->GetBean(name, nullptr); }));
    if (bean.singleton) {
      registration->SetSingleton();
    }
    for (const CStringT<char>& typeId : bean.interfaces) {
      m_services.push_back(typeId);
      try {
        m_target.m_services.Insert(typeId, true, registration);
      } catch (...) {
        m_services.pop_back();
        throw;
      }
    }
  }

  // A library that is new comes as it stands; the beans of another join those that it has.
  void AddLibrary(std::list<SLibrary>::iterator source) {
    SLibraryRecord& record = m_target.m_records.SetAt(source->path).value;
    if (record.declared == nullptr) {
      m_target.m_libraries.splice(m_target.m_libraries.end(), m_source.libraries, source);
      record.library = record.declared = &*source;
      record.order = m_target.m_libraries.size();
      m_extended.emplace_back(record.declared, 0);
    } else {
      m_extended.emplace_back(record.declared, record.declared->beans.size());
      MoveBeans(*source, *record.declared);
    }
    for (std::size_t i = m_extended.back().second; i < record.declared->beans.size(); ++i) {
      m_target.IndexBean(record, record.declared->beans[i].name);
    }
  }

  static void MoveBeans(SLibrary& source, SLibrary& target) {
    for (SBeanDescription& bean : source.beans) {
      target.beans.push_back(std::move(bean));
    }
  }

  void Undo() noexcept {
    for (; !m_services.empty(); m_services.pop_back()) {
      m_target.m_services.RemoveFirst(m_services.back());
    }
    for (; !m_extended.empty(); m_extended.pop_back()) {
      DropBeans(*m_extended.back().first, m_extended.back().second);
    }
    while (m_target.m_libraries.size() > m_libraries) {
      m_target.m_records.RemoveKey(m_target.m_libraries.back().path);
      m_target.m_libraries.pop_back();
    }
    m_target.m_eagerBeans.resize(m_eagerBeans);
  }

  void DropBeans(SLibrary& library, std::size_t count) noexcept {
    for (; library.beans.size() > count; library.beans.pop_back()) {
      m_target.m_recordsByBean.RemoveKey(library.beans.back().name);
      m_target.m_eagerLibraries.RemoveKey(library.beans.back().name);
    }
  }

  CRegistry& m_target;
  SDocument& m_source;
  const std::size_t m_eagerBeans;  // how many there were before
  const std::size_t m_libraries;
  std::vector<CStringT<char>> m_services;                     // interfaces registered for, in order
  std::vector<std::pair<SLibrary*, std::size_t>> m_extended;  // with the number of beans before
  bool m_committed = false;
};

std::optional<CStringT<char>> CRegistry::Merge(SDocument& document) {
  if (const CStringT<char>* name = FindOverride(document)) {
    return *name;
  }
  CMerge merge(*this, document);
  merge.AddServices();
  merge.AddDeclarations();
  merge.NoteEagerBeans();
  merge.Commit();
  return std::nullopt;
}

}  // namespace Zorbel
