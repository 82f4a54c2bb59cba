#include "BasePool/CbSingleton.h"

CbCriticalSection& CbSingletonRegistry::Lock() {
  static CbCriticalSection lock;
  return lock;
}
