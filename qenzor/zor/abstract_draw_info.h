#pragma once

#include "qenzor/core/abstract_chunk.h"
#include "qenzor/edit/abstract_chunk_edit.h"

namespace qenzor {

/// Tells how one kind of map object is drawn. The library carries its values and never evaluates
/// them.
class QENZOR_EXPORT CAbstractDrawInfo : public CAbstractChunk {
 public:
  static const CRuntimeClass kRuntimeClass;
  const CRuntimeClass& GetRuntimeClass() const override;
};

class QENZOR_EXPORT CAbstractDrawInfoEdit : public CAbstractChunkEdit {};

}  // namespace qenzor
