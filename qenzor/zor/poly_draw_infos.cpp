// The three kinds of draw info for polygons.

#include "qenzor/zor/draw_info_of_impl.h"
#include "qenzor/zor/poly_bmp_brush_draw_info.h"
#include "qenzor/zor/poly_shadow_draw_info.h"
#include "qenzor/zor/poly_solid_brush_draw_info.h"

namespace qenzor {

template class CChunkOf<CPolyBmpBrushDrawInfo, CAbstractDrawInfo,
                        DrawInfoFields<PolyBmpBrushDrawCommon, PolyBmpBrushDrawScale, ChunkForm>>;
template class CEditOf<CPolyBmpBrushDrawInfo>;
template class CConverterOf<CPolyBmpBrushDrawInfo>;
template class CDrawInfoConverterOf<CPolyBmpBrushDrawInfo>;

template class CChunkOf<CPolyShadowDrawInfo, CAbstractDrawInfo,
                        DrawInfoFields<PolyShadowDrawCommon, PolyShadowDrawScale, ChunkForm>>;
template class CEditOf<CPolyShadowDrawInfo>;
template class CConverterOf<CPolyShadowDrawInfo>;
template class CDrawInfoConverterOf<CPolyShadowDrawInfo>;

template class CChunkOf<
    CPolySolidBrushDrawInfo, CAbstractDrawInfo,
    DrawInfoFields<PolySolidBrushDrawCommon, PolySolidBrushDrawScale, ChunkForm>>;
template class CEditOf<CPolySolidBrushDrawInfo>;
template class CConverterOf<CPolySolidBrushDrawInfo>;
template class CDrawInfoConverterOf<CPolySolidBrushDrawInfo>;

}  // namespace qenzor
