#pragma once

#include <cstdint>

#include "qenzor/platform/export.h"
#include "qenzor/qen/cmb_lbl_obj.h"

namespace qenzor {

/// How a label stands, in numbers that can be counted on, whatever the object holds. Angles are in
/// degrees counter-clockwise from east, 0 to below 360.
struct LabelPlacement {
  std::uint8_t Anchor = 1;  ///< which point of the text's box stands at the anchor, 1 to 9
  LabelAlign Align = LabelAlign::kLeft;  ///< of several lines
  double Angle = 0;                      ///< of the text
  double OffsetX = 0;  ///< of the anchor from the object's point, in font sizes, to the east
  double OffsetY = 0;  ///< and to the north
  bool IsVertical = false;
};

QENZOR_EXPORT LabelPlacement PlacementOf(const CCmbLblObj& label);

}  // namespace qenzor
