#pragma once

#include <cstddef>
#include <new>

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

/// The base of classes whose objects come from slabs. Objects of derived classes do too, unless the
/// class supplies operators of its own. Whoever deletes one through a base needs a virtual
/// destructor there, as always.
class CSlabObject {
 public:
  // NOLINTNEXTLINE(misc-new-delete-overloads,*-new-delete-operators,cert-dcl54-cpp): sized below
  static void* operator new(std::size_t size) { return AllocateBlock(size); }
  static void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return TryAllocateBlock(size);
  }
  static void* operator new(std::size_t /*size*/, void* place) noexcept { return place; }
  static void operator delete(void* object, std::size_t size) noexcept { FreeBlock(object, size); }
};

/// Has the system supply the pages of a large block, all of which is about to be used, in one go:
/// page by page it spends more time on the memory of a large document than the reading takes.
/// Larger pages would be fewer, but fresh ones come at several times the cost on virtual machines
/// whose idle memory goes back to their host. A hint only.
void PopulatePages(void* memory, std::size_t size) noexcept;

}  // namespace qenzor
