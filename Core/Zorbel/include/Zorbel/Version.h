#pragma once

/// The version of the library these headers belong to: the one place where it is written down.
#define ZORBEL_VERSION "1.0.0"

/// Changes whenever hosts and plug-ins built before stop working; adding to the headers does not change it.
#define ZORBEL_BINARY_INTERFACE 1
