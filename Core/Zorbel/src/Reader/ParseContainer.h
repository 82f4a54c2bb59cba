#pragma once

#include <functional>
#include <initializer_list>

#include "Reader/CLoop.h"
#include "Reader/CReading.h"
#include "Reader/SScope.h"
#include "XmlParser/XmlParser.h"

namespace Zorbel::Internal {

using ElementHandler = std::function<void(const XMLNode& element)>;

/// Walks over a container: calls `handler` with each child of the names, one name after the other, then `readBody` for
/// each pass of the counted loops, then of those over lists.
void ParseContainer(CReading& reading, const XMLNode& container, std::initializer_list<const char*> names,
                    const SScope& scope, const ElementHandler& handler, const BodyReader& readBody);

}  // namespace Zorbel::Internal
