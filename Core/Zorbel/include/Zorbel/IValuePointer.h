#pragma once

#include <Zorbel/Export.h>

namespace Zorbel {

/// Holds one argument value while a wrapper reads it.
/// Thread: made, read and released on the thread that resolves the bean.
class ZORBEL_INTERFACE IValuePointer {
 public:
  IValuePointer() = default;
  IValuePointer(const IValuePointer&) = delete;
  IValuePointer& operator=(const IValuePointer&) = delete;
  virtual ~IValuePointer() = default;

  /// Returns the address of the value, or null when there is none. What it points at follows from the configured type
  /// name: the basic type's value, or a `std::shared_ptr<IObject>` for "bean", "service" and "nullptr".
  /// Ownership: the value belongs to this object and lives as long as it.
  virtual void* GetValue() = 0;
};

}  // namespace Zorbel
