#pragma once

#include <memory>

#include "qenzor/core/abstract_chunk.h"
#include "tests/support/bytes.h"

namespace qenzor::testing {

/// What the chunk writes.
inline Bytes Written(CAbstractChunk& chunk, bool recalc = true) {
  CMemFile file;
  return chunk.Write(&file, recalc) ? Bytes(file.GetBytes()) : Bytes("not written");
}

/// A chunk read from exactly these bytes in memory; null when the read fails.
template <class T>
std::unique_ptr<T> FromMemory(const Bytes& bytes) {
  auto chunk = std::make_unique<T>();
  return chunk->Read(bytes.data(), bytes.size()) ? std::move(chunk) : nullptr;
}

/// The same from a file of these bytes.
template <class T>
std::unique_ptr<T> FromFile(const Bytes& bytes) {
  CMemFile file(bytes.vector());
  auto chunk = std::make_unique<T>();
  return chunk->Read(&file) ? std::move(chunk) : nullptr;
}

/// The chunk made of an edit object, as its class.
template <class T, class Edit>
std::unique_ptr<T> ToChunk(Edit& edit) {
  return std::unique_ptr<T>(static_cast<T*>(edit.EditDataToChunkData()));
}

/// A copy by Clone, as the class of the original.
template <class T>
std::unique_ptr<T> ClonedFrom(T& original) {
  return std::unique_ptr<T>(dynamic_cast<T*>(original.Clone()));
}

}  // namespace qenzor::testing
