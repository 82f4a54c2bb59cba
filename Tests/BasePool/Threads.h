#pragma once

#include <barrier>
#include <thread>
#include <vector>

/// Runs `work`, which takes the thread's number, on several threads that start together.
template <class F>
void OnThreads(std::size_t count, F work) {
  std::barrier start(static_cast<std::ptrdiff_t>(count));
  std::vector<std::jthread> threads;
  for (std::size_t i = 0; i < count; ++i) {
    threads.emplace_back([&start, &work, i] {
      start.arrive_and_wait();
      work(i);
    });
  }
}
