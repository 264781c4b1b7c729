#include "qenzor/qen/abstract_added_obj_info.h"

namespace qenzor {

constinit const CRuntimeClass CAbstractAddedObjInfo::kRuntimeClass{"AbstractAddedObjInfo",
                                                                   &CAbstractChunk::kRuntimeClass};

const CRuntimeClass& CAbstractAddedObjInfo::GetRuntimeClass() const { return kRuntimeClass; }

}  // namespace qenzor
