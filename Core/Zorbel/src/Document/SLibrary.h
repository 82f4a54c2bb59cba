#pragma once

#include <Zorbel/CStringT.h>

#include <cstddef>
#include <deque>

#include "BasePool/CbMap.h"
#include "Document/SBeanDescription.h"

namespace Zorbel {

class ILibrary;

/// One configured library path with the beans declared under it. A pointer to it tells on whose behalf a bean is
/// requested.
struct SLibrary {
  CStringT<char> path;
  std::deque<SBeanDescription> beans;  ///< grows at its end only; an element stays where it is
};

/// A library as its registry keeps it.
struct SLibraryRecord : SLibrary {
  std::size_t order = 0;                ///< position among the registry's libraries
  ILibrary* module = nullptr;           ///< once loaded
  std::size_t processed = 0;            ///< how many of the beans, from the first, have their definitions
  bool processing = false;              ///< while definitions are being built
  CbMap<CStringT<char>, void*> makers;  ///< what the module exports for a class asked for, null for nothing
};

}  // namespace Zorbel
