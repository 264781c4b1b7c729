#include "qenzor/zor/poly_shadow_draw_info.h"

#include "qenzor/zor/draw_info_of_impl.h"

namespace qenzor {

template class CChunkOf<CPolyShadowDrawInfo, CAbstractDrawInfo,
                        DrawInfoData<PolyShadowDrawComData, PolyShadowDrawScData, ChunkForm>>;
template class CEditOf<CPolyShadowDrawInfoEdit, CPolyShadowDrawInfo, CAbstractDrawInfoEdit,
                       DrawInfoData<PolyShadowDrawComData, PolyShadowDrawScData, EditForm>>;
template class CConverterOf<CPolyShadowDrawInfo, CPolyShadowDrawInfoEdit>;
template class CDrawInfoConverterOf<CPolyShadowDrawInfo, CPolyShadowDrawInfoEdit>;

}  // namespace qenzor
