#pragma once

#include "qenzor/platform/export.h"
#include "qenzor/platform/strings.h"

namespace qenzor {

/// The JSON schema, itself JSON, of what `qenzor check --json` prints: made from the table of
/// findings.
QENZOR_EXPORT CString FindingsSchema();

}  // namespace qenzor
