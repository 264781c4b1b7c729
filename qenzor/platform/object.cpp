#include "qenzor/platform/object.h"

namespace qenzor {

constinit const CRuntimeClass CObject::kRuntimeClass{"Object"};

CObject::~CObject() = default;

const CRuntimeClass& CObject::GetRuntimeClass() const { return kRuntimeClass; }

}  // namespace qenzor
