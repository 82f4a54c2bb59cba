#pragma once

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <future>
#include <thread>
#include <vector>

namespace Test {

/// Runs the function at the same time on `count` threads, each of which it is told the number of. Threads in a deadlock
/// cannot be ended, so one ends the program.
inline void RunTogether(int count, const std::function<void(int)>& function) {
  std::atomic<int> missing = count;
  std::vector<std::future<void>> runs;
  for (int i = 0; i < count; ++i) {
    runs.push_back(std::async(std::launch::async, [&missing, &function, i] {
      --missing;
      while (missing != 0) {
        std::this_thread::yield();
      }
      function(i);
    }));
  }
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::minutes(1);
  for (std::future<void>& run : runs) {
    if (run.wait_until(deadline) != std::future_status::ready) {
      std::fputs("The threads of a test have not come to an end.\n", stderr);
      std::abort();
    }
    run.get();
  }
}

}  // namespace Test
