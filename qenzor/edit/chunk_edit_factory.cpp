#include "qenzor/edit/chunk_edit_factory.h"

#include <memory>
#include <new>

#include "qenzor/edit/edit_rows_impl.h"

namespace qenzor {

const CChunkEditFactory::Row* FindEditRow(CAbstractChunk& chunk) {
  for (const CRuntimeClass* cls = &chunk.GetRuntimeClass(); cls != nullptr; cls = cls->Base)
    for (const CChunkEditFactory::Row& row : EditRows())
      if (row.Chunk == cls) return &row;
  return nullptr;
}

std::unique_ptr<CAbstractChunkEdit> MakeEdit(CAbstractChunk& chunk) {
  const CChunkEditFactory::Row* row = FindEditRow(chunk);
  if (row == nullptr) return nullptr;
  std::unique_ptr<CAbstractChunkEdit> edit(row->Create());
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
    for (const Row& row : EditRows())
      if (row.IsConverter(*conv)) return row.Create();
  return nullptr;
} catch (const std::bad_alloc&) {
  return nullptr;
}

}  // namespace qenzor
