#include "Values/CArgumentList.h"

#include <utility>

#include "Values/CTypeManager.h"
#include "Values/ValueSources.h"

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

CArgumentList::CArgumentList(std::shared_ptr<IValuePointer> source) {
  m_values.push_back(source->GetValue());
  m_sources.push_back(std::move(source));
  Publish();
}

const std::type_info* CArgumentList::TypeOf(std::size_t position) const {
  if (position >= m_sources.size()) {
    return nullptr;
  }
  const auto* typed = dynamic_cast<const CTypedSource*>(m_sources[position].get());
  return typed != nullptr ? &typed->GetType() : &typeid(std::shared_ptr<IObject>);
}

}  // namespace Zorbel
