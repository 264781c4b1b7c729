#pragma once

#include <optional>
#include <vector>

#include "qenzor/draw/cairo_impl.h"
#include "qenzor/draw/clip_impl.h"
#include "qenzor/draw/draw_op.h"
#include "qenzor/draw/images_impl.h"
#include "qenzor/draw/labels_impl.h"
#include "qenzor/draw/render.h"

namespace qenzor {

/// Draws the things of a list, in the order in which they come, in units of 1/96 inch.
class CPainter {
 public:
  /// device_scale is how many of the surface's own units one of ours has.
  CPainter(cairo_t* cairo, const CPicture& picture, const RenderOptions& options,
           double device_scale, const WarningSink& warn);

  void Draw(const DrawOrigin& origin, const DrawOp& op);
  /// Draws what is still held back; to be called at the end.
  void Finish();
  std::size_t CountLabelsLeftOut() const { return m_labels.CountLeftOut(); }

 private:
  /// Areas that are filled as one path.
  struct Group {
    DrawOrigin Origin;
    std::size_t Op = 0;  ///< which alternative of DrawOp
    std::uint32_t Color = 0;
    std::u16string Pattern;
    std::size_t Points = 0;
  };

  void Paint(const ShadowOp& op);
  void Paint(const FillOp& op);
  void Paint(const PatternOp& op);
  void Paint(const StrokeOp& op);
  void Paint(const ImageOp& op);
  void JoinGroup(const DrawOrigin& origin, const DrawOp& op);
  void FillGroup();
  void AddRing(std::span<const MapPoint> points, double offset_x, double offset_y);
  void ToPage(std::span<const MapPoint> points, double offset_x, double offset_y);
  void SetPattern(const std::u16string& name);
  void SetBrush(cairo_pattern_t* pattern, int width, int height);
  void FillHatched(const PageBox& box);
  void PaintImage(const CImages::Image& image, const PageBox& box, double alpha);

  cairo_t* m_cairo;
  const CPage& m_page;
  PageBox m_visible;
  PagePoint m_south_west;
  CImages m_images;
  PatternHolder m_hatch;
  CLabels m_labels;
  std::optional<Group> m_group;
  std::vector<PagePoint> m_points;
};

}  // namespace qenzor
