#pragma once

#include <Zorbel/CStringT.h>
#include <Zorbel/ILibrary.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "BasePool/CbMap.h"
#include "Definitions/CBeanConfig.h"
#include "Document/SLibrary.h"

namespace Zorbel {

/// How far the definitions of a library's beans have been built.
struct SLibraryProgress {
  const SLibrary* library = nullptr;
  std::size_t processed = 0;            ///< how many of the beans, from the first, need not be looked at any more
  bool processing = false;              ///< while definitions are being built
  ILibrary* module = nullptr;           ///< once loaded
  CbMap<CStringT<char>, void*> makers;  ///< what the module exports for a class asked for, null for nothing
};

/// Bean definitions, built library by library, with the modules loaded for them.
/// Thread: guarded by its owner. Code of plug-ins that is called from here may call back, on the same thread.
class CDefinitions {
 public:
  using BeanMap = CbMap<CStringT<char>, std::unique_ptr<CBeanConfig>>;

  /// Returns the definition of a bean, or null when it has not been built.
  CBeanConfig* Find(const char* name, std::uint64_t hash);

  bool IsEmpty() const { return m_beans.GetCount() == 0; }

  /// Loads the module when that has not been done, and builds the definitions of those of the library's beans that have
  /// none. The library's beans stay where they are as long as these. Throws: `CException` when a wrapper maker is
  /// missing; what `CDynamicLibrary` and `CBeanConfig` throw. Those built before stay.
  void processLibrary(SLibraryProgress& progress);

 private:
  void processBean(const SBeanDescription& bean, SLibraryProgress& progress);
  void* FindWrapperMaker(SLibraryProgress& progress, const CStringT<char>& className);
  ILibrary& LoadedModule(SLibraryProgress& progress);

  std::vector<std::unique_ptr<ILibrary>> m_modules;
  BeanMap m_beans;
};

}  // namespace Zorbel
