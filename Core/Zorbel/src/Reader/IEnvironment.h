#pragma once

#include <Zorbel/CStringT.h>

#include <cstddef>
#include <optional>
#include <string>

#include "Document/SLibrary.h"
#include "Platform/File.h"

namespace Zorbel::Internal {

/// What a reader has to ask the world. What is thrown here ends the reading.
class IEnvironment {
 public:
  virtual ~IEnvironment() = default;

  /// Reads the bytes of a file, of which there may be `limit`.
  virtual Platform::EReading ReadFile(const std::wstring& name, std::size_t limit, std::string& content) = 0;

  /// Returns a text that is equal for two names exactly when they name the same file.
  virtual std::wstring ResolveFileName(const std::wstring& name) = 0;

  /// An included file is about to be read; it has been, with all that it includes.
  virtual void BeginInclude() = 0;
  virtual void EndInclude() noexcept = 0;

  /// A bean of the library, which is not yet among its beans, provides an interface. Of the beans, those from
  /// `firstBean` on are declared in the file being read or in what it includes.
  virtual void UseLibrary(const SLibrary& library, std::size_t firstBean) = 0;

  /// Returns the type id of an interface; nothing when it is not known.
  virtual std::optional<CStringT<char>> FindTypeId(const CStringT<char>& interfaceName) = 0;
};

}  // namespace Zorbel::Internal
