#pragma once

#include <cstddef>
#include <string>

/// What tests expect that differs between systems; the build chooses this header.
namespace Test {

inline constexpr int kDeepestRecursion = 256;
inline constexpr const char* kOtherLocale = "English";  // not the one that programs start with
inline constexpr bool kOpenFilesMayBeRemoved = false;
inline constexpr bool kLossyUtf8CountsMaximalParts = false;  // as the system's conversion does it
inline constexpr bool kDotPathsGetNoExtension = false;
inline constexpr bool kHighByteFirstIsNoUtf16 = false;    // the system's test looks at frequencies alone
inline constexpr std::size_t kSmallStack = 1024 * 1024;   // Wine gives no less
inline constexpr const char* kSubstituteForAPair = "??";  // of surrogates, in the ANSI code page

/// The file name of a plug-in module.
inline std::string ModuleFile(const std::string& name) { return name + ".dll"; }

}  // namespace Test
