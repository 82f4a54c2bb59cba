#pragma once

#include <string>

#include <Zorbel/detail/ModuleStamp.h>

namespace Zorbel::Internal {

/// Returns why a module with the stamp cannot be used by this library; empty when it can.
std::string WhyStampDoesNotFit(const Kit::SModuleStamp& stamp);

}  // namespace Zorbel::Internal
