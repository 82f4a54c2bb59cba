#pragma once

#include <string>

namespace Platform {

/// Stores the text form of a new UUID: 36 characters, lower-case hexadecimal. Returns false when none can be had, which
/// leaves the text alone. Thread: any.
bool CreateUuidText(std::string& text);

}  // namespace Platform
