#pragma once

#include <cstddef>
#include <new>

#include "qenzor/platform/export.h"

namespace qenzor {

/// Memory for the many small objects and arrays of a document. While a document is read, copied or
/// converted as a whole they are cut from slabs, at all other times each comes from the global
/// operator new. Any thread may give back what any other one took.

/// A block of size bytes, aligned for any ordinary type. Throws std::bad_alloc.
[[nodiscard]] QENZOR_EXPORT void* AllocateBlock(std::size_t size);
/// The same; null when memory runs out.
[[nodiscard]] QENZOR_EXPORT void* TryAllocateBlock(std::size_t size) noexcept;
/// The same as AllocateBlock for an array of an object. Arrays, which are replaced more often than
/// the objects that own them, do not share slabs with those.
[[nodiscard]] QENZOR_EXPORT void* AllocateArrayBlock(std::size_t size);
/// Gives back a block that one of these gave; null is fine.
QENZOR_EXPORT void FreeBlock(void* block) noexcept;

/// The base of classes whose objects may stand in slabs. Objects of derived classes may too, unless
/// the class supplies operators of its own or asks for a larger alignment than usual. Whoever
/// deletes one through a base needs a virtual destructor there, as always.
class CSlabObject {
 public:
  static void* operator new(std::size_t size) { return AllocateBlock(size); }
  static void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return TryAllocateBlock(size);
  }
  static void* operator new(std::size_t size, std::align_val_t alignment) {
    return ::operator new(size, alignment);
  }
  static void* operator new(std::size_t size, std::align_val_t alignment,
                            const std::nothrow_t& tag) noexcept {
    return ::operator new(size, alignment, tag);
  }
  static void* operator new(std::size_t /*size*/, void* place) noexcept { return place; }

  static void operator delete(void* object) noexcept { FreeBlock(object); }
  static void operator delete(void* object, std::align_val_t alignment) noexcept {
    ::operator delete(object, alignment);
  }
  // For constructors that throw.
  static void operator delete(void* object, const std::nothrow_t& /*tag*/) noexcept {
    FreeBlock(object);
  }
  static void operator delete(void* object, std::align_val_t alignment,
                              const std::nothrow_t& /*tag*/) noexcept {
    ::operator delete(object, alignment);
  }
  static void operator delete(void* /*object*/, void* /*place*/) noexcept {}
};

}  // namespace qenzor
