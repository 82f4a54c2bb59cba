#pragma once

#include <Zorbel/IType.h>

namespace Zorbel {

/// The type of references: to beans, to services and to nothing.
class ObjectType : public IType {
 public:
  /// True for exactly the kinds of arguments that are references.
  static bool IsReference(const char* typeName);

  /// The bean or service is resolved now, once. Empty when it yields no object. Throws: as `CServicePointer`.
  std::shared_ptr<IValuePointer> CreateValuePointer(IBeanFactory* factory, const char* typeName, const wchar_t* value,
                                                    const SLibrary* library) override;
};

}  // namespace Zorbel
