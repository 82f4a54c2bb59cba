#pragma once

#include "XmlParser/XmlParser.h"

namespace Zorbel::Internal {

/// Calls `visit` with each child of that name, in document order.
template <class F>
void ForEachChild(const XMLNode& parent, const char* name, F&& visit) {
  int position = 0;
  for (XMLNode child = parent.getChildNode(name, &position); !child.isEmpty();
       child = parent.getChildNode(name, &position)) {
    visit(child);
  }
}

/// Returns an attribute or text; the empty one when it is absent.
inline const char* OrEmpty(const char* text) { return text != nullptr ? text : ""; }

}  // namespace Zorbel::Internal
