#include "../TestModule.h"

#include <windows.h>

void* OpenModule(const char* path) { return LoadLibraryA(path); }

void CloseModule(void* module) { FreeLibrary(static_cast<HMODULE>(module)); }

bool IsModuleMapped(const char* path) { return GetModuleHandleA(path) != nullptr; }
