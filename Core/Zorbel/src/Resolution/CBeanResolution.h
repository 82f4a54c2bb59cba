#pragma once

#include <Zorbel/IBeanFactory.h>

#include <cstdint>
#include <memory>
#include <vector>

#include "Definitions/CBeanConfig.h"
#include "Document/SBeanDescription.h"
#include "Resolution/CFactoryState.h"
#include "Threads/ThreadState.h"

namespace Zorbel {

/// One request for a bean. Runs under the factory's lock. What it made is released with it, unless it succeeded.
class CBeanResolution {
 public:
  /// The beans that it depends on, and those of its arguments, are asked of `factory`.
  CBeanResolution(IBeanFactory& factory, std::shared_ptr<CFactoryState> state, const char* name,
                  const SLibrary* requester);
  ~CBeanResolution();
  CBeanResolution(const CBeanResolution&) = delete;
  CBeanResolution& operator=(const CBeanResolution&) = delete;

  /// Returns the bean; empty parts, with a warning written, when it cannot be had.
  /// Throws: what definitions, types, values and wrappers throw.
  SBean Run();

 private:
  const SBeanDescription& Description() const { return m_definition->GetDescription(); }
  bool FindDefinition();
  bool IsVisible() const;
  const SBean* FindSingleton();
  bool Enter();
  bool DependsOnItself() const;
  void ResolveDependencies();
  bool FindWrappers();
  bool Create();
  bool NameObject();
  bool SetProperties();
  bool Initialise();
  bool CallInitMethod();
  const char* ClassName() const;
  SBean Finish();

  IBeanFactory& m_factory;
  const std::shared_ptr<CFactoryState> m_state;
  const char* m_name;
  const SLibrary* m_requester;
  std::uint64_t m_hash;
  const CBeanConfig* m_definition = nullptr;
  Internal::SResolving m_frame{};
  bool m_entered = false;
  std::shared_ptr<const IBeanWrapper> m_wrapper;          // of the bean's class
  std::shared_ptr<const IBeanWrapper> m_creatingWrapper;  // the same, or that of the factory bean's class
  std::vector<std::shared_ptr<IObject>> m_dependencies;
  std::shared_ptr<IObject> m_object;
};

}  // namespace Zorbel
