#include "ModuleStamp.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace Zorbel::Internal {
namespace {

using Kit::SModuleStamp;

constexpr SModuleStamp kOwnStamp = Kit::MakeStamp();

// A stamp of other code may be shorter, and its texts need not end.
SModuleStamp KnownPartOf(const SModuleStamp& stamp) {
  SModuleStamp known{};
  std::memcpy(&known, &stamp, std::min<std::size_t>(stamp.size, sizeof known));
  return known;
}

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

std::string WhyStampDoesNotFit(const SModuleStamp& stamp) {
  const SModuleStamp known = KnownPartOf(stamp);
  const bool fits = known.binaryInterface == kOwnStamp.binaryInterface &&
                    known.wideCharacterBits == kOwnStamp.wideCharacterBits &&
                    Text(known.classModel) == Text(kOwnStamp.classModel);
  return fits ? std::string() : "module: " + Text(known) + "; library: " + Text(kOwnStamp);
}

}  // namespace Zorbel::Internal
