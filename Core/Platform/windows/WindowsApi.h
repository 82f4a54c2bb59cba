#pragma once

// The one door to the system's header, which defines macros for common names.
#define WIN32_LEAN_AND_MEAN
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
