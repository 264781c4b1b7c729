#include "qenzor/qen/abstract_obj.h"

#include "qenzor/core/field_io_impl.h"
#include "qenzor/edit/field_edit_impl.h"

namespace qenzor {

constinit const CRuntimeClass CAbstractObj::kRuntimeClass{"AbstractObj",
                                                          &CAbstractChunk::kRuntimeClass};

const CRuntimeClass& CAbstractObj::GetRuntimeClass() const { return kRuntimeClass; }

void CAbstractObj::DeepCopy(CAbstractChunk* source) {
  if (source == this) return;
  const auto* same = class_cast<CAbstractObj>(source);  // what is released may be the source
  CAbstractObj::Release();
  if (same != nullptr) CopyFields(BaseFields(), *same, *this);
}

void CAbstractObj::SubChunkSet(std::uint32_t /*index*/, CAbstractChunk* chunk) {
  TakeSubChunk(BaseFields(), *this, chunk);
}

void CAbstractObj::Release() { ReleaseFields(BaseFields(), *this); }

bool CAbstractObjEdit::SetSubChunkEdit(CAbstractChunkEdit* sub) {
  return TakeSubChunkEdit(BaseFields(), *this, sub);
}

}  // namespace qenzor
