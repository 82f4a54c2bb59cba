#pragma once

#include <atomic>
#include <thread>
#include <vector>

/// Runs `work`, which takes the thread's number, on several threads that start together.
template <class F>
void OnThreads(std::size_t count, F work) {
  std::atomic<std::size_t> missing = count;
  std::vector<std::jthread> threads;
  for (std::size_t i = 0; i < count; ++i) {
    threads.emplace_back([&missing, &work, i] {
      --missing;
      while (missing != 0) {
        std::this_thread::yield();
      }
      work(i);
    });
  }
}
