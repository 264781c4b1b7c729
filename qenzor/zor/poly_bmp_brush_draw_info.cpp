#include "qenzor/zor/poly_bmp_brush_draw_info.h"

#include "qenzor/zor/draw_info_of_impl.h"

namespace qenzor {

template class CChunkOf<CPolyBmpBrushDrawInfo, CAbstractDrawInfo,
                        DrawInfoData<PolyBmpBrushDrawComData, PolyBmpBrushDrawScData, ChunkForm>>;
template class CEditOf<CPolyBmpBrushDrawInfoEdit, CPolyBmpBrushDrawInfo, CAbstractDrawInfoEdit,
                       DrawInfoData<PolyBmpBrushDrawComData, PolyBmpBrushDrawScData, EditForm>>;
template class CConverterOf<CPolyBmpBrushDrawInfo, CPolyBmpBrushDrawInfoEdit>;
template class CDrawInfoConverterOf<CPolyBmpBrushDrawInfo, CPolyBmpBrushDrawInfoEdit>;

}  // namespace qenzor
