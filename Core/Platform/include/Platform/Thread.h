#pragma once

#include <cstddef>

namespace Platform {

/// The system's id of the calling thread; constant for the thread's life.
unsigned int CurrentThreadId();

/// How many bean resolutions, or documents being read, may nest on one thread before its stack is in danger.
std::size_t MaximumRecursionDepth();

}  // namespace Platform
