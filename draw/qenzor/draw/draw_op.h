#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string_view>
#include <variant>

#include "qenzor/view/frame.h"
#include "qenzor/zor/mark_data.h"

namespace qenzor {

// One struct for each thing that is drawn, all its numbers settled: places in the frame's
// coordinates, sizes and offsets in 1/96 inch, x to the east and y to the north, colours as
// 0xAARRGGBB. Views and spans are good as long as the call that hands the thing over.

/// From where in the documents a thing comes.
struct DrawOrigin {
  std::uint16_t Layer = 0;
  std::uint16_t Segment = 0;
  std::uint64_t ZId = 0;
  std::uint32_t Index = 0;     ///< of the object in its object set
  std::int64_t Info = 0;       ///< position of the draw info, or kDefaultInfo
  std::uint32_t Pass = 0;      ///< which of the object's draw infos of its sort this is, from 0
  std::uint32_t Sequence = 0;  ///< the same for mark and text of one label, for nothing else
};

struct ShadowOp {
  std::uint32_t Color = 0;
  double OffsetX = 0;
  double OffsetY = 0;
  std::span<const MapPoint> Points;  ///< a ring, closed or not
};

struct FillOp {
  std::uint32_t Color = 0;
  std::span<const MapPoint> Points;
};

struct PatternOp {
  std::u16string_view Name;  ///< of the image, bare
  std::span<const MapPoint> Points;
};

struct StrokeOp {
  std::uint32_t Color = 0;
  double Width = 0;
  std::uint8_t Code = 0;  ///< 0 solid, 1 dashes, 2 dots, 3 dash dot, 4 dash dot dot
  double Aspect = 1;      ///< by which the pattern is longer than its width asks for
  std::span<const MapPoint> Points;
};

/// An image over a rectangle, or centred at a point.
struct ImageOp {
  std::u16string_view Name;
  std::uint32_t ColorKey = 0;  ///< whose red, green and blue are transparent
  std::optional<MapBox> Rect;
  std::uint8_t Alpha = 255;  ///< over a rectangle
  MapPoint At;
  double Width = 0;  ///< at a point
};

struct MarkOp {
  std::uint32_t Mark = 0;  ///< position in the mark data set
  const CMarkData* Content = nullptr;
  double Scale = 0;
  MapPoint At;
};

struct LabelFrame {
  std::uint8_t Kind = 0;  ///< 1 rectangle, 2 rounded rectangle, 3 ellipse
  std::uint32_t Color = 0;
  double Width = 0;
  double Margin = 0;
};

struct TextShadow {
  std::uint32_t Color = 0;
  double Offset = 0;  ///< to the east and to the south; 0 is a halo one unit wide
};

struct TextOp {
  std::u16string_view Text;
  std::uint32_t Color = 0;
  std::uint8_t FontId = 0;
  double Size = 0;
  MapPoint At;         ///< the object's point
  double OffsetX = 0;  ///< of the anchor from it
  double OffsetY = 0;
  std::uint8_t Anchor = 1;  ///< which point of the text's box stands at the anchor, 1 to 9
  std::uint8_t Align = 0;   ///< of several lines: 0 left, 1 middle, 2 right
  double Angle = 0;         ///< in degrees counter-clockwise from east, 0 to below 360
  bool IsVertical = false;
  std::optional<LabelFrame> Frame;
  std::optional<TextShadow> Shadow;
};

using DrawOp = std::variant<ShadowOp, FillOp, PatternOp, StrokeOp, ImageOp, MarkOp, TextOp>;

using DrawSink = std::function<void(const DrawOrigin&, const DrawOp&)>;

}  // namespace qenzor
