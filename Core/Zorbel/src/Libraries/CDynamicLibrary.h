#pragma once

#include <Zorbel/ILibrary.h>
#include <Zorbel/detail/kit/ModuleStamp.h>

#include <string>

namespace Zorbel {

/// A plug-in module. It stays mapped when this object goes, so that its code stays valid for all that came from it.
class CDynamicLibrary : public ILibrary {
 public:
  /// Loads the module and has it register its interfaces. Throws: `CException` when that fails or its stamp does not
  /// fit, std::range_error when the path is then no UTF-8; what the registering throws.
  explicit CDynamicLibrary(const char* path);

  const char* GetPath() override { return m_path.c_str(); }
  void* GetFunction(const char* name) override;

 private:
  void WelcomeModule(const Kit::SModuleStamp& stamp) const;

  void* m_module;
  std::string m_path;
};

}  // namespace Zorbel
