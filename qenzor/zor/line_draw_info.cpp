#include "qenzor/zor/line_draw_info.h"

#include "qenzor/zor/draw_info_of_impl.h"

namespace qenzor {

template class CChunkOf<CLineDrawInfo, CAbstractDrawInfo,
                        DrawInfoData<LineDrawComData, LineDrawScData, ChunkForm>>;
template class CEditOf<CLineDrawInfoEdit, CLineDrawInfo, CAbstractDrawInfoEdit,
                       DrawInfoData<LineDrawComData, LineDrawScData, EditForm>>;
template class CConverterOf<CLineDrawInfo, CLineDrawInfoEdit>;
template class CDrawInfoConverterOf<CLineDrawInfo, CLineDrawInfoEdit>;

}  // namespace qenzor
