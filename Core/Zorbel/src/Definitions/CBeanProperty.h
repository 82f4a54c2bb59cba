#pragma once

#include <Zorbel/IBeanFactory.h>
#include <Zorbel/IBeanWrapper.h>

#include <memory>
#include <vector>

#include "BasePool/CbTypeName.h"
#include "Document/SBeanDescription.h"

namespace Zorbel {

class CTypeManager;

/// One property of a bean definition. All of the process live in one pool.
class CBeanProperty {
 public:
  struct SReturnToPool {
    void operator()(CBeanProperty* property) const noexcept;
  };
  using Owner = std::unique_ptr<CBeanProperty, SReturnToPool>;

  /// Takes a property from the pool. Throws: `CbExceptionContainer` when the pool cannot grow,
  /// std::bad_alloc.
  static Owner Make(const SPropertyDescription& description);

  CBeanProperty(const CBeanProperty&) = delete;
  CBeanProperty& operator=(const CBeanProperty&) = delete;

  const CStringT<char>& GetName() const { return m_name; }

  /// Calls the property's method on `object`, with values made for this call. Returns the wrapper's answer.
  /// Throws: what making the values and the wrapper throw.
  bool Apply(IBeanFactory* factory, IObject* object, const IBeanWrapper* wrapper, const CTypeManager* typeManager,
             const SLibrary* library) const;

 private:
  explicit CBeanProperty(const SPropertyDescription& description)
      : m_name(description.name), m_arguments(description.arguments) {}
  ~CBeanProperty() = default;

  CStringT<char> m_name;
  std::vector<SArgumentDescription> m_arguments;
};

}  // namespace Zorbel

template <>
struct CbTypeName<Zorbel::CBeanProperty> {
  static std::string Get() { return "class Zorbel::CBeanProperty"; }
};
