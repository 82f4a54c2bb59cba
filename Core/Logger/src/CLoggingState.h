#pragma once

#include <atomic>
#include <cstddef>
#include <list>
#include <memory>
#include <memory_resource>
#include <mutex>
#include <string>
#include <string_view>

#include <Logging/Logging.h>

namespace Logging {

struct SChannel {
  using allocator_type = std::pmr::polymorphic_allocator<>;

  SChannel(std::wstring_view channel, int lowest, const allocator_type& allocator)
      : name(channel, allocator), level(lowest) {}

  const std::pmr::wstring name;
  std::atomic<int> level;
};

/// The channels and the sink of the process. Never destroyed, since threads and other libraries' static objects log
/// while the process ends. No sink runs or is destroyed under the lock.
class CLoggingState {
 public:
  static CLoggingState& Get();

  /// Returns the channel of that name; its address is constant.
  SChannel& GetChannel(const wchar_t* name);

  void SetLevel(int level);
  void SetLevel(const wchar_t* channel, int level);

  void SetSink(Sink sink);
  std::shared_ptr<const Sink> GetSink();

  /// Frees the default sink, which is made again where it is needed.
  void ReleaseDefaultSink();

 private:
  SChannel& FindOrAdd(const wchar_t* channel);

  // Room for some forty channels inside the object: a process may load and unload this library without a leak.
  static constexpr std::size_t kOwnMemory = 4096;

  std::mutex m_mutex;
  alignas(std::max_align_t) unsigned char m_ownMemory[kOwnMemory];
  std::pmr::monotonic_buffer_resource m_memory{m_ownMemory, kOwnMemory};
  std::pmr::list<SChannel> m_channels{&m_memory};
  int m_defaultLevel = kDefaultLevel;
  std::shared_ptr<const Sink> m_hostSink;
  std::shared_ptr<const Sink> m_defaultSink;
};

}  // namespace Logging
