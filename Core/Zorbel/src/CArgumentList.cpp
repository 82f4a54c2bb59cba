#include "CArgumentList.h"

#include "CTypeManager.h"

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
}

}  // namespace Zorbel
