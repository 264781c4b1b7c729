#pragma once

// NOLINTBEGIN(cppcoreguidelines-macro-usage): programs ask for them with #if

/// The version of the library that a program is compiled for: as text, as numbers, and as one
/// number to compare with (major * 10000 + minor * 100 + patch). The build takes its version from
/// here.
#define QENZOR_VERSION "0.1.0"
#define QENZOR_VERSION_MAJOR 0
#define QENZOR_VERSION_MINOR 1
#define QENZOR_VERSION_PATCH 0
#define QENZOR_VERSION_NUMBER \
  (QENZOR_VERSION_MAJOR * 10000 + QENZOR_VERSION_MINOR * 100 + QENZOR_VERSION_PATCH)
// NOLINTEND(cppcoreguidelines-macro-usage)
