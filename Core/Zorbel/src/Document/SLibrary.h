#pragma once

#include <Zorbel/CStringT.h>

#include <deque>

#include "Document/SBeanDescription.h"

namespace Zorbel {

/// One configured library path with the beans declared under it. A pointer to it tells on whose behalf a bean is
/// requested.
struct SLibrary {
  CStringT<char> path;
  std::deque<SBeanDescription> beans;  ///< grows at its end only; an element stays where it is
};

}  // namespace Zorbel
