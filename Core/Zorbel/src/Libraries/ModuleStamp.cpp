#include "Libraries/ModuleStamp.h"

#include <algorithm>
#include <cstring>

namespace Zorbel::Internal {
namespace {

using Kit::SModuleStamp;

constexpr SModuleStamp kOwnStamp = Kit::MakeStamp();

// The texts of other code's stamps need not end.
template <std::size_t n>
std::string Text(const char (&text)[n]) {
  return {text, static_cast<std::size_t>(std::find(text, text + n, '\0') - text)};
}

std::string Text(const SModuleStamp& stamp) {
  return "interface " + std::to_string(stamp.binaryInterface) + ", " + std::to_string(stamp.wideCharacterBits) +
         "-bit wide characters, " + Text(stamp.classModel) + " classes, Zorbel " + Text(stamp.version) + ", " +
         Text(stamp.compiler);
}

}  // namespace

SModuleStamp KnownPartOf(const void* stamp) {
  SModuleStamp known{};
  std::memcpy(&known.size, stamp, sizeof known.size);
  std::memcpy(&known, stamp, std::min<std::size_t>(known.size, sizeof known));
  if (known.size < sizeof known) {
    known.registerInterfaces = nullptr;  // half an address is none
  }
  return known;
}

std::string WhyStampDoesNotFit(const SModuleStamp& known) {
  const bool fits = known.binaryInterface == kOwnStamp.binaryInterface &&
                    known.wideCharacterBits == kOwnStamp.wideCharacterBits &&
                    Text(known.classModel) == Text(kOwnStamp.classModel);
  return fits ? std::string() : "module: " + Text(known) + "; library: " + Text(kOwnStamp);
}

}  // namespace Zorbel::Internal
