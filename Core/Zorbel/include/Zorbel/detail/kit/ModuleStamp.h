#pragma once

#include <cstddef>
#include <cstdint>

#include <Zorbel/Export.h>
#include <Zorbel/Version.h>

namespace Zorbel::Kit {

/// What a module that was built with the kit tells about itself. Plain data: it is read before any of the module's
/// functions is called, and its first member says how much of the rest there is. The last is for modules that fit.
struct SModuleStamp {
  std::uint32_t size;
  std::uint32_t binaryInterface;
  std::uint32_t wideCharacterBits;
  char classModel[12];  // modules with different ones do not understand each other's objects
  char version[16];
  char compiler[64];
  void (*registerInterfaces)();  // null for nothing to register
};

/// The name under which a module exports its stamp.
inline constexpr const char* kStampName = "zorbel_module_stamp";

template <std::size_t n>
constexpr void CopyText(char (&target)[n], const char* text) {
  for (std::size_t i = 0; i + 1 < n && text[i] != '\0'; ++i) {
    target[i] = text[i];
  }
}

/// Returns the stamp of the code that this header is compiled into.
constexpr SModuleStamp MakeStamp(void (*registerInterfaces)() = nullptr) {
  SModuleStamp stamp{sizeof(SModuleStamp), ZORBEL_BINARY_INTERFACE, sizeof(wchar_t) * 8, {}, {}, {},
                     registerInterfaces};
  CopyText(stamp.classModel, ZORBEL_CLASS_MODEL);
  CopyText(stamp.version, ZORBEL_VERSION);
  CopyText(stamp.compiler, ZORBEL_COMPILER);
  return stamp;
}

}  // namespace Zorbel::Kit
