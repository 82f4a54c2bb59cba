#include "Platform/Thread.h"

#include <unistd.h>

namespace Platform {

unsigned int CurrentThreadId() { return static_cast<unsigned int>(gettid()); }

std::size_t MaximumRecursionDepth() { return 1000; }

}  // namespace Platform
