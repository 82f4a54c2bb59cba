#include "Libraries/CDynamicLibrary.h"

#include "Errors/Raise.h"
#include "Libraries/ModuleStamp.h"
#include "Platform/CodePage.h"
#include "Platform/Module.h"

namespace Zorbel {
namespace {

constexpr const char* kLibraryFile = "Core/Zorbel/src/CDynamicLibrary";
constexpr const char* kConstructor = "Zorbel::CDynamicLibrary::CDynamicLibrary";

// Its own channel: what the loader says differs from system to system.
const Logging::CLogger logger(L"Zorbel.Modules");

void* LoadModule(const char* path) {
  if (!logger.IsLogLevelEnabled(Internal::ELogLevel::warning)) {
    return Platform::LoadModule(path);
  }
  std::wstring whyNot;
  void* module = Platform::LoadModule(path, &whyNot);
  if (module == nullptr) {
    logger.Warn(kLibraryFile, __LINE__, kConstructor, L"Library '%s' cannot be loaded: %s",
                Platform::Utf8ToWideLossy(path).c_str(), whyNot.c_str());
  }
  return module;
}

}  // namespace

CDynamicLibrary::CDynamicLibrary(const char* path) : m_module(LoadModule(path)), m_path(path) {
  if (m_module == nullptr) {
    Internal::Raise({kLibraryFile, kConstructor}, L"Could not load library '%s'", Utf8ToUtf16(m_path));
  }
  if (const void* stamp = Platform::FindFunction(m_module, Kit::kStampName)) {
    WelcomeModule(Internal::KnownPartOf(stamp));
  }
}

void CDynamicLibrary::WelcomeModule(const Kit::SModuleStamp& stamp) const {
  const std::string misfit = Internal::WhyStampDoesNotFit(stamp);
  if (!misfit.empty()) {
    Internal::Raise({kLibraryFile, kConstructor}, L"Library '%s' was built for another binary interface (%s)",
                    Utf8ToUtf16(m_path), AnsiToWide(misfit));
  }
  if (stamp.registerInterfaces != nullptr) {
    stamp.registerInterfaces();
  }
}

void* CDynamicLibrary::GetFunction(const char* name) { return Platform::FindFunction(m_module, name); }

}  // namespace Zorbel
