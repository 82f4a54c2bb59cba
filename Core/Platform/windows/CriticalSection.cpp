#include "Platform/CriticalSection.h"

#include <new>

#include "WindowsApi.h"

namespace Platform {
namespace {

CRITICAL_SECTION* Section(std::byte* storage) { return std::launder(reinterpret_cast<CRITICAL_SECTION*>(storage)); }

}  // namespace

CriticalSection::CriticalSection() {
  static_assert(sizeof(CRITICAL_SECTION) <= kSystemLockSize);
  InitializeCriticalSection(new (m_lock) CRITICAL_SECTION);
}

CriticalSection::~CriticalSection() { DeleteCriticalSection(Section(m_lock)); }

void CriticalSection::Enter() { EnterCriticalSection(Section(m_lock)); }

bool CriticalSection::TryEnter() { return TryEnterCriticalSection(Section(m_lock)) != FALSE; }

void CriticalSection::Leave() { LeaveCriticalSection(Section(m_lock)); }

}  // namespace Platform
