#pragma once

/// Everything a host or a plug-in compiles against.
#include <Zorbel/CContainer.h>
#include <Zorbel/CException.h>
#include <Zorbel/CStringT.h>
#include <Zorbel/Export.h>
#include <Zorbel/IBeanFactory.h>
#include <Zorbel/IBeanWrapper.h>
#include <Zorbel/IException.h>
#include <Zorbel/ILibrary.h>
#include <Zorbel/IObject.h>
#include <Zorbel/IType.h>
#include <Zorbel/ITypeRegistration.h>
#include <Zorbel/IValuePointer.h>
