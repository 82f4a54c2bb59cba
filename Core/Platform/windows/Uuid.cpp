#include "Platform/Uuid.h"

#include "WindowsApi.h"
// Needs the header above.
#include <rpc.h>

namespace Platform {

bool CreateUuidText(std::string& text) {
  UUID uuid{};
  UuidCreate(&uuid);  // also what is unique on this machine alone will do
  RPC_CSTR characters = nullptr;
  if (UuidToStringA(&uuid, &characters) != RPC_S_OK) {
    return false;
  }
  text = reinterpret_cast<const char*>(characters);
  RpcStringFreeA(&characters);
  return true;
}

}  // namespace Platform
