#include "qenzor/zor/line_draw_info.h"

#include "qenzor/zor/draw_info_of_impl.h"

namespace qenzor {

template class CChunkOf<CLineDrawInfo, CAbstractDrawInfo,
                        DrawInfoFields<LineDrawCommon, LineDrawScale, ChunkForm>>;
template class CEditOf<CLineDrawInfo>;
template class CConverterOf<CLineDrawInfo>;
template class CDrawInfoConverterOf<CLineDrawInfo>;

}  // namespace qenzor
