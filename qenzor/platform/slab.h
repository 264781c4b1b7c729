#pragma once

#include <cstddef>

#include "qenzor/platform/export.h"

namespace qenzor {

/// Memory for the many small objects and arrays of a document, which are made one after another and
/// mostly die together: cut in order from slabs, each of which goes back as a whole when the last
/// of its blocks does. Large blocks come from the global operator new.

/// A block of size bytes, aligned for any ordinary type. Throws std::bad_alloc.
[[nodiscard]] QENZOR_EXPORT void* AllocateBlock(std::size_t size);
/// The same; null when memory runs out.
[[nodiscard]] QENZOR_EXPORT void* TryAllocateBlock(std::size_t size) noexcept;
/// Gives back a block of that size, on any thread; null is fine.
QENZOR_EXPORT void FreeBlock(void* block, std::size_t size) noexcept;

/// Asks the system to back a large, lasting block by huge pages where it can; a hint only.
void AdviseHugePages(void* memory, std::size_t size) noexcept;

}  // namespace qenzor
