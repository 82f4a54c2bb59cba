#pragma once

#include <functional>

#include <Zorbel/Export.h>
#include <Zorbel/IObject.h>

namespace Zorbel {

/// One registered implementation of a service. Configure it right after registering, before it is first asked for.
/// Thread: the singleton flag and the release function may be read and set on any thread.
class ZORBEL_INTERFACE ITypeRegistration {
 public:
  ITypeRegistration() = default;
  ITypeRegistration(const ITypeRegistration&) = delete;
  ITypeRegistration& operator=(const ITypeRegistration&) = delete;
  virtual ~ITypeRegistration() = default;

  /// Makes the first instance produced, null apart, the only one; it is kept until the registration goes. Cannot be
  /// undone.
  virtual void SetSingleton() = 0;

  virtual bool IsSingleton() const = 0;

  /// Sets what is called with each instance produced from now on, just before that instance is destroyed; an empty
  /// function clears it. Only instances from a maker that gives ownership away have it called. Release functions of
  /// different threads run one after the other; while one waits for a factory, that factory's user may run others.
  virtual void SetReleaseFunction(std::function<void(const IObject*)> function) = 0;

  /// Returns a copy of the release function; empty when there is none.
  virtual std::function<void(const IObject*)> GetReleaseFunction() const = 0;
};

}  // namespace Zorbel
