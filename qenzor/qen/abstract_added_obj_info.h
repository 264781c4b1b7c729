#pragma once

#include "qenzor/core/abstract_chunk.h"
#include "qenzor/edit/abstract_chunk_edit.h"

namespace qenzor {

/// Any kind of information that a map object carries beside its geometry.
class QENZOR_EXPORT CAbstractAddedObjInfo : public CAbstractChunk {
 public:
  static const CRuntimeClass kRuntimeClass;
  const CRuntimeClass& GetRuntimeClass() const override;
};

class QENZOR_EXPORT CAbstractAddedObjInfoEdit : public CAbstractChunkEdit {};

}  // namespace qenzor
