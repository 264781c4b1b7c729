#include "qenzor/edit/chunk_edit_factory.h"

#include <memory>
#include <new>

#include "qenzor/core/class_row_impl.h"
#include "qenzor/edit/chunk_edit_impl.h"

namespace qenzor {

std::unique_ptr<CAbstractChunkEdit> MakeEdit(CAbstractChunk& chunk) {
  const ClassRow* row = FindRow(chunk);
  if (row == nullptr) return nullptr;
  std::unique_ptr<CAbstractChunkEdit> edit(row->CreateEdit());
  edit->ChunkDataToEditData(&chunk);
  return edit;
}

CAbstractChunkEdit* CChunkEditFactory::CreateInstance(CAbstractChunk* chunk) try {
  return chunk == nullptr ? nullptr : MakeEdit(*chunk).release();
} catch (const std::bad_alloc&) {
  return nullptr;
}

CAbstractChunkEdit* CChunkEditFactory::CreateInitInstance(CAbstractChunkTextConverter* conv) try {
  if (conv != nullptr)
    for (const ClassRow& row : ClassRows())
      if (row.IsConverter(*conv)) return row.CreateEdit();
  return nullptr;
} catch (const std::bad_alloc&) {
  return nullptr;
}

}  // namespace qenzor
