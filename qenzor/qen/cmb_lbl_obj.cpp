#include "qenzor/qen/cmb_lbl_obj.h"

#include "qenzor/core/chunk_of_impl.h"
#include "qenzor/edit/edit_of_impl.h"
#include "qenzor/text/converter_of_impl.h"

namespace qenzor {

template class CChunkOf<CCmbLblObj, CAbstractObj, CmbLblObjData<ChunkForm>>;
template class CEditOf<CCmbLblObjEdit, CCmbLblObj, CAbstractObjEdit, CmbLblObjData<EditForm>>;
template class CConverterOf<CCmbLblObj, CCmbLblObjEdit>;

LabelOrginPosKind CCmbLblObj::GetLabelOrgPosKind() const {
  return static_cast<LabelOrginPosKind>(CtrlFlgs & 0xF);
}

LabelAlign CCmbLblObj::GetLabelAlign() const {
  constexpr std::array<std::uint8_t, 16> kAlignOfKind{0, 0, 1, 2, 2, 2, 1, 0, 0, 1};
  return static_cast<LabelAlign>(kAlignOfKind[CtrlFlgs & 0xF]);
}

bool CCmbLblObj::IsFontVirtical() const { return (CtrlFlgs & 1U << 4) != 0; }

bool CCmbLblObj::IsRestrainShowLabel() const { return (CtrlFlgs & 1U << 5) != 0; }

bool CCmbLblObj::IsRestrainShowMark() const { return (CtrlFlgs & 1U << 6) != 0; }

}  // namespace qenzor
