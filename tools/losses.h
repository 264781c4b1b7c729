#pragma once

#include <string>

#include "input.h"
#include "qenzor/text/xml_options.h"

namespace tool {

/// What of a binary document its XML form does not hold, in one line; empty when that is nothing.
std::string DescribeLosses(const Input& input, BinaryKind kind, qenzor::XmlEncoding encoding);

}  // namespace tool
