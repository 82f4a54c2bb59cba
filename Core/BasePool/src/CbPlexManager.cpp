#include "BasePool/CbPlexManager.h"

#include "BasePool/CbExceptionContainer.h"

namespace CbPlex {

void RaiseOutOfMemory(unsigned int line, const std::string& function) {
  throw CbExceptionContainer("Core/BasePool/CbPlexManager", line, function.c_str());
}

}  // namespace CbPlex
