#pragma once

#include <string>

#include "qenzor/draw/draw_op.h"
#include "qenzor/platform/export.h"

namespace qenzor {

/// Appends one line of JSON, with its line feed, that tells all about a thing that is drawn.
/// Coordinates have 9 decimals at most, sizes 6; text is UTF-8.
QENZOR_EXPORT void AppendJsonLine(std::string& out, const DrawOrigin& origin, const DrawOp& op);

}  // namespace qenzor
