#include "qenzor/zor/poly_solid_brush_draw_info.h"

#include "qenzor/zor/draw_info_of_impl.h"

namespace qenzor {

template class CChunkOf<
    CPolySolidBrushDrawInfo, CAbstractDrawInfo,
    DrawInfoData<PolySolidBrushDrawComData, PolySolidBrushDrawScData, ChunkForm>>;
template class CEditOf<CPolySolidBrushDrawInfoEdit, CPolySolidBrushDrawInfo, CAbstractDrawInfoEdit,
                       DrawInfoData<PolySolidBrushDrawComData, PolySolidBrushDrawScData, EditForm>>;
template class CConverterOf<CPolySolidBrushDrawInfo, CPolySolidBrushDrawInfoEdit>;
template class CDrawInfoConverterOf<CPolySolidBrushDrawInfo, CPolySolidBrushDrawInfoEdit>;

}  // namespace qenzor
