#include "BasePool/CbStopWatch.h"

#include <limits>

namespace {

__extension__ using UInt128 = unsigned __int128;  // wide enough for any span in any unit

std::uint64_t Scale(std::uint64_t ticks, int unit, std::uint64_t frequency) {
  constexpr std::uint64_t kLargest = std::numeric_limits<std::uint64_t>::max();
  const UInt128 value = UInt128{ticks} * static_cast<std::uint64_t>(unit) / frequency;
  return value > kLargest ? kLargest : static_cast<std::uint64_t>(value);
}

const wchar_t* UnitSign(int unit) {
  switch (unit) {
    case 1: return L"s";
    case 1'000: return L"ms";
    case 1'000'000: return L"\u00B5s";
    case 1'000'000'000: return L"ns";
    default: return L"";
  }
}

}  // namespace

std::wstring FormatGrouped(std::uint64_t value, int unit) {
  constexpr std::size_t kGroup = 3;
  std::wstring text = std::to_wstring(value);
  for (std::size_t position = text.size(); position > kGroup;) {
    position -= kGroup;
    text.insert(position, 1, L'\'');
  }
  return text + UnitSign(unit);
}

CbStopWatch::CbStopWatch(int unit, const CbPerformanceCounter& counter) : m_counter(&counter), m_unit(unit) {}

void CbStopWatch::Start() {
  if (!m_running) {
    m_start = m_counter->GetTicks();
    m_running = true;
  }
}

void CbStopWatch::Stop() {
  if (m_running) {
    m_accumulated += m_counter->GetTicks() - m_start;
    m_running = false;
  }
}

std::wstring CbStopWatch::GetElapsedText() const {
  const std::uint64_t ticks = m_accumulated + (m_running ? m_counter->GetTicks() - m_start : 0);
  return FormatGrouped(Scale(ticks, m_unit, m_counter->GetFrequency()), m_unit);
}
