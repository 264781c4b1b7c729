#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace tool {

using Json = nlohmann::ordered_json;

/// Prints JSON to standard output as such, bytes that are no UTF-8 replaced, or as indented lines
/// of names and values. Throws CFailure when standard output refuses it.
void PrintReport(const Json& report, bool as_json);
void PrintText(const std::string& text);

}  // namespace tool
