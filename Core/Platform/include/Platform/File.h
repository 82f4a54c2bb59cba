#pragma once

#include <optional>
#include <string>

namespace Platform {

/// Reads the whole file named by the wide `name`, in binary. Returns nothing when it cannot be opened or read.
/// Both "/" and "\" separate folders in the name.
std::optional<std::string> ReadFile(const std::wstring& name);

/// A text that is equal for two names exactly when they name the same file; the name itself where that cannot be told.
std::wstring ResolveFileName(const std::wstring& name);

}  // namespace Platform
