#pragma once

// Walks over a map's objects.

#include "documents.h"
#include "qenzor/view/filters.h"
#include "qenzor/view/frame.h"

namespace qenzor::python {

/// Adds the Python type of the walk.
void InitWalk(PyObject* module);
/// An iterator over the objects that pass the filters.
PyObject* WalkObjects(Store& store, const CQen& map, const CFrame& frame, Filters filters);

}  // namespace qenzor::python
