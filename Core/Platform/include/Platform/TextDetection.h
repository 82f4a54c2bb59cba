#pragma once

#include <string_view>

namespace Platform {

/// True when the system's text test takes `bytes` for UTF-16 text, low byte first.
bool IsUtf16Text(std::string_view bytes);

}  // namespace Platform
