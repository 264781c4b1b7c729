#include "qenzor/zor/cmb_lbl_draw_info.h"

#include "qenzor/zor/draw_info_of_impl.h"

namespace qenzor {

template class CChunkOf<CCmbLblDrawInfo, CAbstractDrawInfo,
                        DrawInfoData<CmbLblDrawComData, CmbLblDrawScData, ChunkForm>>;
template class CEditOf<CCmbLblDrawInfoEdit, CCmbLblDrawInfo, CAbstractDrawInfoEdit,
                       DrawInfoData<CmbLblDrawComData, CmbLblDrawScData, EditForm>>;
template class CConverterOf<CCmbLblDrawInfo, CCmbLblDrawInfoEdit>;
template class CDrawInfoConverterOf<CCmbLblDrawInfo, CCmbLblDrawInfoEdit>;

}  // namespace qenzor
