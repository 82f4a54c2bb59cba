#pragma once

#include <cstddef>
#include <functional>

namespace Test {

/// Runs the function on a thread whose stack has that size in bytes, and waits for its end.
void RunOnThread(std::size_t stackSize, const std::function<void()>& run);

}  // namespace Test
