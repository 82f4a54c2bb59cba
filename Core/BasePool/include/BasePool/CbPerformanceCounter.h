#pragma once

#include <cstdint>

#include "BasePool/CbSingleton.h"

/// The process's tick source. Thread: immutable, read from any thread.
class CbPerformanceCounter : public CbSingleton<CbPerformanceCounter> {
 public:
  using TickSource = std::uint64_t (*)();

  /// The system's fine counter, or milliseconds since the system started where there is none.
  CbPerformanceCounter();

  /// A counter of the caller's own; `frequency` is in ticks per second.
  CbPerformanceCounter(TickSource source, std::uint64_t frequency) : m_source(source), m_frequency(frequency) {}

  std::uint64_t GetTicks() const { return m_source(); }
  std::uint64_t GetFrequency() const { return m_frequency; }

 private:
  TickSource m_source;
  std::uint64_t m_frequency;
};
