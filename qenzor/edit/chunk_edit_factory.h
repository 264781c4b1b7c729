#pragma once

#include "qenzor/edit/abstract_chunk_edit.h"

namespace qenzor {

class CAbstractChunkTextConverter;

/// Makes the edit object of a chunk, or an empty one for a text converter. The caller owns what is
/// returned; null when the class has no edit form or memory runs out.
class QENZOR_EXPORT CChunkEditFactory {
 public:
  /// The edit object that belongs to the chunk's class, filled from the chunk.
  [[nodiscard]] static CAbstractChunkEdit* CreateInstance(CAbstractChunk* chunk);
  /// An empty edit object of the class that belongs to the converter's.
  [[nodiscard]] static CAbstractChunkEdit* CreateInitInstance(CAbstractChunkTextConverter* conv);
};

}  // namespace qenzor
