// Ends while its threads use the library.
#include <Logging/Logging.h>

#include <atomic>
#include <chrono>
#include <thread>

#include "Use.h"

namespace {

std::atomic<int> rounds = 0;

// Static objects that take their time to end.
const struct SSlowEnd {
  ~SSlowEnd() { std::this_thread::sleep_for(std::chrono::milliseconds(3)); }
} slowEnd;

}  // namespace

int main() {
  constexpr int kThreads = 4;
  Logging::SetSink([](const Logging::SRecord&) { ++rounds; });
  UseEverything();  // loads the plug-in; ThreadSanitizer does not know the lock under which the system does so
  for (int i = 0; i < kThreads; ++i) {
    std::thread([] {
      for (;;) {
        UseEverything();
      }
    }).detach();
  }
  while (rounds < 2 * kThreads) {
    std::this_thread::yield();
  }
}
