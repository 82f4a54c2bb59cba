// A module that says it was built for another binary interface; none of its functions may be called.
#include <Zorbel/Export.h>
#include <Zorbel/IBeanWrapper.h>
#include <Zorbel/detail/kit/ModuleStamp.h>

#include <cstdlib>

namespace {

constexpr Zorbel::Kit::SModuleStamp Foreign() {
  Zorbel::Kit::SModuleStamp stamp = Zorbel::Kit::MakeStamp(&std::abort);
  stamp.binaryInterface = 99;
  Zorbel::Kit::CopyText(stamp.version, "9.8.7");
  return stamp;
}

}  // namespace

extern "C" ZORBEL_STAMP_EXPORT const Zorbel::Kit::SModuleStamp zorbel_module_stamp = Foreign();

ZORBEL_PLUGIN_EXPORT Zorbel::IBeanWrapper* create_C_Wrapper() { std::abort(); }
