#pragma once

#include <cstddef>
#include <string>

/// What tests expect that differs between systems; the build chooses this header.
namespace Test {

inline constexpr int kDeepestRecursion = 1000;
inline constexpr const char* kOtherLocale = "C.UTF-8";  // not the one that programs start with
inline constexpr bool kOpenFilesMayBeRemoved = true;
inline constexpr bool kLossyUtf8CountsMaximalParts = true;
inline constexpr bool kDotPathsGetNoExtension = true;
inline constexpr bool kHighByteFirstIsNoUtf16 = true;
inline constexpr std::size_t kSmallStack = 256 * 1024;
inline constexpr const char* kSubstituteForAPair = "?";  // of surrogates, in the ANSI code page

/// The file name of a plug-in module.
inline std::string ModuleFile(const std::string& name) { return "lib" + name + ".so"; }

}  // namespace Test
