#pragma once

#include "qenzor/core/abstract_chunk.h"
#include "qenzor/edit/abstract_chunk_edit.h"

namespace qenzor {

class CAbstractAddedObjInfoEdit;

/// Any kind of information that a map object carries beside its geometry.
class QENZOR_EXPORT CAbstractAddedObjInfo : public CAbstractChunk {
 public:
  using EditClass = CAbstractAddedObjInfoEdit;
  static const CRuntimeClass kRuntimeClass;
  const CRuntimeClass& GetRuntimeClass() const override;
};

class QENZOR_EXPORT CAbstractAddedObjInfoEdit : public CAbstractChunkEdit {
 public:
  using ChunkClass = CAbstractAddedObjInfo;
};

}  // namespace qenzor
