#pragma once

#include <cstddef>

namespace Platform {

/// The system's id of the calling thread; constant for the thread's life.
unsigned int CurrentThreadId();

/// How many bean resolutions, or documents being read, may nest on one thread before its stack is in danger.
std::size_t MaximumRecursionDepth();

/// Returns how many bytes are left on the calling thread's stack below the current frame, those of a guard area not
/// counted; the largest value when that cannot be told, as on a stack that is not the thread's own. Cheap: the first
/// call of a thread asks the system, the others compare addresses.
std::size_t RemainingStack();

}  // namespace Platform
