#pragma once

/// The version of the library these headers belong to: the one place where it is written down.
#define ZORBEL_VERSION_MAJOR 1
#define ZORBEL_VERSION_MINOR 0
#define ZORBEL_VERSION_PATCH 0

#define ZORBEL_DETAIL_QUOTE2(x) #x
#define ZORBEL_DETAIL_QUOTE(x) ZORBEL_DETAIL_QUOTE2(x)
#define ZORBEL_VERSION                      \
  ZORBEL_DETAIL_QUOTE(ZORBEL_VERSION_MAJOR) \
  "." ZORBEL_DETAIL_QUOTE(ZORBEL_VERSION_MINOR) "." ZORBEL_DETAIL_QUOTE(ZORBEL_VERSION_PATCH)

/// Changes whenever hosts and plug-ins built before stop working; adding to the headers does not change it.
#define ZORBEL_BINARY_INTERFACE 1
