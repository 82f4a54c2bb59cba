#pragma once

#include <Zorbel/CStringT.h>
#include <Zorbel/IType.h>

#include <memory>

#include "BasePool/CbMap.h"

namespace Zorbel {

/// A factory's types by name. Thread: only read once its object type is set.
class CTypeManager {
 public:
  /// Knows the basic types.
  CTypeManager();

  /// Takes the type of references.
  void SetObjectType(std::unique_ptr<IType> objectType) { m_objectType = std::move(objectType); }

  /// Returns the type of a configured name; spaces in it do not count. Ownership: the type manager's.
  /// Throws: `CException` when there is none.
  IType* FindTypeBean(const char* typeName) const;

 private:
  template <class T, auto conversion>
  void Add(const char* name);
  void AddIntegers();
  void AddOthers();

  CbMap<CStringT<char>, std::unique_ptr<IType>> m_types;
  std::unique_ptr<IType> m_objectType;
};

}  // namespace Zorbel
