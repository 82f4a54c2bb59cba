#pragma once

namespace Zorbel::Internal {

// Files as errors and log lines name them, where the code of one stands in several.

/// Reading and merging.
inline constexpr const char* kResourceFile = "Core/Zorbel/src/CXMLResource";

/// Loading and the shared factory.
inline constexpr const char* kContainerFile = "Core/Zorbel/src/CContainer";

/// Requests of beans.
inline constexpr const char* kFactoryFile = "Core/Zorbel/src/CBeanFactoryImpl";
inline constexpr const char* kResolutionFunction = "Zorbel::CBeanFactoryImpl::GetBeanWrapper";

}  // namespace Zorbel::Internal
