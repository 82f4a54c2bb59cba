#include "Reader/ParseContainer.h"

#include "Reader/XmlChildren.h"

namespace Zorbel::Internal {

void ParseContainer(CReading& reading, const XMLNode& container, std::initializer_list<const char*> names,
                    const SScope& scope, const ElementHandler& handler, const BodyReader& readBody) {
  for (const char* name : names) {
    ForEachChild(container, name, handler);
  }
  RunLoops(reading, container, scope, readBody);
}

}  // namespace Zorbel::Internal
