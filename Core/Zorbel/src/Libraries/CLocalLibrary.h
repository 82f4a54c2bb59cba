#pragma once

#include <Zorbel/CStringT.h>
#include <Zorbel/ICallArguments.h>
#include <Zorbel/ILibrary.h>

#include <cstddef>
#include <shared_mutex>
#include <typeinfo>
#include <vector>

#include "BasePool/CbMap.h"
#include "BasePool/CbSingleton.h"

namespace Zorbel {

/// The process's registry of wrapper makers and type ids.
/// Thread: every operation may be called from any thread at any time.
class CLocalLibrary : public ILibrary,
                      public ILibraryConfiguration,
                      public CbSingleton<CLocalLibrary>,
                      public ICallArguments {
 public:
  const char* GetPath() override { return nullptr; }
  void* GetFunction(const char* name) override;

  void RegisterFunction(const char* name, void* function) override;
  bool UnregisterFunction(const char* name) override;
  void RegisterTypeID(const char* className, const char* typeId) override;

  const std::type_info* GetType(const std::vector<void*>& arguments, std::size_t position) const override;

  /// Returns the type id registered under `className`; the text stays when another is registered.
  /// Throws: when there is none, `CException`, or std::range_error when the name is no UTF-8.
  const char* GetTypeID(const char* className);

 private:
  std::shared_mutex m_mutex;
  CbMap<CStringT<char>, void*> m_functions;
  CbMap<CStringT<char>, const char*> m_typeIds;  // by class; the texts are keys of the map below
  CbMap<CStringT<char>, bool> m_typeIdTexts;     // each that was ever registered, once
};

}  // namespace Zorbel
