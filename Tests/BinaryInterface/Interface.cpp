// A module that has every public interface in its description.
#include <Logging/CLogger.h>
#include <Logging/Logging.h>
#include <Zorbel/Zorbel.h>
#include <Zorbel/detail/kit/ModuleStamp.h>

extern "C" __attribute__((visibility("default"))) void DescribeInterface(
    Zorbel::CContainer&, Zorbel::CException&, Zorbel::IBeanFactory&, Zorbel::IBeanWrapper&, Zorbel::IType&,
    Zorbel::IValuePointer&, Zorbel::ILibrary&, Zorbel::ILibraryConfiguration&, Zorbel::ITypeRegistration&,
    Zorbel::IBeanCarrier&, Zorbel::ICallArguments&, Zorbel::Kit::SModuleStamp&, Logging::CLogger&, CStringT<char>&,
    CStringT<wchar_t>&) {}
