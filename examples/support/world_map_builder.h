#pragma once

#include <memory>

#include "examples/support/topology.h"
#include "qenzor/qen/qen.h"

namespace world {

/// The sample map of the world; samples/README.md describes its layers, ids and units. Throws
/// std::exception when the topology does not fit into it.
std::unique_ptr<qenzor::CQenEdit> BuildWorldMap(const Topology& topology);

}  // namespace world
