#pragma once

// Maps as numpy arrays.

#include <pybind11/numpy.h>

#include "objects.h"

namespace qenzor::python {

/// The objects of a kind in the layers that pass the filters: the points of all, in int32 or, in
/// the frame's coordinates, in doubles; where each object's begin; its z-id and its segment.
pybind11::tuple MakeArrays(const CQen& map, const CFrame& frame, const Filters& filters,
                           bool in_frame);

/// The points of a segment, an array of n rows (x, y), in the frame's coordinates.
pybind11::array_t<double> PlacePoints(
    const CFrame& frame, std::uint16_t segment,
    const pybind11::array_t<std::int32_t, pybind11::array::c_style | pybind11::array::forcecast>&
        points);

}  // namespace qenzor::python
