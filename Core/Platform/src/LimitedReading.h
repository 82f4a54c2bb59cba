#pragma once

#include <cstdint>
#include <cstdio>

#include "Platform/File.h"

namespace Platform {

/// Reads an open file whose size is `expected`, or 0 when it is not known; what it really is decides.
EReading ReadLimited(std::FILE* file, std::uint64_t expected, std::size_t limit, std::string& content);

}  // namespace Platform
