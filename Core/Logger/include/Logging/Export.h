#pragma once

/// `LOGGING_API` marks what the logging library exports.
#if defined(_WIN32)
#if defined(LOGGING_BUILD)
#define LOGGING_API __declspec(dllexport)
#else
#define LOGGING_API __declspec(dllimport)
#endif
#else
#define LOGGING_API __attribute__((visibility("default")))
#endif
