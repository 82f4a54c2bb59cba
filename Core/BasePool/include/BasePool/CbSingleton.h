#pragma once

#include <atomic>

#include "BasePool/CbCriticalSection.h"

/// What all singletons of a module share: the lock that their creation runs under.
class CbSingletonRegistry {
 public:
  /// Made on first use. Its destruction is arranged before that of any singleton, so it comes after all of them.
  static CbCriticalSection& Lock();
};

/// Gives `T`, which derives from it, one instance per module: made on first use, destroyed when the module is unloaded,
/// in reverse order of first use and before the static objects that were made when the module was loaded.
/// Thread: `Instance` may be called from any thread until the unload begins.
template <class T>
class CbSingleton {
 public:
  static T& Instance() {
    T* instance = s_instance.load(std::memory_order_acquire);
    return instance != nullptr ? *instance : Create();
  }

 protected:
  CbSingleton() = default;
  ~CbSingleton() = default;

 private:
  // Goes on the module's exit list when a request first passes it, before the instance is made.
  struct SDestroyer {
    ~SDestroyer() { delete s_instance.exchange(nullptr); }
  };

  // Runs under the lock, which is recursive: the constructor of one singleton may ask for another. When it throws, the
  // next request tries again.
  static T& Create() {
    const CbLock lock(CbSingletonRegistry::Lock());
    static SDestroyer destroyer;
    if (s_instance.load(std::memory_order_relaxed) == nullptr) {
      s_instance.store(new T, std::memory_order_release);
    }
    return *s_instance.load(std::memory_order_relaxed);
  }

  inline static std::atomic<T*> s_instance{nullptr};
};
