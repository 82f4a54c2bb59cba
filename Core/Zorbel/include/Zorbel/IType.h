#pragma once

#include <memory>

#include <Zorbel/Export.h>
#include <Zorbel/IValuePointer.h>

namespace Zorbel {

class IBeanFactory;
struct SLibrary;

/// Turns configured texts into values of one type. Thread: stateless.
class ZORBEL_INTERFACE IType {
 public:
  IType() = default;
  IType(const IType&) = delete;
  IType& operator=(const IType&) = delete;
  virtual ~IType() = default;

  /// Returns the value of the text `value`, for a bean of `library` that `factory` builds; `typeName` is the type name
  /// as configured. Empty when a reference yields no object.
  /// Throws: `CException` when the text is no value of the type, or a service's interface has no type id; what the
  /// service's maker throws.
  virtual std::shared_ptr<IValuePointer> CreateValuePointer(IBeanFactory* factory, const char* typeName,
                                                            const wchar_t* value, const SLibrary* library) = 0;
};

}  // namespace Zorbel
