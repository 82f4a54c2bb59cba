// The registry: merging, bean definitions and services.

#include <algorithm>
#include <string>

#include "CDynamicLibrary.h"
#include "CLocalLibrary.h"
#include "CServiceConfig.h"
#include "CXMLResource.h"
#include "CXMLResourceOrigin.h"
#include "Raise.h"

namespace Zorbel {
namespace {

using Internal::kResourceFile;

CStringT<char> WrapperMakerName(const CStringT<char>& className) {
  CStringT<char> name = className;
  name.Replace("::", "_");
  return "create_" + name + "_Wrapper";
}

bool Holds(const std::shared_ptr<ITypeRegistration>& registration, const std::shared_ptr<IObject>& instance) {
  const auto* service = dynamic_cast<const CServiceConfig*>(registration.get());
  return service != nullptr && service->Holds(instance);
}

void RequireTypeId(const char* typeId, const Internal::SOrigin& origin, const wchar_t* message) {
  if (typeId == nullptr) {
    Internal::Raise(origin, message);
  }
}

}  // namespace

SLibraryRecord* CXMLResource::FindOrAddLibrary(const char* path) {
  SLibraryRecord*& known = m_librariesByPath.SetAt(path).value;
  if (known == nullptr) {
    known = &m_libraries.emplace_back();
    known->path = path;
    known->order = m_libraries.size();
  }
  return known;
}

void CXMLResource::AddBean(SLibraryRecord& library, SBeanDescription&& bean) {
  SLibraryRecord*& first = m_librariesByBean.SetAt(bean.name).value;
  if (first == nullptr || library.order < first->order) {
    first = &library;
  }
  library.beans.push_back(std::move(bean));
}

void CXMLResource::Integrate(CXMLResource& other) {
  CheckOverrides(other);
  IntegrateServices(other);
  m_eagerBeans.insert(m_eagerBeans.end(), other.m_eagerBeans.begin(), other.m_eagerBeans.end());
  if (m_libraries.empty()) {
    TakeLibraries(other);
    return;
  }
  for (SLibraryRecord& library : other.m_libraries) {
    IntegrateLibrary(library);
  }
}

void CXMLResource::CheckOverrides(const CXMLResource& other) const {
  for (const SLibraryRecord& library : other.m_libraries) {
    for (const SBeanDescription& bean : library.beans) {
      if (m_librariesByBean.Lookup(bean.name) != nullptr) {
        Internal::Raise({kResourceFile, "Zorbel::CXMLResource::Integrate"}, L"Overriding bean '%s' is not allowed",
                        Utf8ToWide(bean.name.GetString()));
      }
    }
  }
}

void CXMLResource::IntegrateServices(const CXMLResource& other) {
  for (const SLibraryRecord& library : other.m_libraries) {
    for (const SBeanDescription& bean : library.beans) {
      if (bean.interfaces.empty()) {
        continue;
      }
      auto registration = std::make_shared<CServiceConfig>(
          CServiceConfig::SharedMaker([owner = m_owner, name = bean.name] { return owner->GetBean(name, nullptr); }));
      if (bean.singleton) {
        registration->SetSingleton();
      }
      for (const CStringT<char>& typeId : bean.interfaces) {
        Insert(typeId, true, registration);
      }
    }
  }
}

// With nothing to merge with, the indexes stand as they are. What the document loaded for itself is not taken over.
void CXMLResource::TakeLibraries(CXMLResource& other) {
  m_libraries.swap(other.m_libraries);
  m_librariesByPath.Swap(other.m_librariesByPath);
  m_librariesByBean.Swap(other.m_librariesByBean);
  for (SLibraryRecord& library : m_libraries) {
    library.module = nullptr;
    library.processed = 0;
    for (const SBeanDescription& bean : library.beans) {
      NoteEagerBean(bean, library);
    }
  }
}

void CXMLResource::NoteEagerBean(const SBeanDescription& bean, const SLibrary& library) {
  if (!bean.lazy) {
    m_eagerLibraries.SetAt(bean.name).value = &library;
  }
}

void CXMLResource::IntegrateLibrary(SLibraryRecord& other) {
  SLibraryRecord* library = FindOrAddLibrary(other.path);
  for (SBeanDescription& bean : other.beans) {
    NoteEagerBean(bean, *library);
    AddBean(*library, std::move(bean));
  }
}

CBeanConfig* CXMLResource::FindBeanConfig(const char* name, std::uint64_t hash) {
  if (const std::unique_ptr<CBeanConfig>* built = m_beans.Lookup(name, hash)) {
    return built->get();
  }
  SLibraryRecord* const* library = m_librariesByBean.Lookup(name, hash);
  if (library == nullptr) {
    return nullptr;
  }
  processLibrary(**library);
  const std::unique_ptr<CBeanConfig>* built = m_beans.Lookup(name, hash);
  return built != nullptr ? built->get() : nullptr;
}

// A wrapper maker that asks for beans of the library it is being called for finds those built so far.
void CXMLResource::processLibrary(SLibraryRecord& library) {
  if (library.processing) {
    return;
  }
  struct SProcessing {
    explicit SProcessing(bool& processing) : flag(processing) { flag = true; }
    ~SProcessing() { flag = false; }
    bool& flag;
  } const processing(library.processing);

  LoadedLibrary(library);
  for (; library.processed < library.beans.size(); ++library.processed) {
    const SBeanDescription& bean = library.beans[library.processed];
    if (m_beans.Lookup(bean.name) == nullptr) {
      processBean(bean, library);
    }
  }
}

ILibrary& CXMLResource::LoadedLibrary(SLibraryRecord& library) {
  if (library.module == nullptr) {
    m_loadedLibraries.push_back(std::make_unique<CDynamicLibrary>(library.path));
    library.module = m_loadedLibraries.back().get();
  }
  return *library.module;
}

// What a module exports does not change, so it is asked once for each class.
void* CXMLResource::FindWrapperMaker(SLibraryRecord& library, const CStringT<char>& className) {
  void** exported = library.makers.Lookup(className);
  if (exported != nullptr && *exported != nullptr) {
    return *exported;
  }
  const CStringT<char> name = WrapperMakerName(className);
  if (exported == nullptr) {
    void* found = LoadedLibrary(library).GetFunction(name);
    exported = &(library.makers.SetAt(className).value = found);
  }
  return *exported != nullptr ? *exported : CLocalLibrary::Instance().GetFunction(name);
}

void CXMLResource::processBean(const SBeanDescription& bean, SLibraryRecord& library) {
  void* maker = FindWrapperMaker(library, bean.className);
  if (maker == nullptr) {
    Internal::Raise({kResourceFile, "Zorbel::CXMLResource::processBean"},
                    L"Getting wrapper maker failed for class '%s'", AnsiToWide(bean.className.GetString()));
  }
  auto config = std::make_unique<CBeanConfig>(bean, reinterpret_cast<WrapperMaker>(maker), &library);
  m_beans.SetAt(bean.name).value = std::move(config);
}

std::vector<std::pair<CStringT<char>, const SLibrary*>> CXMLResource::GetEagerBeans() const {
  std::vector<std::pair<CStringT<char>, const SLibrary*>> beans;
  beans.reserve(m_eagerBeans.size());
  for (const CStringT<char>& name : m_eagerBeans) {
    const SLibrary* const* library = m_eagerLibraries.Lookup(name);
    beans.emplace_back(name, library != nullptr ? *library : nullptr);
  }
  return beans;
}

void CXMLResource::Insert(const char* typeId, bool front, const std::shared_ptr<ITypeRegistration>& registration) {
  ServiceList& services = m_services.SetAt(typeId).value;
  services.insert(front ? services.begin() : services.end(), registration);
}

std::shared_ptr<ITypeRegistration> CXMLResource::RegisterInstance(const char* typeId, bool front,
                                                                  const std::shared_ptr<IObject>& instance,
                                                                  std::shared_ptr<ITypeRegistration> registration) {
  constexpr const char* kFunction = "Zorbel::CXMLResource::RegisterInstance";
  RequireTypeId(typeId, {kResourceFile, kFunction}, L"RegisterInstance: the type id is null");
  if (!registration) {
    if (const ServiceList* services = m_services.Lookup(typeId)) {
      for (const auto& known : *services) {
        if (Holds(known, instance)) {
          Internal::Raise({kResourceFile, kFunction}, L"Service instance is already registered for interface '%s'",
                          std::wstring(CStringT<wchar_t>(typeId).GetString()));
        }
      }
    }
    registration = std::make_shared<CServiceConfig>(instance);
  }
  Insert(typeId, front, registration);
  return registration;
}

std::shared_ptr<ITypeRegistration> CXMLResource::RegisterService(const char* typeId, bool front,
                                                                 std::function<std::unique_ptr<IObject>()>&& maker,
                                                                 std::shared_ptr<ITypeRegistration> registration) {
  RequireTypeId(typeId, {kResourceFile, "Zorbel::CXMLResource::RegisterService"},
                L"RegisterService: the type id is null");
  if (!registration) {
    registration = std::make_shared<CServiceConfig>(std::move(maker));
  }
  Insert(typeId, front, registration);
  return registration;
}

std::vector<std::shared_ptr<ITypeRegistration>> CXMLResource::ReleaseInstance(
    const std::shared_ptr<IObject>& instance) {
  std::vector<std::shared_ptr<ITypeRegistration>> removed;
  for (auto* entry = m_services.GetStartPosition(); entry != nullptr;) {
    auto* current = std::exchange(entry, decltype(m_services)::GetNextAssoc(entry));
    ServiceList& services = current->value;
    const auto held = std::find_if(services.begin(), services.end(),
                                   [&](const auto& registration) { return Holds(registration, instance); });
    if (held == services.end()) {
      continue;
    }
    removed.push_back(std::move(*held));
    services.erase(held);
    if (services.empty()) {
      m_services.RemoveKey(current->key);
    }
  }
  if (removed.empty()) {
    Internal::Raise({kResourceFile, "Zorbel::CXMLResource::ReleaseInstance"}, L"Service instance was not registered");
  }
  return removed;
}

std::shared_ptr<ITypeRegistration> CXMLResource::FindService(const char* typeId, unsigned int index) {
  const ServiceList* services = typeId != nullptr ? m_services.Lookup(typeId) : nullptr;
  return services != nullptr && index < services->size() ? (*services)[index] : nullptr;
}

unsigned int CXMLResource::GetServiceCount(const char* typeId) {
  const ServiceList* services = typeId != nullptr ? m_services.Lookup(typeId) : nullptr;
  return services != nullptr ? static_cast<unsigned int>(services->size()) : 0;
}

}  // namespace Zorbel
