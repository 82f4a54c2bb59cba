#pragma once

#include <Zorbel/IBeanFactory.h>
#include <Zorbel/IValuePointer.h>

#include <memory>
#include <vector>

#include "SBeanDescription.h"

namespace Zorbel {

class CTypeManager;

/// The values of configured arguments, in the form that wrappers take them. The values live as long as the list.
class CArgumentList {
 public:
  /// Makes one value source per argument. Throws: what finding types and making values throws.
  CArgumentList(const std::vector<SArgumentDescription>& arguments, IBeanFactory* factory,
                const CTypeManager& typeManager, const SLibrary* library);

  std::size_t GetCount() const { return m_values.size(); }

  /// Null when there are no arguments.
  const std::vector<void*>* GetValues() const { return m_values.empty() ? nullptr : &m_values; }

 private:
  std::vector<std::shared_ptr<IValuePointer>> m_sources;
  std::vector<void*> m_values;
};

}  // namespace Zorbel
