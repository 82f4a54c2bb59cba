// A module that declares its class and its interface with the kit, from two sources' worth of includes.
#include <Zorbel/Class.h>

namespace kit {

struct IGreeter : Zorbel::IObject {
  static constexpr const char* kTypeId = "kit.IGreeter";
};
struct CGreeter : IGreeter {};

}  // namespace kit

ZORBEL_MODULE_INTERFACE(kit::IGreeter, "IKitGreeter");
ZORBEL_CLASS(kit, CGreeter) { Constructor<>(); }
