#pragma once

#include "qenzor/core/abstract_chunk.h"
#include "qenzor/edit/abstract_chunk_edit.h"

namespace qenzor {

class CAbstractDrawInfoEdit;

/// Tells how one kind of map object is drawn. The library carries its values and never evaluates
/// them.
class QENZOR_EXPORT CAbstractDrawInfo : public CAbstractChunk {
 public:
  using EditClass = CAbstractDrawInfoEdit;
  static const CRuntimeClass kRuntimeClass;
  const CRuntimeClass& GetRuntimeClass() const override;
};

class QENZOR_EXPORT CAbstractDrawInfoEdit : public CAbstractChunkEdit {
 public:
  using ChunkClass = CAbstractDrawInfo;
};

}  // namespace qenzor
