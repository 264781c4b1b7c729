#include "qenzor/edit/abstract_chunk_edit.h"

#include "qenzor/core/class_row_impl.h"

namespace qenzor {

CAbstractChunkEdit::~CAbstractChunkEdit() = default;

bool CAbstractChunkEdit::SetSubChunkEdit(CAbstractChunkEdit* sub) {
  delete sub;
  return false;
}

bool operator==(const CAbstractChunkEdit& a, const CAbstractChunkEdit& b) {
  for (const ClassRow& row : ClassRows())
    if (row.IsEdit(a)) return row.IsEdit(b) && row.EqualEdits(a, b);
  return &a == &b;
}

}  // namespace qenzor
