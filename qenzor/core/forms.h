#pragma once

#include <cstdint>
#include <memory>

#include "qenzor/core/counted_array.h"
#include "qenzor/platform/export.h"
#include "qenzor/platform/list.h"
#include "qenzor/platform/strings.h"

namespace qenzor {

/// The members of a data class are declared once, in a template over the form that they stand in.
/// ChunkForm makes them as a chunk holds them, EditForm as its editable twin does.
struct QENZOR_EXPORT ChunkForm {
  static constexpr bool kIsChunk = true;
  /// Elements behind a 16-bit count.
  template <class T>
  using Array = CCountedArray<T, std::uint16_t>;
  /// Elements behind a 32-bit count.
  template <class T>
  using LongArray = CCountedArray<T, std::uint32_t>;
  /// An owned sub-chunk that may be absent.
  template <class Chunk>
  using Slot = std::unique_ptr<Chunk>;
  template <class Chunk>
  using SharedSlot = std::unique_ptr<Chunk>;
  /// A record of its own class with lists inside.
  template <class Record>
  using RecordArray = CCountedArray<Record, std::uint16_t>;
  /// A file name.
  using Name = CStringW;
};

struct QENZOR_EXPORT EditForm {
  static constexpr bool kIsChunk = false;
  template <class T>
  using Array = CList<T>;
  template <class T>
  using LongArray = CList<T>;
  template <class Chunk>
  using Slot = std::unique_ptr<typename Chunk::EditClass>;
  /// A slot whose content two edit objects may hold at once.
  template <class Chunk>
  using SharedSlot = std::shared_ptr<typename Chunk::EditClass>;
  template <class Record>
  using RecordArray = CList<std::unique_ptr<typename Record::EditClass>>;
  using Name = CString;
};

/// The data that stands in the edit form where the given one stands in the chunk form.
template <class Data>
struct EditFormOf;
template <template <class> class Fields>
struct EditFormOf<Fields<ChunkForm>> {
  using Type = Fields<EditForm>;
};

}  // namespace qenzor
