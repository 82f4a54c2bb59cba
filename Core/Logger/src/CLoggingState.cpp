#include "CLoggingState.h"

#include <algorithm>
#include <new>
#include <utility>

namespace Logging {
namespace {

// For the process that unloads this library.
struct SRelease {
  ~SRelease() { CLoggingState::Get().ReleaseDefaultSink(); }
};

const SRelease release;

}  // namespace

CLoggingState& CLoggingState::Get() {
  alignas(CLoggingState) static unsigned char storage[sizeof(CLoggingState)];
  static CLoggingState& state = *new (storage) CLoggingState;
  return state;
}

SChannel& CLoggingState::GetChannel(const wchar_t* name) {
  const std::lock_guard lock(m_mutex);
  return FindOrAdd(name);
}

void CLoggingState::SetLevel(int level) {
  const std::lock_guard lock(m_mutex);
  m_defaultLevel = level;
  for (SChannel& channel : m_channels) {
    channel.level = level;
  }
}

void CLoggingState::SetLevel(const wchar_t* channel, int level) {
  const std::lock_guard lock(m_mutex);
  FindOrAdd(channel).level = level;
}

void CLoggingState::SetSink(Sink sink) {
  // Declared before the lock, so that the sink that was replaced is destroyed after it.
  std::shared_ptr<const Sink> replaced = sink ? std::make_shared<const Sink>(std::move(sink)) : nullptr;
  const std::lock_guard lock(m_mutex);
  m_hostSink.swap(replaced);
}

std::shared_ptr<const Sink> CLoggingState::GetSink() {
  const std::lock_guard lock(m_mutex);
  if (m_hostSink) {
    return m_hostSink;
  }
  if (!m_defaultSink) {
    m_defaultSink = std::make_shared<const Sink>(StandardErrorSink());
  }
  return m_defaultSink;
}

void CLoggingState::ReleaseDefaultSink() {
  // A thread that the ending process stopped short may hold the lock for ever.
  const std::unique_lock lock(m_mutex, std::try_to_lock);
  if (lock) {
    m_defaultSink.reset();
  }
}

SChannel& CLoggingState::FindOrAdd(const wchar_t* channel) {
  const std::wstring_view name = channel != nullptr ? channel : L"";
  const auto found = std::ranges::find(m_channels, name, &SChannel::name);
  return found != m_channels.end() ? *found : m_channels.emplace_back(name, m_defaultLevel);
}

}  // namespace Logging
