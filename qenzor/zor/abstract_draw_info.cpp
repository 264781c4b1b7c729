#include "qenzor/zor/abstract_draw_info.h"

namespace qenzor {

constinit const CRuntimeClass CAbstractDrawInfo::kRuntimeClass{"AbstractDrawInfo",
                                                               &CAbstractChunk::kRuntimeClass};

const CRuntimeClass& CAbstractDrawInfo::GetRuntimeClass() const { return kRuntimeClass; }

}  // namespace qenzor
