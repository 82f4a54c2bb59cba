#include "LiveInstances.h"

#include <string>

#include "BasePool/CbCriticalSection.h"
#include "BasePool/CbMap.h"

namespace Zorbel {
namespace Internal::LiveInstances {
namespace {

CbCriticalSection section;
CbMap<std::string, SBeanStatistics> statistics;
CbMap<const void*, const char*> names;  // the texts are the keys of the statistics, which stay where they are

void DropInstance(const char* beanName) {
  SBeanStatistics* numbers = statistics.Lookup(beanName);
  if (--numbers->liveInstances == 0) {
    statistics.RemoveKey(beanName);
  }
}

}  // namespace

void Register(const IObject* object, std::string_view beanName) {
  const CbLock lock(section);
  const char*& name = names.SetAt(object).value;
  try {
    auto& entry = statistics.SetAt(beanName);
    ++entry.value.liveInstances;
    ++entry.value.createdInstances;
    name = entry.key.c_str();
  } catch (...) {
    names.RemoveKey(object);
    throw;
  }
}

void Unregister(const IObject* object) noexcept {
  const CbLock lock(section);
  if (const char* const* found = names.Lookup(object)) {
    const char* name = *found;
    names.RemoveKey(object);
    DropInstance(name);
  }
}

std::optional<SBeanStatistics> Find(std::string_view beanName) {
  const CbLock lock(section);
  const SBeanStatistics* found = statistics.Lookup(beanName);
  return found != nullptr ? std::optional(*found) : std::nullopt;
}

}  // namespace Internal::LiveInstances

void SDeleter::operator()(IObject* object) const noexcept {
  Internal::LiveInstances::Unregister(object);
  delete object;
}

}  // namespace Zorbel
