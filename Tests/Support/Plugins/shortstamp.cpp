// A module whose stamp fits, but ends before its last member: what lies behind it is not the stamp's.
#include <Zorbel/Export.h>
#include <Zorbel/detail/kit/ModuleStamp.h>

#include <cstddef>
#include <cstdlib>

namespace {

constexpr Zorbel::Kit::SModuleStamp Short() {
  Zorbel::Kit::SModuleStamp stamp = Zorbel::Kit::MakeStamp(&std::abort);
  stamp.size = offsetof(Zorbel::Kit::SModuleStamp, registerInterfaces);
  return stamp;
}

}  // namespace

extern "C" ZORBEL_STAMP_EXPORT const Zorbel::Kit::SModuleStamp zorbel_module_stamp = Short();
