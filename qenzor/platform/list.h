#pragma once

#include <vector>

#include "qenzor/platform/standard.h"

namespace qenzor {

/// An ordered list: contiguous, because walking and indexing are what callers do most.
template <class T>
using CList = std::vector<T>;

}  // namespace qenzor
