#include "../TestModule.h"

#include <dlfcn.h>

void* OpenModule(const char* path) { return dlopen(path, RTLD_NOW | RTLD_LOCAL); }

void CloseModule(void* module) { dlclose(module); }

bool IsModuleMapped(const char* path) {
  void* mapped = dlopen(path, RTLD_NOW | RTLD_NOLOAD);
  return mapped != nullptr && dlclose(mapped) == 0;
}
