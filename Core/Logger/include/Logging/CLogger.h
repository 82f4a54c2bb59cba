#pragma once

#include <Logging/Export.h>

namespace Logging {

struct SChannel;

/// Writes lines on a named channel. Loggers of one name share the channel with its level.
/// Ownership: meant as a file-level static, one per source file; a logger is usable to the very end of the process,
/// also by the destructors of static objects. Thread: every operation may be called from any thread at any time.
///
/// `Info` and `Warn` write nothing where their level is not enabled, `Error` only where the level is `kLevelOff`. They
/// never throw: a line that cannot be built, or that the sink fails to write, is lost. `file` and `function` name the
/// origin; null counts as empty. `format` is a printf format by the wide rules on every platform: `%s` takes a wide
/// string, `%S` a narrow one, and `%I64u` an unsigned 64-bit integer. One that cannot be carried out becomes the text
/// of the line itself.
class CLogger {
 public:
  /// A null `channel` counts as the empty name. Throws: `std::bad_alloc`.
  LOGGING_API explicit CLogger(const wchar_t* channel);
  ~CLogger() = default;
  CLogger(const CLogger&) = delete;
  CLogger& operator=(const CLogger&) = delete;

  /// Returns whether `level` is at or above that of the channel, and below `kLevelOff`. Cheap: ask before building the
  /// arguments of a line.
  LOGGING_API bool IsLogLevelEnabled(int level) const noexcept;

  LOGGING_API void Info(const char* file, int line, const char* function, const wchar_t* format, ...) const noexcept;
  LOGGING_API void Warn(const char* file, int line, const char* function, const wchar_t* format, ...) const noexcept;
  LOGGING_API void Error(const char* file, int line, const char* function, const wchar_t* format, ...) const noexcept;

 private:
  SChannel& m_channel;
};

}  // namespace Logging
