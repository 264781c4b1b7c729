#include "qenzor/zor/cmb_lbl_draw_info.h"

#include "qenzor/zor/draw_info_of_impl.h"

namespace qenzor {

template class CChunkOf<CCmbLblDrawInfo, CAbstractDrawInfo,
                        DrawInfoFields<CmbLblDrawCommon, CmbLblDrawScale, ChunkForm>>;
template class CEditOf<CCmbLblDrawInfo>;
template class CConverterOf<CCmbLblDrawInfo>;
template class CDrawInfoConverterOf<CCmbLblDrawInfo>;

}  // namespace qenzor
