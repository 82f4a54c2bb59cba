#include <spdlog/sinks/rotating_file_sink.h>
#include <spdlog/sinks/stdout_color_sinks.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>
#include <utility>

#include <Logging/Logging.h>

#include "Platform/Utf8.h"

namespace Logging {
namespace {

constexpr const char* kPattern = "%Y-%m-%d %H:%M:%S.%e %^%-7l%$ [%t] %n: %v";

using Target = std::unique_ptr<spdlog::sinks::sink>;

std::string Origin(const SRecord& record) {
  if (record.function.empty() && record.file.empty()) {
    return {};
  }
  const std::string place = record.file.empty() ? "" : record.file + ":" + std::to_string(record.line);
  return " (" + record.function + (record.function.empty() || place.empty() ? "" : ", ") + place + ")";
}

spdlog::level::level_enum Level(int level) {
  return static_cast<spdlog::level::level_enum>(std::clamp(level, kLevelTrace, kLevelOff));
}

class CLineWriter {
 public:
  explicit CLineWriter(std::function<Target()> open) : m_open(std::move(open)), m_target(Open()) {}

  void Write(const SRecord& record) {
    const std::string channel = Platform::WideToUtf8(record.channel);
    const std::string text = Platform::WideToUtf8(record.text) + Origin(record);
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

spdlog::filename_t NativePath(const char* path) {
  return std::filesystem::path(reinterpret_cast<const char8_t*>(path)).native();
}

}  // namespace

Sink StandardErrorSink() {
  return MakeSink([] { return std::make_unique<spdlog::sinks::stderr_color_sink_mt>(); });
}

Sink RotatingFileSink(const char* path, std::size_t maximumBytes, std::size_t files) {
  const std::string name = path != nullptr ? path : "";
  try {
    return MakeSink([file = NativePath(name.c_str()), maximumBytes, files] {
      return std::make_unique<spdlog::sinks::rotating_file_sink_st>(file, maximumBytes, files);
    });
  } catch (const spdlog::spdlog_ex& failure) {
    throw std::runtime_error("Log file '" + name + "': " + failure.what());
  }
}

}  // namespace Logging
