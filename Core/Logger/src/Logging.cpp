#include <Logging/Logging.h>

#include <utility>

#include "CLoggingState.h"

namespace Logging {

void SetLevel(int level) noexcept { CLoggingState::Get().SetLevel(level); }

void SetLevel(const wchar_t* channel, int level) { CLoggingState::Get().SetLevel(channel, level); }

void SetSink(Sink sink) { CLoggingState::Get().SetSink(std::move(sink)); }

}  // namespace Logging
