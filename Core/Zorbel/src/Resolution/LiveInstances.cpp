#include "Resolution/LiveInstances.h"

#include <string>

#include "BasePool/CbCriticalSection.h"
#include "BasePool/CbMap.h"
#include "BasePool/CbNeverDestroyed.h"

namespace Zorbel {
namespace Internal::LiveInstances {
namespace {

struct SRegistry {
  CbCriticalSection section;  // guards the members behind
  CbMap<std::string, SBeanStatistics> statistics;
  CbMap<const void*, const char*> names;  // the texts are the keys of the statistics, which stay where they are

  void DropInstance(const char* beanName) {
    SBeanStatistics* numbers = statistics.Lookup(beanName);
    if (--numbers->liveInstances == 0) {
      statistics.RemoveKey(beanName);
    }
  }
};

// Objects may outlive every static object of the library.
SRegistry& Registry() {
  static const CbNeverDestroyed<SRegistry> registry;
  return *registry;
}

}  // namespace

void Register(const IObject* object, std::string_view beanName) {
  SRegistry& registry = Registry();
  const CbLock lock(registry.section);
  const char*& name = registry.names.SetAt(object).value;
  try {
    auto& entry = registry.statistics.SetAt(beanName);
    ++entry.value.liveInstances;
    ++entry.value.createdInstances;
    name = entry.key.c_str();
  } catch (...) {
    registry.names.RemoveKey(object);
    throw;
  }
}

void Unregister(const IObject* object) noexcept {
  SRegistry& registry = Registry();
  const CbLock lock(registry.section);
  if (const char* const* found = registry.names.Lookup(object)) {
    const char* name = *found;
    registry.names.RemoveKey(object);
    registry.DropInstance(name);
  }
}

std::optional<SBeanStatistics> Find(std::string_view beanName) {
  SRegistry& registry = Registry();
  const CbLock lock(registry.section);
  const SBeanStatistics* found = registry.statistics.Lookup(beanName);
  return found != nullptr ? std::optional(*found) : std::nullopt;
}

}  // namespace Internal::LiveInstances

void SDeleter::operator()(IObject* object) const noexcept {
  Internal::LiveInstances::Unregister(object);
  delete object;
}

}  // namespace Zorbel
