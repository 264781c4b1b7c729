#pragma once

#include "qenzor/platform/standard.h"

/// QENZOR_EXPORT marks a class or function that the shared library offers to its users. Everything
/// else is meant to be built with hidden visibility. On Windows the build of the library itself
/// defines qenzor_EXPORTS, and users of a static library define QENZOR_STATIC.
#if !defined(_WIN32)
#define QENZOR_EXPORT __attribute__((visibility("default")))
#elif defined(QENZOR_STATIC)
#define QENZOR_EXPORT
#elif defined(qenzor_EXPORTS)
#define QENZOR_EXPORT __declspec(dllexport)
#else
#define QENZOR_EXPORT __declspec(dllimport)
#endif
