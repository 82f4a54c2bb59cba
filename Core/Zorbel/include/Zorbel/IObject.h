#pragma once

#include <Zorbel/Export.h>

namespace Zorbel {

/// The base of every object that the container creates, hands out or takes as a service.
/// Ownership: objects travel as `std::shared_ptr<IObject>`; the last holder destroys the object, on its own thread.
class ZORBEL_INTERFACE IObject {
 public:
  IObject() = default;
  IObject(const IObject&) = default;
  IObject& operator=(const IObject&) = default;
  virtual ~IObject() = default;
};

}  // namespace Zorbel
