#include "Support/SmallStack.h"

#include <pthread.h>

#include <cstdlib>

namespace Test {

void RunOnThread(std::size_t stackSize, const std::function<void()>& run) {
  const auto start = [](void* function) -> void* {
    (*static_cast<const std::function<void()>*>(function))();
    return nullptr;
  };
  pthread_t thread{};
  pthread_attr_t attributes;
  const bool ran = pthread_attr_init(&attributes) == 0 && pthread_attr_setstacksize(&attributes, stackSize) == 0 &&
                   pthread_create(&thread, &attributes, start, const_cast<std::function<void()>*>(&run)) == 0 &&
                   pthread_join(thread, nullptr) == 0;
  if (!ran) {
    std::abort();
  }
  pthread_attr_destroy(&attributes);
}

}  // namespace Test
