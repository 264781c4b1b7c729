#include <array>
#include <cmath>
#include <cstdio>
#include <numbers>
#include <string_view>
#include <utility>

#include "qenzor/draw/text_setter_impl.h"
#include "qenzor/platform/code_page.h"

namespace qenzor {

namespace {

constexpr double kMaxTextLength = 1e6;       // in units: what the 32-bit numbers of layouts bear
constexpr double kLargestCachedGlyph = 256;  // pixels; larger ones are drawn as outlines
constexpr const char* kDefaultFamily = "sans-serif";
constexpr double kHaloWidth = 1;

/// The text without control characters but line feeds, cut where it would be too long to set.
std::string PrintableText(const TextOp& op) {
  const auto most = static_cast<std::size_t>(kMaxTextLength / std::max(op.Size, 1.0));
  std::u16string text(op.Text.substr(0, most));
  std::erase_if(text, [](char16_t c) { return (c < u' ' && c != u'\n') || c == 0x7F; });
  return EncodeText(text, TextEncoding::kUtf8);
}

struct FontDeleter {
  void operator()(PangoFontDescription* font) const { pango_font_description_free(font); }
};

}  // namespace

CTextSetter::CTextSetter(std::map<std::uint8_t, std::string> families, WarningSink warn)
    : m_families(std::move(families)),
      m_warn(std::move(warn)),
      m_fonts(pango_cairo_font_map_new()),
      m_horizontal(NewContext(false)),
      m_vertical(NewContext(true)) {}

CTextSetter::ContextHolder CTextSetter::NewContext(bool vertical) const {
  ContextHolder context(pango_font_map_create_context(m_fonts.get()));
  // The same outlines at every size and on every screen.
  cairo_font_options_t* options = cairo_font_options_create();
  cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
  cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
  cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
  pango_cairo_context_set_font_options(context.get(), options);
  cairo_font_options_destroy(options);
  pango_cairo_context_set_resolution(context.get(), CPage::kUnitsPerInch);
  pango_context_set_language(context.get(), pango_language_from_string("ja"));
  if (vertical) {
    pango_context_set_base_gravity(context.get(), PANGO_GRAVITY_EAST);
    pango_context_set_gravity_hint(context.get(), PANGO_GRAVITY_HINT_NATURAL);
  }
  return context;
}

SetText CTextSetter::Set(const TextOp& op) {
  SetText text;
  text.Layout.reset(pango_layout_new((op.IsVertical ? m_vertical : m_horizontal).get()));
  PangoLayout* layout = text.Layout.get();
  const auto family = m_families.find(op.FontId);
  const std::unique_ptr<PangoFontDescription, FontDeleter> font(pango_font_description_new());
  pango_font_description_set_family(
      font.get(), family == m_families.end() ? kDefaultFamily : family->second.c_str());
  pango_font_description_set_absolute_size(font.get(), op.Size * PANGO_SCALE);
  pango_layout_set_font_description(layout, font.get());
  constexpr std::array kAlignments{PANGO_ALIGN_LEFT, PANGO_ALIGN_CENTER, PANGO_ALIGN_RIGHT};
  pango_layout_set_alignment(layout, kAlignments[op.Align]);
  const std::string utf8 = PrintableText(op);
  pango_layout_set_text(layout, utf8.data(), static_cast<int>(utf8.size()));
  if (pango_layout_get_unknown_glyphs_count(layout) > 0) TellMissingGlyphs(layout);

  int length = 0;
  int depth = 0;
  pango_layout_get_size(layout, &length, &depth);
  double width = static_cast<double>(length) / PANGO_SCALE;
  double height = static_cast<double>(depth) / PANGO_SCALE;
  if (op.IsVertical) std::swap(width, height);
  // Where the box begins, in shares of its size, for anchors 1 to 9.
  constexpr std::array<double, 10> kWest{0, 0, .5, 1, 1, 1, .5, 0, 0, .5};
  constexpr std::array<double, 10> kNorth{0, 1, 1, 1, .5, 0, 0, 0, .5, .5};
  const double left = -width * kWest[op.Anchor];
  const double top = -height * kNorth[op.Anchor];
  text.Box = {left, top, left + width, top + height};
  return text;
}

void CTextSetter::TellMissingGlyphs(PangoLayout* layout) {
  const std::unique_ptr<PangoLayoutIter, FreeWith<&pango_layout_iter_free>> runs(
      pango_layout_get_iter(layout));
  do {
    const PangoLayoutRun* run = pango_layout_iter_get_run_readonly(runs.get());
    for (int i = 0; run != nullptr && i < run->glyphs->num_glyphs; ++i) {
      const PangoGlyph glyph = run->glyphs->glyphs[i].glyph;
      if (glyph == PANGO_GLYPH_EMPTY || (glyph & PANGO_GLYPH_UNKNOWN_FLAG) == 0) continue;
      const gunichar character = glyph & ~PANGO_GLYPH_UNKNOWN_FLAG;
      const GUnicodeScript script = g_unichar_get_script(character);
      if (!m_missing_scripts.insert(script).second) continue;
      const guint32 name = g_unicode_script_to_iso15924(script);
      std::array<char, 120> message{};
      static_cast<void>(
          std::snprintf(message.data(), message.size(),
                        "the fonts lack characters of the script %c%c%c%c, the first is U+%04X",
                        static_cast<char>(name >> 24U), static_cast<char>(name >> 16U),
                        static_cast<char>(name >> 8U), static_cast<char>(name), character));
      m_warn(message.data());
    }
  } while (pango_layout_iter_next_run(runs.get()) != 0);
}

void CTextSetter::Draw(cairo_t* cairo, const TextOp& op, const SetText& text,
                       double device_scale) const {
  PangoLayout* layout = text.Layout.get();
  const bool as_outlines = op.Size * device_scale > kLargestCachedGlyph;
  const auto show = [&](std::uint32_t color) {
    SetColor(cairo, color);
    cairo_move_to(cairo, 0, 0);
    if (as_outlines) {
      pango_cairo_layout_path(cairo, layout);
      cairo_fill(cairo);
    } else {
      pango_cairo_show_layout(cairo, layout);
    }
    cairo_new_path(cairo);
  };
  // A vertical text is set along a line that goes down from the upper right corner of its box.
  const auto go_to_start = [&] {
    cairo_translate(cairo, op.IsVertical ? text.Box.Right : text.Box.Left, text.Box.Top);
    if (op.IsVertical) cairo_rotate(cairo, std::numbers::pi / 2);
  };
  cairo_save(cairo);
  if (op.Shadow.has_value() && op.Shadow->Offset != 0) {
    cairo_save(cairo);
    // East and south of the picture, however the text is turned.
    const double back = op.Angle * std::numbers::pi / 180;
    cairo_rotate(cairo, back);
    cairo_translate(cairo, op.Shadow->Offset, op.Shadow->Offset);
    cairo_rotate(cairo, -back);
    go_to_start();
    show(op.Shadow->Color);
    cairo_restore(cairo);
  }
  go_to_start();
  if (op.Shadow.has_value() && op.Shadow->Offset == 0) {
    SetColor(cairo, op.Shadow->Color);
    cairo_move_to(cairo, 0, 0);
    pango_cairo_layout_path(cairo, layout);
    cairo_set_line_width(cairo, 2 * kHaloWidth);
    cairo_set_line_join(cairo, CAIRO_LINE_JOIN_ROUND);
    cairo_stroke(cairo);
  }
  show(op.Color);
  cairo_restore(cairo);
}

}  // namespace qenzor
