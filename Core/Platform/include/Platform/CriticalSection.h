#pragma once

#include <cstddef>

namespace Platform {

/// The system's recursive lock: its owner may enter it again and leaves it as often as it entered.
class CriticalSection {
 public:
  CriticalSection();
  ~CriticalSection();
  CriticalSection(const CriticalSection&) = delete;
  CriticalSection& operator=(const CriticalSection&) = delete;

  void Enter();
  bool TryEnter();  ///< returns false, without waiting, when another thread is inside
  void Leave();

 private:
  static constexpr std::size_t kSystemLockSize = 48;  // holds the largest of the systems' own records
  alignas(std::max_align_t) std::byte m_lock[kSystemLockSize];
};

}  // namespace Platform
