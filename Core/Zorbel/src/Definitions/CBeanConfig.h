#pragma once

#include <Zorbel/IBeanWrapper.h>

#include <memory>
#include <vector>

#include "Definitions/CBeanProperty.h"
#include "Document/SBeanDescription.h"
#include "Document/SLibrary.h"

namespace Zorbel {

using WrapperMaker = IBeanWrapper* (*)();

/// A bean definition: the description of a bean with its class's wrapper, checked against it.
/// Thread: only read once built. Ownership: description and library are the registry's, which keeps them where they
/// are.
class CBeanConfig {
 public:
  /// Calls the maker. Throws: `CException` when a property's value lacks a parameter type (std::range_error when the
  /// property's name is no UTF-8), or when there are properties but no wrapper; what the maker and the wrapper throw.
  CBeanConfig(const SBeanDescription& description, WrapperMaker maker, const SLibrary* library);
  CBeanConfig(const CBeanConfig&) = delete;
  CBeanConfig& operator=(const CBeanConfig&) = delete;

  const SBeanDescription& GetDescription() const { return *m_description; }
  const std::vector<CBeanProperty::Owner>& GetProperties() const { return m_properties; }
  const SLibrary* GetLibrary() const { return m_library; }

  /// Returns the wrapper; when the maker returned none, what it returns now, which is not kept.
  std::shared_ptr<IBeanWrapper> GetWrapper() const;

 private:
  void CheckParameterTypes(const SPropertyDescription& property) const;

  const SBeanDescription* m_description;
  std::shared_ptr<IBeanWrapper> m_wrapper;
  WrapperMaker m_maker;
  std::vector<CBeanProperty::Owner> m_properties;
  const SLibrary* m_library;
};

}  // namespace Zorbel
