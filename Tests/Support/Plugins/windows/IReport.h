#pragma once

#include <Zorbel/IObject.h>

#include <string>

namespace order {

/// What a plug-in that uses the system's header tells of itself.
struct IReport : Zorbel::IObject {
  static constexpr const char* kTypeId = "order.IReport";
  virtual std::wstring Report() const = 0;
};

}  // namespace order
