#pragma once

#include <initializer_list>

#include "Reader/CLoop.h"
#include "Reader/XmlChildren.h"

namespace Zorbel::Internal {

/// Walks over a container: calls `handler` with each child of the names, one name after the other, then `readBody` with
/// each pass of its loops and the scope in it.
template <class Handler, class BodyReader>
void ParseContainer(CReading& reading, const XMLNode& container, std::initializer_list<const char*> names,
                    const SScope& scope, const Handler& handler, const BodyReader& readBody) {
  for (const char* name : names) {
    ForEachChild(container, name, handler);
  }
  const auto run = [&](auto&& passes, const XMLNode& loop) {
    while (passes.Next()) {
      readBody(loop, passes.GetBody());
    }
  };
  ForEachChild(container, "for", [&](const XMLNode& loop) { run(CForLoop(reading, loop, scope), loop); });
  ForEachChild(container, "foreach", [&](const XMLNode& loop) { run(CForeachLoop(reading, loop, scope), loop); });
}

}  // namespace Zorbel::Internal
