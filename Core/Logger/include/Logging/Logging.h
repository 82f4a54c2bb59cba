#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>

#include <Logging/Export.h>

/// For hosts: which lines are written, and where to.
/// Thread: every function may be called from any thread at any time, also by a sink.
namespace Logging {

inline constexpr int kLevelTrace = 0;
inline constexpr int kLevelDebug = 1;
inline constexpr int kLevelInformation = 2;
inline constexpr int kLevelWarning = 3;
inline constexpr int kLevelError = 4;
inline constexpr int kLevelOff = 6;  ///< writes nothing, errors included

/// The level of every channel until the host sets another.
inline constexpr int kDefaultLevel = kLevelWarning;

/// Sets the lowest level that is written, for every channel, present and future. The last call wins, also over a level
/// set for one channel. Errors are written at every level below `kLevelOff`; 5, which has no name, is the same as
/// `kLevelError` but for what `CLogger::IsLogLevelEnabled` answers.
LOGGING_API void SetLevel(int level) noexcept;

/// Sets the level of one channel, whether or not a logger of it exists yet. A null name counts as the empty one.
/// Throws: `std::bad_alloc`.
LOGGING_API void SetLevel(const wchar_t* channel, int level);

/// One line of the log.
struct SRecord {
  std::wstring channel;
  int level = kLevelOff;
  std::string file;           ///< of the origin; may be empty
  int line = 0;               ///< of the origin
  std::string function;       ///< of the origin, qualified; may be empty
  std::wstring text;          ///< as it was logged: may have line feeds and control characters
  unsigned int threadId = 0;  ///< the system's id of the thread that logged
  std::chrono::system_clock::time_point time;
};

/// Takes the lines that are written, on the thread that logs them, from several threads at once. No lock of the log is
/// held while it runs: it may log and set the sink. Whoever logs may have locks, though, which other threads wait for:
/// it must not wait for threads that use the library. What it logs comes back to it, up to a few levels deep; deeper
/// lines are dropped. What it throws is swallowed.
using Sink = std::function<void(const SRecord&)>;

/// Replaces the sink; an empty function restores the default, `StandardErrorSink()`.
/// Ownership: the sink is kept, to the end of the process, until it is replaced and the last thread inside it has left
/// it. A module whose code it is must not be unloaded before. Throws: `std::bad_alloc`.
LOGGING_API void SetSink(Sink sink);

/// Returns a sink that writes one line each to the standard error stream, in UTF-8, coloured on a terminal: local time,
/// level, thread id, channel, text, and in parentheses function, file and line of the origin, where they are known.
/// Control characters (U+0000 to U+001F, U+007F to U+009F), the separators U+2028 and U+2029, and bytes that are no
/// UTF-8 are written escaped, as `\n`, `\r`, `\t`, `\x1B` or `\u2028`: nothing that is logged starts a line of its own.
/// Throws: `std::bad_alloc`.
LOGGING_API Sink StandardErrorSink();

/// Returns a sink that writes such lines to the end of the file `path` (in UTF-8), making its folder where needed. A
/// relative path is resolved at once, by the working directory of the process, and stays so.
/// A line that would take the file beyond `maximumBytes` starts a new one. Whole lines are counted, with their time and
/// line end, and what the file held before; a single line that is longer gets a file of its own all the same. Of the
/// older files the last `files` are kept, none for 0: beside "zorbel.log" the files "zorbel.1.log", "zorbel.2.log" and
/// so on, the highest number being the oldest.
/// Ownership: the file stays open as long as a copy of the sink lives. Two sinks must not share one file.
/// Throws: `std::runtime_error`, naming the file, when it cannot be opened, `maximumBytes` is 0 or `files` is above
/// 200,000; `std::bad_alloc`.
LOGGING_API Sink RotatingFileSink(const char* path, std::size_t maximumBytes, std::size_t files);

}  // namespace Logging
