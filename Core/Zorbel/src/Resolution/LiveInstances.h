#pragma once

#include <Zorbel/IObject.h>

#include <cstdint>
#include <optional>
#include <string_view>

namespace Zorbel {
namespace Internal {

struct SBeanStatistics {
  std::uint64_t liveInstances = 0;
  std::uint64_t createdInstances = 0;  ///< since there was none
};

/// The process-wide registry of live instances. Thread: safe; no code of plug-ins runs under its lock.
namespace LiveInstances {

/// Throws: `CbExceptionContainer` or std::bad_alloc, with nothing registered.
void Register(const IObject* object, std::string_view beanName);

/// Forgets an object; one that is not registered is no error.
void Unregister(const IObject* object) noexcept;

/// Returns a bean's numbers; nothing when none of its instances live.
std::optional<SBeanStatistics> Find(std::string_view beanName);

}  // namespace LiveInstances
}  // namespace Internal

/// Releases the objects that factories made.
struct SDeleter {
  void operator()(IObject* object) const noexcept;
};

}  // namespace Zorbel
