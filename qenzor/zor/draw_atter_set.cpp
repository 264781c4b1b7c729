#include "qenzor/zor/draw_atter_set.h"

#include "qenzor/core/chunk_set_impl.h"
#include "qenzor/edit/chunk_set_edit_impl.h"
#include "qenzor/text/chunk_set_text_converter_impl.h"

namespace qenzor {

template class CAbstractChunkSet<CDrawAtter*>;
template class CChunkSetMap<std::uint64_t, CDrawAtter*>;
template class CSetOf<CDrawAtterSet, CChunkSetMap<std::uint64_t, CDrawAtter*>>;
template class CAbstractChunkSetEdit<CDrawAtterEdit*>;
template class CChunkSetMapEdit<std::uint64_t, CDrawAtter*, CDrawAtterEdit*>;
template class CSetEditOf<CDrawAtterSetEdit, CDrawAtterSet,
                          CChunkSetMapEdit<std::uint64_t, CDrawAtter*, CDrawAtterEdit*>>;
template class CChunkSetMapTextConverter<std::uint64_t, CDrawAtter*>;
template class CSetConverterOf<CChunkSetMapTextConverter<std::uint64_t, CDrawAtter*>>;

void CDrawAtterSet::AddElem(std::uint32_t /*index*/, CDrawAtter* elem) {
  if (elem != nullptr) m_elems.Set(elem->GetKey(), std::unique_ptr<CDrawAtter>(elem));
}

void CDrawAtterSetEdit::AddElem(CDrawAtterEdit* elem) {
  if (elem != nullptr) m_elems.Set(elem->GetKey(), std::unique_ptr<CDrawAtterEdit>(elem));
}

}  // namespace qenzor
