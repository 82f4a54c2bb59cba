#include "Registry/CRegistry.h"

namespace Zorbel {

CBeanConfig* CRegistry::FindBeanConfig(const char* name, std::uint64_t hash) {
  if (CBeanConfig* built = m_definitions.Find(name, hash)) {
    return built;
  }
  SLibraryRecord* const* record = m_recordsByBean.Lookup(name, hash);
  if (record == nullptr) {
    return nullptr;
  }
  m_definitions.processLibrary(**record);
  return m_definitions.Find(name, hash);
}

const SLibrary* CRegistry::FindEagerLibrary(const char* name) const {
  const SLibrary* const* library = m_eagerLibraries.Lookup(name);
  return library != nullptr ? *library : nullptr;
}

const CStringT<char>* CRegistry::FindOverride(const SDocument& document) const {
  if (m_recordsByBean.GetCount() == 0) {
    return nullptr;
  }
  for (const SLibrary& library : document.libraries) {
    for (const SBeanDescription& bean : library.beans) {
      if (m_recordsByBean.Lookup(bean.name) != nullptr) {
        return &bean.name;
      }
    }
  }
  return nullptr;
}

void CRegistry::IndexBean(SLibraryRecord& record, const CStringT<char>& name) {
  SLibraryRecord*& first = m_recordsByBean.SetAt(name).value;
  if (first == nullptr || record.order < first->order) {
    first = &record;
  }
}

}  // namespace Zorbel
