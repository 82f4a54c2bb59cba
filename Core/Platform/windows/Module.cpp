#include "Platform/Module.h"

#include "WindowsApi.h"

namespace Platform {

// The system's own search applies: a bare name is looked for beside the executable first, and gets ".dll" when it has
// no extension.
void* LoadModule(const std::string& path) { return path.empty() ? nullptr : LoadLibraryA(path.c_str()); }

void* FindFunction(void* module, const char* name) {
  return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(module), name));
}

}  // namespace Platform
