#include "Platform/ModuleEnd.h"

#include <cstdlib>

namespace Platform {

// Each module has a list of its own, which its end works off.
void AtModuleEnd(void (*function)()) { std::atexit(function); }

}  // namespace Platform
