#pragma once

#include <string>

#include "XmlParser/XmlParser.h"

namespace Zorbel::Internal {

/// A file being read, on the stack of its reading.
struct SOpenFile {
  std::wstring name;
  SOpenFile* outer = nullptr;        ///< the one that includes it
  const XMLNode* include = nullptr;  ///< its element there
  unsigned int number = 0;           ///< in the order in which files are opened
  bool overrides = false;            ///< declares a bean that an earlier include of the outer one has declared
};

}  // namespace Zorbel::Internal
