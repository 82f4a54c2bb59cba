#include "Document/Sources.h"

namespace Zorbel {

const SExtent* SSourceElement::FindAttribute(std::string_view name) const {
  for (const SSourceAttribute& attribute : attributes) {
    if (attribute.name == name) {
      return &attribute.extent;
    }
  }
  return nullptr;
}

}  // namespace Zorbel
