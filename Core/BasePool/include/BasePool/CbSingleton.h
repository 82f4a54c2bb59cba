#pragma once

#include <atomic>

#include "BasePool/CbCriticalSection.h"

/// What all singletons of a module share: the lock that their creation runs under, and the list of those that end with
/// the module.
class CbSingletonRegistry {
 public:
  /// An entry of the list, in static storage.
  struct SDestroyer {
    void (*destroy)();
    SDestroyer* next = nullptr;
    bool arranged = false;
  };

  /// Stays to the end of the process.
  static CbCriticalSection& Lock();

  /// Has the singleton destroyed at the module's end, before those that were arranged earlier; once, however often it
  /// is called. Requires: the lock.
  static void Arrange(SDestroyer& destroyer);
};

/// Gives `T`, which derives from it, one instance per module: made on first use, destroyed when the module is unloaded,
/// in reverse order of first use and before the static objects that were made when the module was loaded. The instances
/// of a module that is never unloaded stay to the end of the process.
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
  static void Destroy() { delete s_instance.exchange(nullptr); }

  // Runs under the lock, which is recursive: the constructor of one singleton may ask for another. When it throws, the
  // next request tries again.
  static T& Create() {
    const CbLock lock(CbSingletonRegistry::Lock());
    CbSingletonRegistry::Arrange(s_destroyer);
    if (s_instance.load(std::memory_order_relaxed) == nullptr) {
      s_instance.store(new T, std::memory_order_release);
    }
    return *s_instance.load(std::memory_order_relaxed);
  }

  inline static std::atomic<T*> s_instance{nullptr};
  inline static CbSingletonRegistry::SDestroyer s_destroyer{&Destroy};
};
