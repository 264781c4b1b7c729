// The two kinds of draw info for rasters.

#include "qenzor/zor/draw_info_of_impl.h"
#include "qenzor/zor/ras_ll_draw_info.h"
#include "qenzor/zor/ras_mm_draw_info.h"

namespace qenzor {

template class CChunkOf<CRasLLDrawInfo, CAbstractDrawInfo,
                        DrawInfoFields<RasDrawCommon, RasLLDrawScale, ChunkForm>>;
template class CEditOf<CRasLLDrawInfo>;
template class CConverterOf<CRasLLDrawInfo>;
template class CDrawInfoConverterOf<CRasLLDrawInfo>;

template class CChunkOf<CRasMMDrawInfo, CAbstractDrawInfo,
                        DrawInfoFields<RasDrawCommon, RasMMDrawScale, ChunkForm>>;
template class CEditOf<CRasMMDrawInfo>;
template class CConverterOf<CRasMMDrawInfo>;
template class CDrawInfoConverterOf<CRasMMDrawInfo>;

}  // namespace qenzor
