#pragma once

#include <Zorbel/IType.h>

#include "Values/ObjectType.h"

namespace Zorbel {

/// A factory's types by name. Thread: any; types have no state.
class CTypeManager {
 public:
  /// Returns the type of a configured name; spaces in it do not count. Ownership: the type manager's.
  /// Throws: when there is none, `CException`, or std::range_error when the name is no UTF-8.
  IType* FindTypeBean(const char* typeName) const;

 private:
  mutable ObjectType m_objectType;  // of references
};

}  // namespace Zorbel
