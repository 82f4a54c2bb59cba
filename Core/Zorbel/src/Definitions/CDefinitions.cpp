#include "Definitions/CDefinitions.h"

#include <utility>

#include "Errors/Raise.h"
#include "Errors/SharedOrigins.h"
#include "Libraries/CDynamicLibrary.h"
#include "Libraries/CLocalLibrary.h"

namespace Zorbel {
namespace {

CStringT<char> WrapperMakerName(const CStringT<char>& className) {
  CStringT<char> name = className;
  name.Replace("::", "_");
  return "create_" + name + "_Wrapper";
}

}  // namespace

CBeanConfig* CDefinitions::Find(const char* name, std::uint64_t hash) {
  const std::unique_ptr<CBeanConfig>* built = m_beans.Lookup(name, hash);
  return built != nullptr ? built->get() : nullptr;
}

// A wrapper maker that asks for beans of the library it is being called for finds those built so far.
void CDefinitions::processLibrary(SLibraryProgress& progress) {
  if (progress.processing) {
    return;
  }
  struct SProcessing {
    explicit SProcessing(bool& processing) : flag(processing) { flag = true; }
    ~SProcessing() { flag = false; }
    bool& flag;
  } const processing(progress.processing);

  LoadedModule(progress);
  for (; progress.processed < progress.library->beans.size(); ++progress.processed) {
    const SBeanDescription& bean = progress.library->beans[progress.processed];
    if (m_beans.Lookup(bean.name) == nullptr) {
      processBean(bean, progress);
    }
  }
}

void CDefinitions::processBean(const SBeanDescription& bean, SLibraryProgress& progress) {
  void* maker = FindWrapperMaker(progress, bean.className);
  if (maker == nullptr) {
    Internal::Raise({Internal::kResourceFile, "Zorbel::CXMLResource::processBean"},
                    L"Getting wrapper maker failed for class '%s'", AnsiToWide(bean.className.GetString()));
  }
  auto config = std::make_unique<CBeanConfig>(bean, reinterpret_cast<WrapperMaker>(maker), progress.library);
  m_beans.SetAt(bean.name).value = std::move(config);
}

// What a module exports does not change, so it is asked once for each class.
void* CDefinitions::FindWrapperMaker(SLibraryProgress& progress, const CStringT<char>& className) {
  void** exported = progress.makers.Lookup(className);
  if (exported != nullptr && *exported != nullptr) {
    return *exported;
  }
  const CStringT<char> name = WrapperMakerName(className);
  if (exported == nullptr) {
    void* found = LoadedModule(progress).GetFunction(name);
    exported = &(progress.makers.SetAt(className).value = found);
  }
  return *exported != nullptr ? *exported : CLocalLibrary::Instance().GetFunction(name);
}

ILibrary& CDefinitions::LoadedModule(SLibraryProgress& progress) {
  if (progress.module == nullptr) {
    m_modules.push_back(std::make_unique<CDynamicLibrary>(progress.library->path));
    progress.module = m_modules.back().get();
  }
  return *progress.module;
}

}  // namespace Zorbel
