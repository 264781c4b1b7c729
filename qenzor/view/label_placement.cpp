#include "qenzor/view/label_placement.h"

#include <cmath>
#include <numbers>

namespace qenzor {

namespace {

constexpr double kFullTurn = 360;

double Finite(double value) { return std::isfinite(value) ? value : 0; }

/// From 0 to below a full turn.
double Turn(float angle) {
  const double turn = std::fmod(Finite(angle), kFullTurn);
  const double positive = turn < 0 ? turn + kFullTurn : turn;
  return positive >= kFullTurn ? 0 : positive;
}

}  // namespace

LabelPlacement PlacementOf(const CCmbLblObj& label) {
  LabelPlacement placement;
  const auto kind = static_cast<std::uint8_t>(label.GetLabelOrgPosKind());
  placement.Anchor = kind >= 1 && kind <= 9 ? kind : 1;
  placement.Align = label.GetLabelAlign();
  placement.Angle = Turn(label.Angle);
  const double distance = Finite(label.LblOffsetFontRate);
  const double direction = Turn(label.LblOffsetAngle) * std::numbers::pi / (kFullTurn / 2);
  placement.OffsetX = distance * std::cos(direction);
  placement.OffsetY = distance * std::sin(direction);
  placement.IsVertical = label.IsFontVirtical();
  return placement;
}

}  // namespace qenzor
