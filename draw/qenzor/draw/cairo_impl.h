#pragma once

#include <cairo.h>

#include <cstdint>
#include <memory>

namespace qenzor {

/// Owners of the drawing libraries' objects.
template <auto Free>
struct FreeWith {
  template <class T>
  void operator()(T* object) const {
    Free(object);
  }
};

using SurfaceHolder = std::unique_ptr<cairo_surface_t, FreeWith<&cairo_surface_destroy>>;
using PatternHolder = std::unique_ptr<cairo_pattern_t, FreeWith<&cairo_pattern_destroy>>;
using CairoHolder = std::unique_ptr<cairo_t, FreeWith<&cairo_destroy>>;

inline void SetColor(cairo_t* cairo, std::uint32_t color) {
  constexpr double kMost = 255;
  const auto part = [color](unsigned shift) { return ((color >> shift) & 0xFFU) / kMost; };
  cairo_set_source_rgba(cairo, part(16), part(8), part(0), part(24));
}

}  // namespace qenzor
