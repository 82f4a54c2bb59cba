#pragma once

namespace Platform {

/// Has `function` called when the module that this code is a part of ends: at its unload, or with the process, and
/// before the module's static objects are destroyed. A module that the system never unloads ends with the process while
/// other threads may still use it; there, nothing is called. One call for each module.
void AtModuleEnd(void (*function)());

}  // namespace Platform
