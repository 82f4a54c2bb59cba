#include <Logging/CLogger.h>

#include <Zorbel/detail/text/PrintFormat.h>

#include <cstdarg>
#include <type_traits>

#include "CLoggingState.h"
#include "Platform/Thread.h"

namespace Logging {

static_assert(std::is_trivially_destructible_v<CLogger>, "static loggers serve to the very end of the process");

namespace {

// A sink that logs gets its own lines; one that always does would never end. Few levels, as each level may log several.
constexpr int kMaximumNesting = 8;

thread_local int nesting = 0;

class CNesting {
 public:
  CNesting() { ++nesting; }
  ~CNesting() { --nesting; }
  CNesting(const CNesting&) = delete;
  CNesting& operator=(const CNesting&) = delete;
};

struct SOrigin {
  const char* file;
  int line;
  const char* function;
};

std::wstring FormatText(const wchar_t* format, va_list arguments) {
  std::wstring text;
  if (!Zorbel::detail::PrintFormatter<wchar_t>::Format(text, format, arguments) && format != nullptr) {
    text = format;
  }
  return text;
}

std::string TextOrEmpty(const char* text) { return text != nullptr ? text : ""; }

void Deliver(const SRecord& record) {
  const std::shared_ptr<const Sink> sink = CLoggingState::Get().GetSink();
  (*sink)(record);
}

void Write(const SChannel& channel, int level, const SOrigin& origin, const wchar_t* format,
           va_list arguments) noexcept {
  const CNesting nested;
  if (nesting > kMaximumNesting) {
    return;
  }
  try {
    Deliver({std::wstring(channel.name), level, TextOrEmpty(origin.file), origin.line, TextOrEmpty(origin.function),
             FormatText(format, arguments), Platform::CurrentThreadId(), std::chrono::system_clock::now()});
  } catch (...) {
    // Logging must not fail its caller, and there is no place left to report to.
  }
}

}  // namespace

CLogger::CLogger(const wchar_t* channel) : m_channel(CLoggingState::Get().GetChannel(channel)) {}

bool CLogger::IsLogLevelEnabled(int level) const noexcept {
  return level >= m_channel.level.load(std::memory_order_relaxed) && level < kLevelOff;
}

void CLogger::Info(const char* file, int line, const char* function, const wchar_t* format, ...) const noexcept {
  if (IsLogLevelEnabled(kLevelInformation)) {
    va_list arguments;
    va_start(arguments, format);
    Write(m_channel, kLevelInformation, {file, line, function}, format, arguments);
    va_end(arguments);
  }
}

void CLogger::Warn(const char* file, int line, const char* function, const wchar_t* format, ...) const noexcept {
  if (IsLogLevelEnabled(kLevelWarning)) {
    va_list arguments;
    va_start(arguments, format);
    Write(m_channel, kLevelWarning, {file, line, function}, format, arguments);
    va_end(arguments);
  }
}

void CLogger::Error(const char* file, int line, const char* function, const wchar_t* format, ...) const noexcept {
  if (m_channel.level.load(std::memory_order_relaxed) < kLevelOff) {
    va_list arguments;
    va_start(arguments, format);
    Write(m_channel, kLevelError, {file, line, function}, format, arguments);
    va_end(arguments);
  }
}

}  // namespace Logging
