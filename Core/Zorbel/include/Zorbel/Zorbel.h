#pragma once

/// Everything a host or a plug-in compiles against. What declares classes in a few lines is a header of its own,
/// `Zorbel/Class.h`: a module that includes it also tells what it was built with.
#include <Zorbel/CContainer.h>
#include <Zorbel/CException.h>
#include <Zorbel/CStringT.h>
#include <Zorbel/Export.h>
#include <Zorbel/IBeanFactory.h>
#include <Zorbel/IBeanWrapper.h>
#include <Zorbel/ICallArguments.h>
#include <Zorbel/IException.h>
#include <Zorbel/ILibrary.h>
#include <Zorbel/IObject.h>
#include <Zorbel/IType.h>
#include <Zorbel/ITypeRegistration.h>
#include <Zorbel/IValuePointer.h>
#include <Zorbel/ObjectCast.h>
#include <Zorbel/Version.h>
