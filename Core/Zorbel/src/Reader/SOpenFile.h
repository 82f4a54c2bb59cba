#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_set>

#include "XmlParser/XmlParser.h"

namespace Zorbel::Internal {

/// A file being read, on the stack of its reading.
struct SOpenFile {
  std::wstring name;
  SOpenFile* outer = nullptr;        ///< the one that includes it
  const XMLNode* include = nullptr;  ///< its element there

  // What `CDeclarations` knows of it.
  unsigned int number = 0;                           ///< in the order in which files are opened
  std::size_t firstMention = 0;                      ///< how many there were before it
  bool overrides = false;                            ///< declares a bean that an earlier include of `outer` declares
  std::unordered_set<std::string_view> beanNames{};  ///< of its includes up to that mention, once one overrides
  std::size_t namedMentions = 0;
};

}  // namespace Zorbel::Internal
