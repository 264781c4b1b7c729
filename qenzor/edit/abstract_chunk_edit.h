#pragma once

#include "qenzor/core/abstract_chunk.h"
#include "qenzor/platform/slab.h"

namespace qenzor {

/// The editable twin of a chunk: lists instead of packed arrays, an owned edit object for each
/// sub-chunk. An edit object owns its children. An object of the wrong class gives an empty result
/// or false; running out of memory throws std::bad_alloc and leaves every object whole.
class QENZOR_EXPORT CAbstractChunkEdit : public CSlabObject {
 public:
  virtual ~CAbstractChunkEdit();
  CAbstractChunkEdit(const CAbstractChunkEdit&) = delete;
  CAbstractChunkEdit& operator=(const CAbstractChunkEdit&) = delete;

  /// A new chunk tree with this object's content; the caller owns it. Its data sizes are 0 until
  /// they are recalculated.
  [[nodiscard]] virtual CAbstractChunk* EditDataToChunkData() = 0;
  /// Replaces the content with that of the chunk, which is only read. A chunk of another class
  /// leaves the object released.
  virtual void ChunkDataToEditData(CAbstractChunk* chunk) = 0;
  /// A new object of the same class with a copy of everything; the caller owns it.
  [[nodiscard]] virtual CAbstractChunkEdit* Clone() = 0;
  /// Replaces the content with a copy of the source's. A source of another class leaves the object
  /// released.
  virtual void DeepCopy(CAbstractChunkEdit* source) = 0;
  /// Takes ownership of a child: true if its class has a place here, where it replaces, and
  /// destroys, an earlier one; otherwise the child is destroyed and the result is false.
  virtual bool SetSubChunkEdit(CAbstractChunkEdit* sub);
  /// Destroys every child and empties every list.
  virtual void Release() = 0;

 protected:
  CAbstractChunkEdit() = default;
};

/// Whether two edit objects are of the same class and hold the same.
QENZOR_EXPORT bool operator==(const CAbstractChunkEdit& a, const CAbstractChunkEdit& b);

/// The edit object as a T when it is one, else null.
template <class T>
T* class_cast(CAbstractChunkEdit* edit) noexcept {
  return dynamic_cast<T*>(edit);
}
template <class T>
const T* class_cast(const CAbstractChunkEdit* edit) noexcept {
  return dynamic_cast<const T*>(edit);
}

}  // namespace qenzor
