#pragma once

#include <cstdint>
#include <span>

#include "qenzor/draw/cairo_impl.h"
#include "qenzor/draw/clip_impl.h"

namespace qenzor {

/// How a line is drawn.
struct Pen {
  std::uint32_t Color = 0;
  double Width = 1;
  std::uint8_t Code = 0;  ///< as that of a stroke
  double Aspect = 1;
};

/// Strokes what lies in or near the visible part of the picture, with round joins and butt caps.
void StrokeLine(cairo_t* cairo, std::span<const PagePoint> line, const Pen& pen,
                const PageBox& visible);

}  // namespace qenzor
