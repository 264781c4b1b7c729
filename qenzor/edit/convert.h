#pragma once

#include <memory>
#include <new>

#include "qenzor/edit/chunk_edit_factory.h"

namespace qenzor {

// The forms of an object as new objects that belong to the caller. The source is only read; null
// when memory runs out.

/// What the functions of the forms take as their source: they only read it, but do not say so.
template <class T>
T* SourceOf(const T& object) noexcept {
  return const_cast<T*>(&object);  // NOLINT(cppcoreguidelines-pro-type-const-cast): only read
}

/// A deep copy of a chunk, an edit object, a record or a document.
template <class T>
requires requires(T& object) { object.Clone(); }
[[nodiscard]] std::unique_ptr<T> CloneOf(const T& object) try {
  return std::unique_ptr<T>(static_cast<T*>(SourceOf(object)->Clone()));
} catch (const std::bad_alloc&) {
  return nullptr;
}

/// The edit object of a chunk, of the type that belongs to the chunk's static one. Null for a chunk
/// whose class has no edit form, such as an unknown chunk.
template <class Chunk>
requires requires { typename Chunk::EditClass; }
[[nodiscard]] std::unique_ptr<typename Chunk::EditClass> ToEdit(const Chunk& chunk) {
  return std::unique_ptr<typename Chunk::EditClass>(
      static_cast<typename Chunk::EditClass*>(CChunkEditFactory::CreateInstance(SourceOf(chunk))));
}

/// The chunk of an edit object; its data sizes are 0 until they are recalculated.
template <class Edit>
requires requires { typename Edit::ChunkClass; }
[[nodiscard]] std::unique_ptr<typename Edit::ChunkClass> ToChunk(const Edit& edit) try {
  return std::unique_ptr<typename Edit::ChunkClass>(
      static_cast<typename Edit::ChunkClass*>(SourceOf(edit)->EditDataToChunkData()));
} catch (const std::bad_alloc&) {
  return nullptr;
}

}  // namespace qenzor
