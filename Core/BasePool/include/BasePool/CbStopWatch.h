#pragma once

#include <cstdint>
#include <string>

#include "BasePool/CbPerformanceCounter.h"

/// Returns `value` in decimal with an apostrophe between groups of three digits, and the sign of its unit: s for 1, ms
/// for 1000, µs for 1000000, ns for 1000000000, nothing for another.
std::wstring FormatGrouped(std::uint64_t value, int unit);

/// Adds up the time between its starts and stops. Thread: belongs to one thread at a time.
class CbStopWatch {
 public:
  /// `unit` is the number of parts of a second that results are given in.
  explicit CbStopWatch(int unit, const CbPerformanceCounter& counter = CbPerformanceCounter::Instance());

  void Start();  ///< ignored while running
  void Stop();   ///< ignored while stopped

  /// Returns the time measured so far, the running span included.
  std::wstring GetElapsedText() const;

 private:
  const CbPerformanceCounter* m_counter;
  int m_unit;
  bool m_running = false;
  std::uint64_t m_start = 0;
  std::uint64_t m_accumulated = 0;
};
