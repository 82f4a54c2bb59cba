#pragma once

#include "Document/SLibrary.h"
#include "Reader/CReading.h"

namespace Zorbel::Internal {

/// Where in a document the reader is.
struct SScope {
  SLibrary* library;
  const SVariable* variables = nullptr;  ///< null outside of loops
  int depth = 0;                         ///< loops and inline beans around it
};

/// False, told as a problem, where nothing may nest in the scope any deeper.
bool MayNest(CReading& reading, const SScope& scope, const SWhere& where, const char* function);

}  // namespace Zorbel::Internal
