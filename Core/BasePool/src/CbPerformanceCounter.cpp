#include "BasePool/CbPerformanceCounter.h"

#include "Platform/Clock.h"

CbPerformanceCounter::CbPerformanceCounter() : m_source(&Platform::FineTicks), m_frequency(0) {
  constexpr std::uint64_t kMillisecondsPerSecond = 1000;
  if (!Platform::GetFineFrequency(m_frequency)) {
    m_source = &Platform::MillisecondTicks;
    m_frequency = kMillisecondsPerSecond;
  }
}
