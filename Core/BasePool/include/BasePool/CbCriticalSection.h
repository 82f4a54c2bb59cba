#pragma once

#include "Platform/CriticalSection.h"

/// The base library's recursive lock: the owning thread may lock it again, and unlocks it as often as it locked it.
class CbCriticalSection {
 public:
  void Lock() { m_section.Enter(); }
  bool TryLock() { return m_section.TryEnter(); }
  void Unlock() { m_section.Leave(); }

 private:
  Platform::CriticalSection m_section;
};

/// Holds a critical section for the life of a scope.
class CbLock {
 public:
  explicit CbLock(CbCriticalSection& section) : m_section(section) { m_section.Lock(); }
  ~CbLock() { m_section.Unlock(); }
  CbLock(const CbLock&) = delete;
  CbLock& operator=(const CbLock&) = delete;

 private:
  CbCriticalSection& m_section;
};
