#pragma once

#include <cstddef>
#include <typeinfo>
#include <vector>

#include <Zorbel/Export.h>
#include <Zorbel/ILibrary.h>

namespace Zorbel {

/// Tells what the untyped values are that the container passes to a wrapper. The local library implements it.
/// Thread: any; each call is about the calls on its own thread.
class ZORBEL_INTERFACE ICallArguments {
 public:
  ICallArguments() = default;
  ICallArguments(const ICallArguments&) = delete;
  ICallArguments& operator=(const ICallArguments&) = delete;
  virtual ~ICallArguments() = default;

  /// Returns the type of what the value at `position` points to: that of a literal, `std::shared_ptr<IObject>` for a
  /// reference, also for one without an object, `std::nullptr_t` for an explicit null. Null when the container is not
  /// in a call with these very arguments.
  virtual const std::type_info* GetType(const std::vector<void*>& arguments, std::size_t position) const = 0;
};

/// Returns what tells the types of arguments; null when the library does not.
ZORBEL_LOCAL inline const ICallArguments* CallArguments() {
  static const auto* const known = dynamic_cast<const ICallArguments*>(&GetLocalLibrary());
  return known;
}

}  // namespace Zorbel
