#include "Platform/Thread.h"

#include "WindowsApi.h"

namespace Platform {

unsigned int CurrentThreadId() { return GetCurrentThreadId(); }

std::size_t MaximumRecursionDepth() { return 256; }  // a thread's stack is 1 MB

}  // namespace Platform
