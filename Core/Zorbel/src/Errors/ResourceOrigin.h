#pragma once

namespace Zorbel::Internal {

/// The origin of all errors of reading and merging, whose code is spread over several files.
inline constexpr const char* kResourceFile = "Core/Zorbel/src/CXMLResource";

}  // namespace Zorbel::Internal
