#pragma once

#include "qenzor/core/coding.h"

namespace qenzor {

// Numbers whose bytes are like any other's, and whose text is not.

/// A number that an XML element without text leaves as it is.
struct KeptNumberCoding : NumberCoding {};

/// A colour, 0xAARRGGBB; in XML an element with the attributes A, R, G and B.
struct ColorCoding : NumberCoding {};

/// The file magic, of which XML shows sixteen signed bits in hexadecimal.
struct MagicCoding : NumberCoding {};

}  // namespace qenzor
