#pragma once

#include <Logging/Logging.h>

#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace Test {

/// Collects the lines of the log while it lives, in place of the default sink. Thread: lines may come from any.
class LogCapture {
 public:
  explicit LogCapture(int level = Logging::kLevelWarning);
  ~LogCapture();
  LogCapture(const LogCapture&) = delete;
  LogCapture& operator=(const LogCapture&) = delete;

  std::vector<Logging::SRecord> Records() const;

  /// The texts of the lines of one level, in order.
  std::vector<std::wstring> Texts(int level) const;
  std::vector<std::wstring> Warnings() const { return Texts(Logging::kLevelWarning); }
  std::vector<std::wstring> Errors() const { return Texts(Logging::kLevelError); }
  void Clear();

 private:
  struct SLines {
    std::mutex mutex;
    std::vector<Logging::SRecord> records;
  };
  std::shared_ptr<SLines> m_lines = std::make_shared<SLines>();
};

}  // namespace Test
