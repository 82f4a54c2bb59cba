#include "CDynamicLibrary.h"

#include "ModuleStamp.h"
#include "Platform/Module.h"
#include "Raise.h"

namespace Zorbel {
namespace {

constexpr const char* kLibraryFile = "Core/Zorbel/src/CDynamicLibrary";
constexpr const char* kConstructor = "Zorbel::CDynamicLibrary::CDynamicLibrary";

}  // namespace

CDynamicLibrary::CDynamicLibrary(const char* path) : m_module(Platform::LoadModule(path)), m_path(path) {
  if (m_module == nullptr) {
    Internal::Raise({kLibraryFile, kConstructor}, L"Could not load library '%s'", Utf8ToUtf16(m_path));
  }
  if (const void* stamp = Platform::FindFunction(m_module, Kit::kStampName)) {
    WelcomeModule(*static_cast<const Kit::SModuleStamp*>(stamp));
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
