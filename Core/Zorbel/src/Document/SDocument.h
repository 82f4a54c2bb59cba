#pragma once

#include <Zorbel/CStringT.h>

#include <list>
#include <string>
#include <vector>

#include "Document/SLibrary.h"

namespace Zorbel {

/// What a document says, with all that it includes, in the order of reading.
struct SDocument {
  std::list<SLibrary> libraries;           ///< one for each path
  std::vector<CStringT<char>> eagerBeans;  ///< names of those to be created at load time
  std::vector<std::wstring> includes;      ///< names of the included files, as they are opened
};

}  // namespace Zorbel
