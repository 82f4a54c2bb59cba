#pragma once

#include <Zorbel/IBeanFactory.h>
#include <Zorbel/IValuePointer.h>

#include <cstddef>
#include <memory>
#include <typeinfo>
#include <vector>

#include "Document/SBeanDescription.h"
#include "Threads/CCallValues.h"

namespace Zorbel {

class CTypeManager;

/// The values of configured arguments, in the form that wrappers take them. The values live as long as the list.
class CArgumentList : public Internal::CCallValues {
 public:
  /// Makes one value source per argument. Throws: what finding types and making values throws.
  CArgumentList(const std::vector<SArgumentDescription>& arguments, IBeanFactory* factory,
                const CTypeManager& typeManager, const SLibrary* library);

  /// A single value.
  explicit CArgumentList(std::shared_ptr<IValuePointer> source);

  ~CArgumentList() override { Withdraw(); }
  CArgumentList(const CArgumentList&) = delete;
  CArgumentList& operator=(const CArgumentList&) = delete;

 private:
  const std::type_info* TypeOf(std::size_t position) const override;

  std::vector<std::shared_ptr<IValuePointer>> m_sources;
};

}  // namespace Zorbel
