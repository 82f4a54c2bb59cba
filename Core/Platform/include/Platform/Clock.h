#pragma once

#include <cstdint>

namespace Platform {

/// Stores the ticks per second of `FineTicks`. Returns false when the system has no such counter.
bool GetFineFrequency(std::uint64_t& frequency);

/// A monotonic counter of the frequency above.
std::uint64_t FineTicks();

/// Milliseconds since the system started.
std::uint64_t MillisecondTicks();

}  // namespace Platform
