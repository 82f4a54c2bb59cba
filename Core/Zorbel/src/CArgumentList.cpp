#include "CArgumentList.h"

#include <utility>

#include "CTypeManager.h"
#include "ThreadState.h"
#include "ValueSources.h"

namespace Zorbel {

CArgumentList::CArgumentList(const std::vector<SArgumentDescription>& arguments, IBeanFactory* factory,
                             const CTypeManager& typeManager, const SLibrary* library) {
  m_sources.reserve(arguments.size());
  m_values.reserve(arguments.size());
  for (const SArgumentDescription& argument : arguments) {
    IType* type = typeManager.FindTypeBean(argument.kind);
    m_sources.push_back(type->CreateValuePointer(factory, argument.kind, argument.text, library));
    m_values.push_back(m_sources.back() ? m_sources.back()->GetValue() : nullptr);
  }
  Publish();
}

CArgumentList::CArgumentList(std::shared_ptr<IValuePointer> source) : m_values{source->GetValue()} {
  m_sources.push_back(std::move(source));
  Publish();
}

CArgumentList::~CArgumentList() { Internal::ThisThread().arguments = m_outer; }

// The last step of building: the values of a list are asked for when none of them can be in the making.
void CArgumentList::Publish() { m_outer = std::exchange(Internal::ThisThread().arguments, this); }

const std::type_info* CArgumentList::FindType(const std::vector<void*>& values, std::size_t position) {
  for (const CArgumentList* list = Internal::ThisThread().arguments; list != nullptr; list = list->m_outer) {
    if (&list->m_values == &values) {
      return list->TypeOf(position);
    }
  }
  return nullptr;
}

const std::type_info* CArgumentList::TypeOf(std::size_t position) const {
  if (position >= m_sources.size()) {
    return nullptr;
  }
  const auto* typed = dynamic_cast<const CTypedSource*>(m_sources[position].get());
  return typed != nullptr ? &typed->GetType() : &typeid(std::shared_ptr<IObject>);
}

}  // namespace Zorbel
