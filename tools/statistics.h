#pragma once

#include <nlohmann/json.hpp>

#include "qenzor/qen/qen.h"
#include "qenzor/zor/zor.h"

namespace tool {

/// The fields of a document's file info, under their XML tags.
nlohmann::ordered_json DescribeFileInfo(const qenzor::CQenEdit& edit);
nlohmann::ordered_json DescribeFileInfo(const qenzor::CZorEdit& edit);

/// Adds to the report what a document holds: how many objects of each class, records and points,
/// for a map also what each layer holds, layers of one number in all mesh segments taken together.
void DescribeContent(const qenzor::CQenEdit& edit, nlohmann::ordered_json& report);
void DescribeContent(const qenzor::CZorEdit& edit, nlohmann::ordered_json& report);

}  // namespace tool
