#include "Support/LogCapture.h"

namespace Test {

LogCapture::LogCapture(int level) {
  Logging::SetLevel(level);
  Logging::SetSink([lines = m_lines](const Logging::SRecord& record) {
    const std::lock_guard lock(lines->mutex);
    lines->records.push_back(record);
  });
}

LogCapture::~LogCapture() {
  Logging::SetSink({});
  Logging::SetLevel(Logging::kDefaultLevel);
}

std::vector<Logging::SRecord> LogCapture::Records() const {
  const std::lock_guard lock(m_lines->mutex);
  return m_lines->records;
}

std::vector<std::wstring> LogCapture::Texts(int level) const {
  std::vector<std::wstring> texts;
  for (const Logging::SRecord& record : Records()) {
    if (record.level == level) {
      texts.push_back(record.text);
    }
  }
  return texts;
}

void LogCapture::Clear() {
  const std::lock_guard lock(m_lines->mutex);
  m_lines->records.clear();
}

}  // namespace Test
