#include "qenzor/zor/draw_atter_set.h"

#include "qenzor/core/chunk_set_impl.h"
#include "qenzor/edit/chunk_set_edit_impl.h"

namespace qenzor {

template class CChunkSetMap<std::uint64_t, CDrawAtter*>;
template class CSetOf<CDrawAtterSet, CChunkSetMap<std::uint64_t, CDrawAtter*>>;
template class CChunkSetMapEdit<std::uint64_t, CDrawAtter*, CDrawAtterEdit*>;

void CDrawAtterSet::AddElem(std::uint32_t /*index*/, CDrawAtter* elem) {
  if (elem != nullptr) m_elems.Set(elem->GetKey(), std::unique_ptr<CDrawAtter>(elem));
}

void CDrawAtterSetEdit::AddElem(CDrawAtterEdit* elem) {
  if (elem != nullptr) m_elems.Set(elem->GetKey(), std::unique_ptr<CDrawAtterEdit>(elem));
}

}  // namespace qenzor
