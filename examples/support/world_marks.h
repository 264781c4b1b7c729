#pragma once

#include <cstdint>
#include <memory>

#include "qenzor/zor/mark_data_set.h"

namespace world {

/// The marks of the sample's drawing, by their positions in the set.
enum class Mark : std::uint32_t { kCapital, kAirport };

std::unique_ptr<qenzor::CMarkDataSetEdit> BuildMarks();

}  // namespace world
