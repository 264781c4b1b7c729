#include "qenzor/edit/abstract_chunk_edit.h"

namespace qenzor {

CAbstractChunkEdit::~CAbstractChunkEdit() = default;

bool CAbstractChunkEdit::SetSubChunkEdit(CAbstractChunkEdit* sub) {
  delete sub;
  return false;
}

}  // namespace qenzor
