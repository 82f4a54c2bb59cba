#pragma once

namespace Zorbel::Internal {

/// The origin of all errors of `CXMLResource`, whose code is spread over several files, as are these functions.
inline constexpr const char* kResourceFile = "Core/Zorbel/src/CXMLResource";
inline constexpr const char* kResourceConstructor = "Zorbel::CXMLResource::CXMLResource";
inline constexpr const char* kContainerFunction = "ParseContainer";

}  // namespace Zorbel::Internal
