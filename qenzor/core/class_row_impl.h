#pragma once

#include <span>
#include <string_view>

#include "qenzor/core/abstract_chunk.h"

namespace qenzor {

class CAbstractChunkEdit;
class CAbstractChunkTextConverter;
class CXmlElement;

/// What the factories know of a data class: its tag, and how its other two forms are made.
struct ClassRow {
  std::string_view Tag;
  CAbstractChunkEdit* (*CreateEdit)();
  CAbstractChunkTextConverter* (*CreateConverter)();
  /// The converter that all may share.
  CAbstractChunkTextConverter& (*SharedConverter)();
  bool (*IsConverter)(const CAbstractChunkTextConverter& converter);
  bool (*IsEdit)(const CAbstractChunkEdit& edit);
  /// Has the place of the element that a keyed set of the class files, or will file, under the key
  /// fetched into the processor's cache; null for all other classes. An element's key is the first
  /// of its fields.
  void (*PrefetchElem)(const CAbstractChunk& set, std::uint64_t key);
  /// Both objects must be of the class.
  bool (*EqualChunks)(const CAbstractChunk& a, const CAbstractChunk& b);
  bool (*EqualEdits)(const CAbstractChunkEdit& a, const CAbstractChunkEdit& b);
  /// Fills an edit object of the class from an element.
  void (*FillEdit)(CAbstractChunkEdit& edit, CXmlElement& elem);
};

/// The row of a class. Only classes that the catalogue lists have one: where the linker misses this
/// function, the list misses the class.
template <class Chunk>
const ClassRow& RowInCatalogue() noexcept;

/// The rows of all classes, in matching order.
std::span<const ClassRow> ClassRows() noexcept;

/// The row of the chunk's class, or of the nearest one that it derives from; null without any.
inline const ClassRow* FindRow(const CAbstractChunk& chunk) noexcept {
  const CRuntimeClass* cls = &chunk.GetRuntimeClass();
  while (cls != nullptr && cls->Row == nullptr) cls = cls->Base;
  return cls == nullptr ? nullptr : &cls->Row();
}

/// The row of a tag, or null.
inline const ClassRow* FindRow(std::string_view tag) noexcept {
  for (const ClassRow& row : ClassRows())
    if (row.Tag == tag) return &row;
  return nullptr;
}

}  // namespace qenzor
