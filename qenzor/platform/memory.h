#pragma once

#include <cstddef>

#include "qenzor/platform/export.h"

namespace qenzor {

/// Memory that a document no longer needs can serve the next one, which spares the system the work
/// of clearing fresh pages. So the library keeps some of it: at most 16 MiB, or what SetKeptMemory
/// says. Both functions may be called on any thread at any time.

/// Sets the most bytes to keep from now on, and returns what exceeds them to the system.
QENZOR_EXPORT void SetKeptMemory(std::size_t bytes) noexcept;

/// Returns all kept memory to the system. Memory that becomes free later is kept again.
QENZOR_EXPORT void ReleaseKeptMemory() noexcept;

}  // namespace qenzor
