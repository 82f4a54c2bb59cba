#pragma once

#include <cstddef>
#include <new>
#include <utility>

/// Holds an object of static storage that stays to the very end of the process: other threads, and the static objects
/// of other modules, may use it while the process ends.
template <class T>
class CbNeverDestroyed {
 public:
  template <class... Args>
  explicit CbNeverDestroyed(Args&&... arguments) : m_object(new (m_storage) T(std::forward<Args>(arguments)...)) {}
  CbNeverDestroyed(const CbNeverDestroyed&) = delete;
  CbNeverDestroyed& operator=(const CbNeverDestroyed&) = delete;

  T& operator*() const { return *m_object; }
  T* operator->() const { return m_object; }

 private:
  alignas(T) std::byte m_storage[sizeof(T)];
  T* m_object;
};
