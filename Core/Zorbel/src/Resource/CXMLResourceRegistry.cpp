// The registry: libraries, bean definitions and services.

#include <string>

#include "Errors/CXMLResourceOrigin.h"
#include "Errors/Raise.h"
#include "Libraries/CDynamicLibrary.h"
#include "Libraries/CLocalLibrary.h"
#include "Resource/CXMLResource.h"
#include "Services/CServiceConfig.h"

namespace Zorbel {
namespace {

using Internal::kResourceFile;

CStringT<char> WrapperMakerName(const CStringT<char>& className) {
  CStringT<char> name = className;
  name.Replace("::", "_");
  return "create_" + name + "_Wrapper";
}

}  // namespace

SLibraryRecord* CXMLResource::FindOrAddLibrary(const char* path) {
  if (SLibraryRecord* const* known = m_librariesByPath.Lookup(path)) {
    return *known;
  }
  SLibraryRecord& added = m_libraries.emplace_back();
  try {
    added.path = path;
    added.order = m_libraries.size();
    m_librariesByPath.SetAt(added.path).value = &added;
  } catch (...) {
    m_libraries.pop_back();
    throw;
  }
  return &added;
}

void CXMLResource::AddBean(SLibraryRecord& library, SBeanDescription&& bean) {
  library.beans.push_back(std::move(bean));
  try {
    SLibraryRecord*& first = m_librariesByBean.SetAt(library.beans.back().name).value;
    if (first == nullptr || library.order < first->order) {
      first = &library;
    }
  } catch (...) {
    library.beans.pop_back();
    throw;
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
    m_loadedLibraries.push_back({std::make_unique<CDynamicLibrary>(library.path), &library});
    library.module = m_loadedLibraries.back().library.get();
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

const SLibrary* CXMLResource::FindEagerLibrary(const char* name) const {
  const SLibrary* const* library = m_eagerLibraries.Lookup(name);
  return library != nullptr ? *library : nullptr;
}

std::shared_ptr<ITypeRegistration> CXMLResource::RegisterInstance(const char* typeId, bool front,
                                                                  const std::shared_ptr<IObject>& instance,
                                                                  std::shared_ptr<ITypeRegistration> registration) {
  if (!registration) {
    if (m_services.Holds(typeId, instance)) {
      return nullptr;
    }
    registration = std::make_shared<CServiceConfig>(instance);
  }
  m_services.Insert(typeId, front, registration);
  return registration;
}

std::shared_ptr<ITypeRegistration> CXMLResource::RegisterService(const char* typeId, bool front,
                                                                 std::function<std::unique_ptr<IObject>()>&& maker,
                                                                 std::shared_ptr<ITypeRegistration> registration) {
  if (!registration) {
    registration = std::make_shared<CServiceConfig>(std::move(maker));
  }
  m_services.Insert(typeId, front, registration);
  return registration;
}

std::vector<std::shared_ptr<ITypeRegistration>> CXMLResource::ReleaseInstance(
    const std::shared_ptr<IObject>& instance) {
  return m_services.Release(instance);
}

std::shared_ptr<ITypeRegistration> CXMLResource::FindService(const char* typeId, unsigned int index) {
  return m_services.Find(typeId, index);
}

void CXMLResource::RequireTypeId(const char* typeId, const char* function, const wchar_t* message) {
  if (typeId == nullptr) {
    Internal::Raise({kResourceFile, function}, message);
  }
}

void CXMLResource::RaiseAlreadyRegistered(const char* typeId) {
  Internal::Raise({kResourceFile, "Zorbel::CXMLResource::RegisterInstance"},
                  L"Service instance is already registered for interface '%s'",
                  std::wstring(CStringT<wchar_t>(typeId).GetString()));
}

void CXMLResource::RaiseNotRegistered() {
  Internal::Raise({kResourceFile, "Zorbel::CXMLResource::ReleaseInstance"}, L"Service instance was not registered");
}

}  // namespace Zorbel
