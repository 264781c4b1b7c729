#pragma once

#include <pango/pangocairo.h>

#include <map>
#include <memory>
#include <set>
#include <string>

#include "qenzor/draw/cairo_impl.h"
#include "qenzor/draw/clip_impl.h"
#include "qenzor/draw/draw_op.h"

namespace qenzor {

/// A text that has been set and can be drawn: its box as it stands before it is turned, relative to
/// the anchor, y downwards.
struct SetText {
  std::unique_ptr<PangoLayout, FreeWith<&g_object_unref>> Layout;
  PageBox Box;
};

/// Sets texts in fonts and draws them.
class CTextSetter {
 public:
  /// Families by font number; any other number is set in the default one.
  CTextSetter(std::map<std::uint8_t, std::string> families, WarningSink warn);

  SetText Set(const TextOp& op);
  /// Draws text and shadow, not the frame, with the cairo's origin at the anchor and turned as the
  /// text is. device_scale is how many pixels one unit has.
  void Draw(cairo_t* cairo, const TextOp& op, const SetText& text, double device_scale) const;

 private:
  using ContextHolder = std::unique_ptr<PangoContext, FreeWith<&g_object_unref>>;

  ContextHolder NewContext(bool vertical) const;
  void TellMissingGlyphs(PangoLayout* layout);

  std::map<std::uint8_t, std::string> m_families;
  WarningSink m_warn;
  std::unique_ptr<PangoFontMap, FreeWith<&g_object_unref>> m_fonts;
  ContextHolder m_horizontal;
  ContextHolder m_vertical;
  std::set<int> m_missing_scripts;
};

}  // namespace qenzor
