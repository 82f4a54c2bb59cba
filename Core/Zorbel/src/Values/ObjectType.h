#pragma once

#include <Zorbel/IType.h>

namespace Zorbel {

/// The type of references: to beans, to services and to nothing.
class ObjectType : public IType {
 public:
  static constexpr const char* kBean = "bean";
  static constexpr const char* kService = "service";
  static constexpr const char* kNull = "nullptr";

  /// True for exactly the three names above.
  static bool IsReference(const char* typeName);

  /// The bean or service is resolved now, once. Empty when it yields no object. Throws: as `CServicePointer`.
  std::shared_ptr<IValuePointer> CreateValuePointer(IBeanFactory* factory, const char* typeName, const wchar_t* value,
                                                    const SLibrary* library) override;
};

}  // namespace Zorbel
