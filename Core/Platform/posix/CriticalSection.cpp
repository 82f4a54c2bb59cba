#include "Platform/CriticalSection.h"

#include <pthread.h>

#include <new>
#include <system_error>

namespace Platform {
namespace {

pthread_mutex_t* Mutex(std::byte* storage) { return std::launder(reinterpret_cast<pthread_mutex_t*>(storage)); }

void InitialiseRecursive(pthread_mutex_t* mutex) {
  pthread_mutexattr_t attributes;
  pthread_mutexattr_init(&attributes);
  pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
  const int error = pthread_mutex_init(mutex, &attributes);
  pthread_mutexattr_destroy(&attributes);
  if (error != 0) {
    throw std::system_error(error, std::generic_category());
  }
}

}  // namespace

CriticalSection::CriticalSection() {
  static_assert(sizeof(pthread_mutex_t) <= kSystemLockSize);
  InitialiseRecursive(new (m_lock) pthread_mutex_t);
}

CriticalSection::~CriticalSection() { pthread_mutex_destroy(Mutex(m_lock)); }

void CriticalSection::Enter() {
  if (const int error = pthread_mutex_lock(Mutex(m_lock)); error != 0) {
    throw std::system_error(error, std::generic_category());
  }
}

bool CriticalSection::TryEnter() { return pthread_mutex_trylock(Mutex(m_lock)) == 0; }

void CriticalSection::Leave() { pthread_mutex_unlock(Mutex(m_lock)); }

}  // namespace Platform
