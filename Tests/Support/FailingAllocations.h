#pragma once

#include <cstddef>

/// Replaces the global operators new and delete of the program whose source this is listed as: allocations are counted,
/// and can be told to fail. Valgrind replaces the operators too: the name of such a program does not end in "Test".
namespace Test::Allocations {

/// Lets the allocation fail that comes after `succeeding` others, and with `onwards` all behind it as well.
void FailAfter(int succeeding, bool onwards = false) noexcept;

/// Lets no more allocations fail. Returns whether one has.
bool Restore() noexcept;

/// Returns whether the standard library takes its memory here, too. It does not where each module has operators of its
/// own; then memory may be taken there and given back here.
bool AreSharedByModules();

int Count() noexcept;  ///< those that were tried
int Live() noexcept;   ///< those whose memory was not given back
std::size_t LastSize() noexcept;
std::size_t FailedSize() noexcept;

/// What the operators do, for libraries that take their memory elsewhere.
void* Allocate(std::size_t size) noexcept;
void Free(void* memory) noexcept;

}  // namespace Test::Allocations
