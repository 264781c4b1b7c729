#pragma once

#include <cstdint>
#include <memory>
#include <set>

#include "qenzor/qen/qen.h"
#include "qenzor/zor/zor.h"

namespace world {

/// The z-ids of the areas of a sample map.
std::set<std::uint64_t> AreaIdsOf(const qenzor::CQen& map);

/// How the sample map is drawn; samples/README.md describes it.
std::unique_ptr<qenzor::CZorEdit> BuildWorldStyle(const std::set<std::uint64_t>& area_ids);

}  // namespace world
