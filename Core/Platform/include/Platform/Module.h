#pragma once

#include <string>

namespace Platform {

/// Maps the module `path` names into the process. Returns its handle, or null when it cannot be loaded.
/// `path` is handed to the system's loader; a name without any directory is also looked for beside the executable, and
/// one without extension as the system's usual file name for a library of that name. The empty path loads nothing.
/// A loaded module is never unloaded. `whyNot`, unless null, gets the reason of a failure, in the loader's own words.
void* LoadModule(const std::string& path, std::wstring* whyNot = nullptr);

/// Returns the address the module exports under exactly `name`, or null.
void* FindFunction(void* module, const char* name);

}  // namespace Platform
