#pragma once

#include <cstddef>

#include "qenzor/platform/export.h"

namespace qenzor {

/// The memory of a document that was read, copied or converted as a whole can serve the next one,
/// for which the system would have to clear it anew. So the library keeps some of what became
/// empty: at most 16 MiB, or what SetKeptMemory says. Both functions may be called on any thread at
/// any time.

/// Keeps at most so many bytes from now on and gives the system what is beyond them.
QENZOR_EXPORT void SetKeptMemory(std::size_t bytes) noexcept;

/// Gives the system all that is kept now. What becomes empty later is kept again.
QENZOR_EXPORT void ReleaseKeptMemory() noexcept;

}  // namespace qenzor
