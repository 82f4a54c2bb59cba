#include "Support/SmallStack.h"

#include <windows.h>

#include <cstdlib>

namespace Test {
namespace {

DWORD WINAPI Run(void* function) {
  (*static_cast<const std::function<void()>*>(function))();
  return 0;
}

}  // namespace

void RunOnThread(std::size_t stackSize, const std::function<void()>& run) {
  HANDLE thread = CreateThread(nullptr, stackSize, &Run, const_cast<std::function<void()>*>(&run),
                               STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
  if (thread == nullptr || WaitForSingleObject(thread, INFINITE) != WAIT_OBJECT_0) {
    std::abort();
  }
  CloseHandle(thread);
}

}  // namespace Test
