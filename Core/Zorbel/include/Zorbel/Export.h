#pragma once

#include <Zorbel/Version.h>

/// `ZORBEL_API` marks what the library exports, `ZORBEL_INTERFACE` the classes whose type information hosts, plug-ins
/// and the library share, `ZORBEL_LOCAL` data of the headers that each module keeps for itself (shared data would stop
/// modules from unloading), and `ZORBEL_PLUGIN_EXPORT` what a plug-in module exports, without name decoration.
/// Programs that take the library's objects in directly define `ZORBEL_STATIC`.
/// `ZORBEL_STAMP_EXPORT` exports data that each source of a module may define, `ZORBEL_CLASS_MODEL` names how the
/// compiler lays out classes, `ZORBEL_COMPILER` the compiler.
/// `ZORBEL_HOST_LIBRARY` is the path of the library itself, which is loaded in any case: documents whose classes are
/// all the host's own declare them for it.
#if defined(_WIN32)
#if defined(ZORBEL_STATIC)
#define ZORBEL_API
#elif defined(ZORBEL_BUILD)
#define ZORBEL_API __declspec(dllexport)
#else
#define ZORBEL_API __declspec(dllimport)
#endif
#define ZORBEL_INTERFACE
#define ZORBEL_LOCAL
#define ZORBEL_PLUGIN_EXPORT extern "C" __declspec(dllexport)
#define ZORBEL_STAMP_EXPORT __declspec(selectany) __declspec(dllexport)
#define ZORBEL_CODE_PAGE_HEADER "Zorbel/detail/text/WindowsCodePage.h"
#define ZORBEL_HOST_LIBRARY "Zorbel"

// The system's header rewrites this name, which an interface has. Rewritten here as well, it is the same for every
// program, whether it includes that header before this one, after it or not at all.
#if !defined(GetClassName)
#if defined(UNICODE)
#define GetClassName GetClassNameW
#else
#define GetClassName GetClassNameA
#endif
#endif
#else
#define ZORBEL_API __attribute__((visibility("default")))
#define ZORBEL_INTERFACE __attribute__((visibility("default")))
#define ZORBEL_LOCAL __attribute__((visibility("hidden")))
#define ZORBEL_PLUGIN_EXPORT extern "C" __attribute__((visibility("default")))
#define ZORBEL_STAMP_EXPORT __attribute__((weak, used, visibility("default")))
#define ZORBEL_CODE_PAGE_HEADER "Zorbel/detail/text/FixedCodePage.h"
#define ZORBEL_HOST_LIBRARY "libZorbel.so." ZORBEL_DETAIL_QUOTE(ZORBEL_VERSION_MAJOR)
#endif

#if defined(_MSC_VER)
#define ZORBEL_CLASS_MODEL "MSVC"
#define ZORBEL_COMPILER "MSVC"
#else
#define ZORBEL_CLASS_MODEL "Itanium"
#if defined(__clang__)
#define ZORBEL_COMPILER __VERSION__
#else
#define ZORBEL_COMPILER "GCC " __VERSION__
#endif
#endif
