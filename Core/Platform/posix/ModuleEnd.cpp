#include "Platform/ModuleEnd.h"

#include <dlfcn.h>
#include <link.h>

namespace Platform {
namespace {

bool IsNeverUnloaded(const void* address) {
  Dl_info info{};
  void* found = nullptr;
  if (dladdr1(address, &info, &found, RTLD_DL_LINKMAP) == 0) {
    return false;
  }
  for (const ElfW(Dyn)* entry = static_cast<const link_map*>(found)->l_ld; entry->d_tag != DT_NULL; ++entry) {
    if (entry->d_tag == DT_FLAGS_1) {
      return (entry->d_un.d_val & DF_1_NODELETE) != 0;
    }
  }
  return false;
}

// Its destructor is arranged when the module is loaded. What is arranged later runs while others still use the module:
// in the middle of the program's exit.
struct SModuleEnd {
  constexpr SModuleEnd() = default;
  ~SModuleEnd() {
    if (function != nullptr && !IsNeverUnloaded(this)) {
      function();
    }
  }
  SModuleEnd(const SModuleEnd&) = delete;
  SModuleEnd& operator=(const SModuleEnd&) = delete;

  void (*function)() = nullptr;
};

SModuleEnd moduleEnd;

}  // namespace

void AtModuleEnd(void (*function)()) { moduleEnd.function = function; }

}  // namespace Platform
