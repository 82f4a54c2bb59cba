#pragma once

#include <list>
#include <optional>
#include <string>
#include <unordered_map>

#include "Definitions/CDefinitions.h"
#include "Document/SLibrary.h"
#include "Platform/File.h"
#include "Reader/IEnvironment.h"

namespace Zorbel::Internal {

/// The world of a container that reads a document: files of the system, modules, and the type ids registered in the
/// process. A bean that provides an interface has the definitions of its library built. Those of an included file go
/// with it.
class CContainerEnvironment : public IEnvironment {
 public:
  /// `definitions` are those of the document itself.
  explicit CContainerEnvironment(CDefinitions& definitions) : m_definitions(definitions) {}

  Platform::EReading ReadFile(const std::wstring& name, std::size_t limit, std::string& content) override;
  std::wstring ResolveFileName(const std::wstring& name) override;
  void BeginInclude() override;
  void EndInclude() noexcept override;
  void UseLibrary(const SLibrary& library, std::size_t firstBean) override;

  /// Throws: as `CLocalLibrary::GetTypeID`.
  std::optional<CStringT<char>> FindTypeId(const CStringT<char>& interfaceName) override;

 private:
  using Libraries = std::unordered_map<const SLibrary*, SLibraryProgress>;

  struct SIncluded {
    CDefinitions definitions;
    Libraries libraries;
  };

  CDefinitions& m_definitions;
  Libraries m_libraries;
  std::list<SIncluded> m_included;  // innermost last
};

}  // namespace Zorbel::Internal
