#include <spdlog/fmt/fmt.h>
#include <spdlog/sinks/rotating_file_sink.h>
#include <spdlog/sinks/stdout_color_sinks.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include <Logging/Logging.h>

#include "Platform/Utf8.h"

namespace Logging {
namespace {

constexpr const char* kPattern = "%Y-%m-%d %H:%M:%S.%e %^%-7l%$ [%t] %n: %v";

using Target = std::unique_ptr<spdlog::sinks::sink>;

std::string EscapeSequence(char32_t code) {
  switch (code) {
    case U'\t': return "\\t";
    case U'\n': return "\\n";
    case U'\r': return "\\r";
    default: break;
  }
  const auto number = static_cast<std::uint32_t>(code);
  return number <= 0xFF ? fmt::format("\\x{:02X}", number) : fmt::format("\\u{:04X}", number);
}

bool EndsLineOrControlsTerminal(char32_t code) {
  constexpr char32_t kLineSeparator = 0x2028;
  constexpr char32_t kParagraphSeparator = 0x2029;
  return code < 0x20 || (code >= 0x7F && code < 0xA0) || code == kLineSeparator || code == kParagraphSeparator;
}

// A name that somebody else has chosen must not look like lines of its own. Bytes that are no UTF-8 are escaped too.
std::string Escaped(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    const Platform::SCodePoint next = Platform::DecodeUtf8(text);
    const std::size_t taken = next.wellFormed ? next.length : 1;
    if (next.wellFormed && !EndsLineOrControlsTerminal(next.value)) {
      result.append(text.substr(0, taken));
    } else {
      result.append(EscapeSequence(next.wellFormed ? next.value : static_cast<unsigned char>(text.front())));
    }
    text.remove_prefix(taken);
  }
  return result;
}

std::string Origin(const SRecord& record) {
  if (record.function.empty() && record.file.empty()) {
    return {};
  }
  const std::string place = record.file.empty() ? "" : Escaped(record.file) + ":" + std::to_string(record.line);
  return " (" + Escaped(record.function) + (record.function.empty() || place.empty() ? "" : ", ") + place + ")";
}

spdlog::level::level_enum Level(int level) {
  return static_cast<spdlog::level::level_enum>(std::clamp(level, kLevelTrace, kLevelOff));
}

class CLineWriter {
 public:
  explicit CLineWriter(std::function<Target()> open) : m_open(std::move(open)), m_target(Open()) {}

  void Write(const SRecord& record) {
    const std::string channel = Escaped(Platform::WideToUtf8(record.channel));
    const std::string text = Escaped(Platform::WideToUtf8(record.text)) + Origin(record);
    spdlog::details::log_msg message(record.time, {}, channel, Level(record.level), text);
    message.thread_id = record.threadId;
    const std::lock_guard lock(m_mutex);
    Write(message);
  }

 private:
  Target Open() {
    Target target = m_open();
    target->set_pattern(kPattern);
    return target;
  }

  void Write(const spdlog::details::log_msg& message) {
    if (!m_target) {
      m_target = Open();
    }
    try {
      m_target->log(message);
      m_target->flush();
    } catch (...) {
      m_target.reset();  // a file that failed to rotate is closed; spdlog would write to it all the same
      throw;
    }
  }

  std::mutex m_mutex;
  const std::function<Target()> m_open;
  Target m_target;
};

Sink MakeSink(std::function<Target()> open) {
  return [writer = std::make_shared<CLineWriter>(std::move(open))](const SRecord& record) { writer->Write(record); };
}

// Rotating opens files by name, and the process may have another working directory by then.
spdlog::filename_t AbsolutePath(const std::string& path) {
  return std::filesystem::absolute(reinterpret_cast<const char8_t*>(path.c_str())).native();
}

[[noreturn]] void RaiseForFile(const std::string& name, const std::exception& failure) {
  throw std::runtime_error("Log file '" + name + "': " + failure.what());
}

}  // namespace

Sink StandardErrorSink() {
  return MakeSink([] { return std::make_unique<spdlog::sinks::stderr_color_sink_mt>(); });
}

Sink RotatingFileSink(const char* path, std::size_t maximumBytes, std::size_t files) {
  const std::string name = path != nullptr ? path : "";
  try {
    return MakeSink([file = AbsolutePath(name), maximumBytes, files] {
      return std::make_unique<spdlog::sinks::rotating_file_sink_st>(file, maximumBytes, files);
    });
  } catch (const spdlog::spdlog_ex& failure) {
    RaiseForFile(name, failure);
  } catch (const std::filesystem::filesystem_error& failure) {
    RaiseForFile(name, failure);
  }
}

}  // namespace Logging
