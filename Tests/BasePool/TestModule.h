#pragma once

/// Modules that are really unloaded, which the library itself never does.
void* OpenModule(const char* path);
void CloseModule(void* module);
bool IsModuleMapped(const char* path);
