#include "Values/ValueSources.h"

#include "Libraries/CLocalLibrary.h"

namespace Zorbel {

CServicePointer::CServicePointer(IBeanFactory* factory, const wchar_t* interfaceName)
    : m_object(factory->GetService(CLocalLibrary::Instance().GetTypeID(CStringT<char>(interfaceName)))) {}

}  // namespace Zorbel
