#pragma once

#include <Zorbel/CStringT.h>

#include <string_view>

#include "Document/Sources.h"
#include "XmlParser/XmlParser.h"

namespace Zorbel::Internal {

/// A loop's variable in one of its passes, on the stack of the loop. An inner one hides those of its name.
struct SVariable {
  CStringT<wchar_t> name;
  CStringT<wchar_t> value;
  const SVariable* outer = nullptr;
  const XMLNode* loop = nullptr;
  mutable const SSourcePass* pass = nullptr;  ///< once somebody has asked for it
};

/// Returns the value of a variable; null when there is none of that name. One without a name, which is the fault of its
/// loop, may be meant.
inline const CStringT<wchar_t>* FindVariable(const SVariable* innermost, std::wstring_view name) {
  const CStringT<wchar_t>* unnamed = nullptr;
  for (; innermost != nullptr; innermost = innermost->outer) {
    if (name == innermost->name.GetString() && !name.empty()) {
      return &innermost->value;
    }
    unnamed = innermost->name.IsEmpty() ? &innermost->value : unnamed;
  }
  return unnamed;
}

}  // namespace Zorbel::Internal
