#pragma once

#include <Zorbel/IBeanFactory.h>
#include <Zorbel/IValuePointer.h>

#include <cstddef>
#include <memory>
#include <typeinfo>
#include <vector>

#include "SBeanDescription.h"

namespace Zorbel {

class CTypeManager;

/// The values of configured arguments, in the form that wrappers take them. The values live as long as the list.
/// While it lives, wrappers may ask what its values are. Lists end in the reverse order in which they began.
class CArgumentList {
 public:
  /// Makes one value source per argument. Throws: what finding types and making values throws.
  CArgumentList(const std::vector<SArgumentDescription>& arguments, IBeanFactory* factory,
                const CTypeManager& typeManager, const SLibrary* library);

  /// A single value.
  explicit CArgumentList(std::shared_ptr<IValuePointer> source);

  ~CArgumentList();
  CArgumentList(const CArgumentList&) = delete;
  CArgumentList& operator=(const CArgumentList&) = delete;

  std::size_t GetCount() const { return m_values.size(); }

  /// Null when there are no arguments.
  const std::vector<void*>* GetValues() const { return m_values.empty() ? nullptr : &m_values; }

  /// Returns the type of a value of one of this thread's lists, or null when `values` belongs to none.
  static const std::type_info* FindType(const std::vector<void*>& values, std::size_t position);

 private:
  const std::type_info* TypeOf(std::size_t position) const;
  void Publish();

  std::vector<std::shared_ptr<IValuePointer>> m_sources;
  std::vector<void*> m_values;
  const CArgumentList* m_outer = nullptr;
};

}  // namespace Zorbel
