#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "tests/support/placed.h"

namespace qenzor::testing {

/// A label at a point, with the flags.
inline Bytes LabelAt(const CPoint& at, std::uint32_t flags, std::u16string_view text,
                     float angle = 0, float rate = 0, float direction = 0) {
  return Chunk(
      id::kCmbLblObj,
      Bytes().U16(flags).F32(angle).I16(at.x).I16(at.y).F32(rate).F32(direction).Text(text));
}

/// A map without a frame on which every kind, code and flag is drawn once: objects in rows, each
/// with a z-id of its own.
class SymbolPage {
 public:
  std::unique_ptr<CQen> Map;
  std::unique_ptr<CZor> Drawing;

  SymbolPage() {
    AddStrokes();
    AddAreas();
    AddRasters();
    AddLabels();
    Map = MapOf(m_content);
    Drawing = DrawingOf(m_attributes, m_infos, Marks());
  }

 private:
  /// An object in a layer, and the draw infos that draw it.
  void Add(std::uint32_t layer, const Bytes& object, const std::vector<Bytes>& infos) {
    std::vector<std::uint32_t> indices;
    for (const Bytes& info : infos) {
      indices.push_back(static_cast<std::uint32_t>(m_infos.size()));
      m_infos.push_back(info);
    }
    const std::uint64_t z_id = m_attributes.size() + 1;
    m_content.push_back({0, layer, z_id, {object}});
    m_attributes.push_back(Attribute(z_id, indices));
  }

  void AddStrokes() {
    for (std::uint32_t code = 0; code < 7; ++code)
      for (const float aspect : {1.0F, 2.5F, -1.0F}) {
        const auto y = static_cast<std::int32_t>(960 - 22 * code);
        const std::int32_t x = aspect == 1 ? 0 : aspect > 0 ? 340 : 680;
        Add(3, LineBytes({{x, y}, {x + 150, y}, {x + 300, y - 5}}),
            {StrokeInfo(code, 0xFF000080, aspect,
                        {StrokeRecord(50000, 1000, 1, 0.5F), StrokeRecord(200000, 100, 4, -0.5F)}),
             StrokeInfo(0, 0x40FF0000, 1, {StrokeRecord(20000, 0, 2, 1)})});
      }
  }

  void AddAreas() {
    const auto square = [](std::int32_t x) {
      return PolyBytes(0, {{x, 660}, {x, 780}, {x + 120, 780}, {x + 120, 660}, {x, 660}});
    };
    const Bytes shadow = InfoBytes(id::kPolyShadowDrawInfo, Bytes().U32(0x80000000),
                                   {Bytes().U32(100000).U32(1).I16(4).I16(-6).F32(0.25F)});
    Add(1, square(0),
        {InfoBytes(id::kPolySolidBrushDrawInfo, Bytes().U32(0xFF00A000), {AnyScale()})});
    Add(1, square(200),
        {InfoBytes(id::kPolySolidBrushDrawInfo, Bytes().U32(0x80A00000), {AnyScale()}), shadow});
    Add(1, square(400),
        {InfoBytes(id::kPolyBmpBrushDrawInfo, Bytes().Text(u"C:\\img/brush.bmp"), {AnyScale()})});
    Add(1, square(600), {});
  }

  void AddRasters() {
    const Bytes by_edges = InfoBytes(id::kRasLLDrawInfo, Bytes().Text(u"a:b.png").U32(0x00FFFFFF),
                                     {AnyScale().U8(128)});
    Add(2, RasLLBytes({800, 660, 980, 780}), {by_edges});
    Add(2, RasLLBytes({120, 660, 0, 780}), {by_edges});
    for (const std::uint32_t width : {0U, 40U})
      Add(2, RasMMBytes({660, 720}),
          {InfoBytes(id::kRasMMDrawInfo, Bytes().Text(u"peak.jpg").U32(0xFF112233),
                     {Bytes().U32(50000).U32(0).U16(width).F32(0.5F),
                      Bytes().U32(100000).U32(0).U16(width).F32(0)})});
  }

  static Bytes LabelInfo(std::uint32_t shows, std::uint32_t mark, std::uint32_t shaded,
                         std::uint32_t frame, std::int32_t shadow) {
    return InfoBytes(
        id::kCmbLblDrawInfo,
        Bytes()
            .U16(shows)
            .U32(mark)
            .U8(0)
            .U16(shaded)
            .U8(frame)
            .U32(0xFF202020)
            .U32(0xFFC00000)
            .U32(0xFF80C0FF),
        {Bytes().U32(200000).U32(1).F32(1.25F).U16(14).U16(3).U16(1).I16(shadow).F32(0.125F)});
  }

  void AddLabels() {
    constexpr std::u16string_view kLines = u"Ag\u5730\n\u56F3";
    for (std::uint32_t kind = 0; kind < 16; ++kind) {
      const auto x = static_cast<std::int32_t>(60 + 125 * (kind % 8));
      Add(0, LabelAt({x, kind < 8 ? 580 : 440}, kind, kLines),
          {LabelInfo(3, 1, kind & 1U, kind % 6, 0)});
    }
    for (std::uint32_t shows = 0; shows < 4; ++shows)
      for (std::uint32_t hides = 0; hides < 4; ++hides)
        Add(0,
            LabelAt({static_cast<std::int32_t>(15 + 63 * (4 * shows + hides)), 325},
                    2 | hides << 5U, u"ab"),
            {LabelInfo(shows, 0, 0, 2, 0)});
    for (int turn = 0; turn < 12; ++turn)
      Add(0,
          LabelAt({30 + 85 * turn, 240}, 8, u"turn", 75.0F * static_cast<float>(turn - 3), 1.5F,
                  -400.0F * static_cast<float>(turn)),
          {LabelInfo(3, turn == 5 ? 9 : 1, 1, 0, turn - 6)});
    Add(0, LabelAt({60, 170}, 0x15, u"\u30B3\u30FC\u30D2\u30FC A1"), {LabelInfo(3, 1, 1, 1, 1)});
    Add(0, LabelAt({260, 100}, 0x19, u"\u7E26\u66F8\u304D\n(\u6771\u4EAC)\u3002"),
        {LabelInfo(3, 1, 1, 0, 0)});
    Add(0, LabelAt({460, 100}, 0x19, u"\u30CF\u30FC\u30C9", 45), {LabelInfo(1, 0, 0, 3, 0)});
    Add(0, LabelAt({660, 100}, 9, u"\u4E8C\u884C\nof \u03A9 text\n\u0416", -20),
        {LabelInfo(1, 0, 0, 2, 0)});
    Add(0, LabelAt({860, 100}, 1, u""), {LabelInfo(3, 1, 0, 1, 0)});
  }

  static std::vector<Bytes> Marks() {
    return {MarkBytes({-8, -8, 8, 8},
                      {MarkElemBytes(2, 0, 0xFFFFE000, {{-8, -8}, {0, 8}, {8, -8}}),
                       MarkElemBytes(1, 1, 0xFF000000, {{-8, -8}, {0, 8}, {8, -8}, {-8, -8}}),
                       MarkElemBytes(3, 1, 0xFFFF0000, {{0, 0}, {9, 9}}),
                       MarkElemBytes(1, 0, 0xFFFF0000, {{0, 0}, {-9, 9}})}),
            MarkBytes({}, {MarkElemBytes(2, 0, 0xFF0060C0, {{-3, -3}, {-3, 3}, {3, 3}, {3, -3}})})};
  }

  std::vector<Placed> m_content;
  std::vector<Bytes> m_attributes;
  std::vector<Bytes> m_infos;
};

}  // namespace qenzor::testing
