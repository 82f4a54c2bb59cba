#include "CDynamicLibrary.h"

#include "Platform/Module.h"
#include "Raise.h"

namespace Zorbel {

CDynamicLibrary::CDynamicLibrary(const char* path) : m_module(Platform::LoadModule(path)), m_path(path) {
  if (m_module == nullptr) {
    Internal::Raise({"Core/Zorbel/src/CDynamicLibrary", "Zorbel::CDynamicLibrary::CDynamicLibrary"},
                    L"Could not load library '%s'", Utf8ToUtf16(m_path));
  }
}

void* CDynamicLibrary::GetFunction(const char* name) { return Platform::FindFunction(m_module, name); }

}  // namespace Zorbel
