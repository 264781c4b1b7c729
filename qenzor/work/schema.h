#pragma once

#include "qenzor/catalogue.h"
#include "qenzor/platform/export.h"
#include "qenzor/platform/strings.h"

namespace qenzor {

// Descriptions of what documents look like, made from the field lists. They say which elements and
// members there are, in which order and of which kind, not what their values mean.

/// An XML Schema (1.0) of a document's XML form, which accepts all that is written.
QENZOR_EXPORT CString RenderXmlSchema(ClassFamily document);
/// A JSON schema (draft-07) of change documents.
QENZOR_EXPORT CString RenderChangesSchema();

}  // namespace qenzor
