#pragma once

#include <string>
#include <string_view>

#include "qenzor/platform/export.h"
#include "qenzor/view/frame.h"
#include "qenzor/view/objects.h"

namespace qenzor {

// Pieces of JSON, appended to a text that the caller puts together.

/// A finite number with so many decimals at most, without needless zeros and never with an
/// exponent.
QENZOR_EXPORT void AppendJsonNumber(std::string& out, double value, int decimals);

/// A JSON string in UTF-8; half a surrogate pair becomes U+FFFD.
QENZOR_EXPORT void AppendJsonText(std::string& out, std::u16string_view text);
/// The same of text that is UTF-8 already.
QENZOR_EXPORT void AppendJsonText(std::string& out, std::string_view utf8);

/// The object's geometry by RFC 7946, with 9 decimals at most: LineString, Polygon (its ring closed
/// and counter-clockwise) or Point; null for lines of fewer than 2 points and areas of fewer than 3
/// different ones.
QENZOR_EXPORT void AppendGeometry(std::string& out, const ObjectAt& at, const CSegmentFrame& frame);

}  // namespace qenzor
