// Merging: a document into the factory's registry, and an included document into the one that includes it.

#include <cstddef>
#include <utility>

#include "Errors/CXMLResourceOrigin.h"
#include "Errors/Raise.h"
#include "Resource/CXMLResource.h"
#include "Services/CServiceConfig.h"

namespace Zorbel {

/// One merge: what it has added is taken away again unless it is committed. No bean of the source has a name that the
/// target knows.
class CXMLResource::CMerge {
 public:
  CMerge(CXMLResource& target, CXMLResource& source)
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

  /// Registers the services that the source's beans provide. Comes before its libraries are taken.
  void AddServices() {
    for (const SLibraryRecord& library : m_source.m_libraries) {
      for (const SBeanDescription& bean : library.beans) {
        AddServicesOf(bean);
      }
    }
  }

  void AddDeclarations() {
    m_target.m_eagerBeans.insert(m_target.m_eagerBeans.end(), m_source.m_eagerBeans.begin(),
                                 m_source.m_eagerBeans.end());
    if (m_libraries == 0) {
      TakeLibraries();
      return;
    }
    m_extended.reserve(m_source.m_libraries.size());
    for (SLibraryRecord& library : m_source.m_libraries) {
      AddLibrary(library);
    }
  }

  /// Tells the target on whose behalf its eager beans are made. Comes last.
  void NoteEagerBeans() {
    if (m_taken) {
      for (const SLibraryRecord& library : m_target.m_libraries) {
        NoteEagerBeansOf(library, 0);
      }
    }
    for (const auto& [library, count] : m_extended) {
      NoteEagerBeansOf(*library, count);
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

  // With nothing to merge with, the indexes stand as they are. What the document loaded for itself is not taken over.
  void TakeLibraries() noexcept {
    m_source.ForgetLoadedLibraries();
    SwapLibraries();
    m_taken = true;
  }

  void SwapLibraries() noexcept {
    m_target.m_libraries.swap(m_source.m_libraries);
    m_target.m_librariesByPath.Swap(m_source.m_librariesByPath);
    m_target.m_librariesByBean.Swap(m_source.m_librariesByBean);
  }

  void AddLibrary(SLibraryRecord& source) {
    SLibraryRecord* library = m_target.FindOrAddLibrary(source.path);
    m_extended.emplace_back(library, library->beans.size());
    for (SBeanDescription& bean : source.beans) {
      m_target.AddBean(*library, std::move(bean));
    }
  }

  void NoteEagerBeansOf(const SLibraryRecord& library, std::size_t first) {
    for (std::size_t i = first; i < library.beans.size(); ++i) {
      if (!library.beans[i].lazy) {
        m_target.m_eagerLibraries.SetAt(library.beans[i].name).value = &library;
      }
    }
  }

  void Undo() noexcept {
    for (; !m_services.empty(); m_services.pop_back()) {
      m_target.m_services.RemoveFirst(m_services.back());
    }
    if (m_taken) {
      SwapLibraries();
      decltype(m_eagerLibraries)().Swap(m_target.m_eagerLibraries);
    }
    for (; !m_extended.empty(); m_extended.pop_back()) {
      DropBeans(*m_extended.back().first, m_extended.back().second);
    }
    while (m_target.m_libraries.size() > m_libraries) {
      m_target.m_librariesByPath.RemoveKey(m_target.m_libraries.back().path);
      m_target.m_libraries.pop_back();
    }
    m_target.m_eagerBeans.resize(m_eagerBeans);
  }

  void DropBeans(SLibraryRecord& library, std::size_t count) noexcept {
    for (; library.beans.size() > count; library.beans.pop_back()) {
      m_target.m_librariesByBean.RemoveKey(library.beans.back().name);
      m_target.m_eagerLibraries.RemoveKey(library.beans.back().name);
    }
  }

  CXMLResource& m_target;
  CXMLResource& m_source;
  const std::size_t m_eagerBeans;  // how many there were before
  const std::size_t m_libraries;
  std::vector<CStringT<char>> m_services;                           // interfaces registered for, in order
  std::vector<std::pair<SLibraryRecord*, std::size_t>> m_extended;  // with the number of beans before
  bool m_taken = false;
  bool m_committed = false;
};

std::optional<CStringT<char>> CXMLResource::Integrate(CXMLResource& other) {
  if (const CStringT<char>* name = FindOverride(other)) {
    return *name;
  }
  CMerge merge(*this, other);
  merge.AddServices();
  merge.AddDeclarations();
  merge.NoteEagerBeans();
  merge.Commit();
  return std::nullopt;
}

// Services and eager beans are the registry's affair, which the whole document reaches.
void CXMLResource::Include(CXMLResource& included) {
  if (const CStringT<char>* name = FindOverride(included)) {
    RaiseOverride(*name);
  }
  CMerge merge(*this, included);
  merge.AddDeclarations();
  merge.Commit();
}

const CStringT<char>* CXMLResource::FindOverride(const CXMLResource& other) const {
  if (m_librariesByBean.GetCount() == 0) {
    return nullptr;
  }
  for (const SLibraryRecord& library : other.m_libraries) {
    for (const SBeanDescription& bean : library.beans) {
      if (m_librariesByBean.Lookup(bean.name) != nullptr) {
        return &bean.name;
      }
    }
  }
  return nullptr;
}

void CXMLResource::RaiseOverride(const CStringT<char>& bean) {
  Internal::Raise({Internal::kResourceFile, "Zorbel::CXMLResource::Integrate"}, L"Overriding bean '%s' is not allowed",
                  Utf8ToWide(bean.GetString()));
}

// They stay with the definitions built from them, which go with this resource.
void CXMLResource::ForgetLoadedLibraries() noexcept {
  for (const SLoadedLibrary& loaded : m_loadedLibraries) {
    loaded.record->module = nullptr;
    loaded.record->processed = 0;
  }
}

}  // namespace Zorbel
