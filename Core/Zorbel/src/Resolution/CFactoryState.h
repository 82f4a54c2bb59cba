#pragma once

#include <Zorbel/CStringT.h>
#include <Zorbel/IBeanWrapper.h>

#include <memory>
#include <utility>

#include "BasePool/CbMap.h"
#include "Configuration/CXMLResource.h"
#include "Definitions/CBeanConfig.h"
#include "Values/CTypeManager.h"

namespace Zorbel {

using SBean = std::pair<std::shared_ptr<const IBeanWrapper>, std::shared_ptr<IObject>>;

/// All that a factory forgets when it is emptied. A resolution keeps the state that it began with, so that bean code
/// may empty the factory in the middle of it. Thread: used under the factory's lock; services are also looked up
/// under the lock of the services alone.
class CFactoryState {
 public:
  /// Takes no memory.
  explicit CFactoryState(IBeanFactory* owner) : configuration(owner) {}

  /// Returns the wrapper of the definition's class, one for all definitions of that name.
  std::shared_ptr<const IBeanWrapper> GetWrapper(const CBeanConfig& definition);

  bool HasObjects() const { return singletons.GetCount() + wrappers.GetCount() != 0; }

  /// Releases the singletons, then the wrappers: as many as there are now. Those that are still to be released are
  /// found meanwhile, and what is made meanwhile may remain.
  void ReleaseObjects() noexcept;

  // Destroyed from the last to the first: singletons may need their wrappers, and both may need the rest.
  CXMLResource configuration;
  CTypeManager typeManager;
  CbMap<CStringT<char>, std::shared_ptr<const IBeanWrapper>> wrappers;
  CbMap<CStringT<char>, SBean> singletons;
};

}  // namespace Zorbel
