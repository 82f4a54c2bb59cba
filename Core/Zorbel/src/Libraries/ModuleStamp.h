#pragma once

#include <string>

#include <Zorbel/detail/kit/ModuleStamp.h>

namespace Zorbel::Internal {

/// Returns as much of a module's stamp as it says there is, the rest zero: other code's may be shorter than this one's.
Kit::SModuleStamp KnownPartOf(const void* stamp);

/// Returns why a module with the stamp, of which this is the known part, cannot be used by this library; empty when it
/// can.
std::string WhyStampDoesNotFit(const Kit::SModuleStamp& known);

}  // namespace Zorbel::Internal
