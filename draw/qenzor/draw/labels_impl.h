#pragma once

#include <cstddef>
#include <optional>
#include <unordered_map>
#include <vector>

#include "qenzor/draw/render.h"
#include "qenzor/draw/taken_places_impl.h"
#include "qenzor/draw/text_setter_impl.h"

namespace qenzor {

/// Draws marks and texts, each label as a whole or not at all.
class CLabels {
 public:
  CLabels(cairo_t* cairo, const CPage& page, const PageBox& visible, const RenderOptions& options,
          double device_scale, WarningSink warn);

  void Add(const DrawOrigin& origin, const MarkOp& op);
  void Add(const DrawOrigin& origin, const TextOp& op);
  /// Draws a mark that stands alone and is still held back.
  void Finish();
  std::size_t CountLeftOut() const { return m_left_out; }

 private:
  struct PendingMark {
    std::uint32_t Sequence = 0;
    MarkOp Op;
  };

  /// Whether a label of these parts is to be drawn; then its place is taken.
  bool TakePlace(const std::vector<PageBox>& parts);
  const PageBox& ExtentOf(const MarkOp& op);
  PageBox BoxOf(const MarkOp& op);
  void Draw(const MarkOp& op);
  void DrawFrame(const LabelFrame& frame, const PageBox& text) const;

  cairo_t* m_cairo;
  const CPage& m_page;
  PageBox m_visible;
  bool m_all;
  double m_device_scale;
  WarningSink m_warn;
  CTextSetter m_setter;
  CTakenPlaces m_taken;
  std::unordered_map<std::uint32_t, PageBox> m_extents;  // of marks, at scale 1
  std::optional<PendingMark> m_mark;
  std::size_t m_left_out = 0;
  std::size_t m_mark_points = 0;
};

}  // namespace qenzor
