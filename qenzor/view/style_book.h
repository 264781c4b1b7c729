#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <variant>
#include <vector>

#include "qenzor/platform/export.h"
#include "qenzor/platform/strings.h"
#include "qenzor/view/frame.h"
#include "qenzor/view/objects.h"
#include "qenzor/zor/zor.h"

namespace qenzor {

// How things are drawn at one scale. Sizes are in 1/96 inch and within 0 to 4096, offsets within
// -4096 to 4096 each, x to the east and y to the north. Colours are 0xAARRGGBB.

struct StrokeStyle {
  std::uint32_t Color = 0;
  std::uint8_t Code = 0;  ///< 0 solid, 1 dashes, 2 dots, 3 dash dot, 4 dash dot dot
  double Aspect = 1;      ///< by which the lengths of the pattern are multiplied
  double Width = 0;
};

struct FillStyle {
  std::uint32_t Color = 0;
};

struct PatternStyle {
  CStringW Name;  ///< as stored
};

struct ShadowStyle {
  std::uint32_t Color = 0;
  double OffsetX = 0;
  double OffsetY = 0;
};

struct LabelStyle {
  enum class FrameKind : std::uint8_t { kNone, kRectangle, kRoundedRectangle, kEllipse };

  bool ShowsText = true;
  bool ShowsMark = false;
  std::uint32_t Mark = 0;  ///< position in the mark data set
  double MarkScale = 0;
  std::uint8_t FontId = 0;
  double FontSize = 0;
  std::uint32_t Color = 0;
  FrameKind Frame = FrameKind::kNone;
  std::uint32_t FrameColor = 0;
  double FrameWidth = 0;
  double FrameMargin = 0;
  bool IsShaded = false;
  std::uint32_t ShadowColor = 0;
  double ShadowOffset = 0;  ///< to the east and to the south; 0 is a halo
};

struct RasterRectStyle {
  CStringW Name;
  std::uint32_t ColorKey = 0;
  std::uint8_t Alpha = 255;
};

struct RasterPointStyle {
  CStringW Name;
  std::uint32_t ColorKey = 0;
  double Width = 0;
};

using Style = std::variant<StrokeStyle, FillStyle, PatternStyle, ShadowStyle, LabelStyle,
                           RasterRectStyle, RasterPointStyle>;

/// The pattern of a stroke of that code, in widths of it times its aspect: line and gap by turns;
/// nothing for a solid one.
QENZOR_EXPORT std::span<const double> StrokePattern(std::uint8_t code);

/// In the order in which they are drawn.
enum class DrawSort : std::uint8_t { kShadow, kArea, kLine, kImage, kLabel };

QENZOR_EXPORT DrawSort SortOf(const Style& style);

/// What is left of an image's name behind the last '/', '\\' or ':'.
QENZOR_EXPORT std::u16string_view BareName(std::u16string_view name);

/// A draw info that draws an object at a scale.
struct AppliedStyle {
  /// Position of the draw info in its set, or kDefaultInfo.
  std::int64_t Info = 0;
  Style How;
};

inline constexpr std::int64_t kDefaultInfo = -1;

/// A stored size or offset as it is at 1:denominator, held within the limits. Sensitivities that
/// are not finite count as 0.
QENZOR_EXPORT double SizeAt(double stored, std::uint32_t denom_max, float sensitivity,
                            double denominator);
/// The same for the width of a stroke, which is at least 0.1 unless it is stored as 0.
QENZOR_EXPORT double WidthAt(double stored, std::uint32_t denom_max, float sensitivity,
                             double denominator);

/// Scales from 1:Least to 1:Most.
struct ScaleBand {
  std::uint32_t Least = 0;
  std::uint32_t Most = 0;

  bool operator==(const ScaleBand&) const = default;
};

/// Tells which draw infos of a drawing draw an object. docs/drawing.md tells the rules.
class QENZOR_EXPORT CStyleBook {
 public:
  /// Draw infos of one attribute; no map needs a hundredth of it.
  static constexpr std::size_t kMaxInfos = 1024;
  /// Records of one draw info that FindBands looks at; drawings have a handful.
  static constexpr std::size_t kMaxBandRecords = 256;

  /// The drawing may be null and must outlive the book otherwise. With default_style, and always
  /// without a drawing, objects whose z-id has no draw attribute are drawn plainly. The sink hears
  /// of what is passed over, each time it is.
  explicit CStyleBook(const CZor* drawing, bool default_style = false, WarningSink warn = {});

  /// What draws objects of the kind with the z-id at 1:denominator, in the order of the attribute's
  /// list. Styles of size 0 are among them. The denominator is above 0. Of a list longer than
  /// kMaxInfos the rest is passed over.
  std::vector<AppliedStyle> Find(std::uint64_t z_id, ObjectKind kind, double denominator);

  /// The draw infos, whatever the scale, that Find chooses from.
  std::vector<std::int64_t> FindInfos(std::uint64_t z_id, ObjectKind kind);
  /// How one that FindInfos gave draws objects of the kind at 1:denominator; nothing where no
  /// record holds.
  std::optional<Style> FindStyle(std::int64_t info, ObjectKind kind, double denominator) const;
  /// The bands in each of which one record of such a draw info holds, in ascending order. They do
  /// not overlap, though two may share an end; a record for a single scale has none.
  std::vector<ScaleBand> FindBands(std::int64_t info) const;

  /// The mark at the position, still the drawing's, or null.
  const CMarkData* GetMark(std::uint32_t position) const;

 private:
  /// The style of a draw info at the scale at hand, if it has one there.
  const std::optional<Style>& Resolve(std::uint32_t index, double denominator);

  const CZor* m_drawing;
  bool m_default_style;
  WarningSink m_warn;
  double m_denominator = 0;  ///< for which the draw infos below are resolved
  std::vector<std::optional<std::optional<Style>>> m_resolved;
};

}  // namespace qenzor
