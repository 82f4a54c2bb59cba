#include "Configuration/CContainerEnvironment.h"

#include "Libraries/CLocalLibrary.h"

namespace Zorbel::Internal {

Platform::EReading CContainerEnvironment::ReadFile(const std::wstring& name, std::size_t limit, std::string& content) {
  return Platform::ReadFile(name, limit, content);
}

std::wstring CContainerEnvironment::ResolveFileName(const std::wstring& name) {
  return Platform::ResolveFileName(name);
}

void CContainerEnvironment::BeginInclude() { m_included.emplace_back(); }

void CContainerEnvironment::EndInclude() noexcept { m_included.pop_back(); }

void CContainerEnvironment::UseLibrary(const SLibrary& library, std::size_t firstBean) {
  const bool included = !m_included.empty();
  CDefinitions& definitions = included ? m_included.back().definitions : m_definitions;
  const auto [entry, isNew] = (included ? m_included.back().libraries : m_libraries).try_emplace(&library);
  if (isNew) {
    entry->second.library = &library;
    entry->second.processed = firstBean;
  }
  definitions.processLibrary(entry->second);
}

std::optional<CStringT<char>> CContainerEnvironment::FindTypeId(const CStringT<char>& interfaceName) {
  return CStringT<char>(CLocalLibrary::Instance().GetTypeID(interfaceName));
}

}  // namespace Zorbel::Internal
