#pragma once

#include <cstdint>
#include <optional>

#include "input.h"

namespace tool {

/// Where a binary document first differs from what it becomes when it is written as XML, read again
/// and written; nothing when it does not. Throws CFailure when it does not come through at all.
std::optional<std::uint64_t> FindRoundTripDifference(const Input& input, BinaryKind kind);

}  // namespace tool
