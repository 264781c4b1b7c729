#include "examples/support/world_style_builder.h"

#include "examples/support/world_ids.h"
#include "examples/support/world_marks.h"
#include "qenzor/platform/code_page.h"
#include "qenzor/qen/walk.h"
#include "qenzor/zor/cmb_lbl_draw_info.h"
#include "qenzor/zor/line_draw_info.h"
#include "qenzor/zor/poly_bmp_brush_draw_info.h"
#include "qenzor/zor/poly_shadow_draw_info.h"
#include "qenzor/zor/poly_solid_brush_draw_info.h"
#include "qenzor/zor/ras_ll_draw_info.h"
#include "qenzor/zor/ras_mm_draw_info.h"

namespace world {
namespace {

using qenzor::CAbstractDrawInfoEdit;
using qenzor::CCmbLblDrawInfoEdit;
using qenzor::CDrawAtterEdit;
using qenzor::CDrawAtterSetEdit;
using qenzor::CDrawInfoIdxSetEdit;
using qenzor::CDrawInfoSetEdit;
using qenzor::CLineDrawInfoEdit;
using qenzor::CList;
using qenzor::CPolyBmpBrushDrawInfoEdit;
using qenzor::CPolyShadowDrawInfoEdit;
using qenzor::CPolySolidBrushDrawInfoEdit;
using qenzor::CQen;
using qenzor::CRasLLDrawInfoEdit;
using qenzor::CRasMMDrawInfoEdit;
using qenzor::CZorEdit;
using qenzor::LineDrawScale;
using qenzor::NarrowText;

// The scales of the drawing, 1:N: the globe, a continent, a country.
constexpr std::uint32_t kGlobe = 400'000'000;
constexpr std::uint32_t kContinent = 100'000'000;
constexpr std::uint32_t kCountry = 20'000'000;
constexpr std::uint32_t kNearest = 1'000'000;

constexpr std::uint64_t kAntarctica = 10;
constexpr std::array<std::uint32_t, 6> kAreaColors{0xFFF6E3B4, 0xFFD7E8C0, 0xFFF2C9B8,
                                                   0xFFCBDDEB, 0xFFE3D3EA, 0xFFF0EEC2};
constexpr std::uint32_t kDark = 0xFF303030;
constexpr std::uint32_t kHalo = 0xC0FFFFFF;

class Builder {
 public:
  std::unique_ptr<CZorEdit> Build(const std::set<std::uint64_t>& area_ids) {
    AddAreas(area_ids);
    AddAtter(kCoastsId, {AddLine(0, 0xFF4A78A8,
                                 {{kGlobe, kContinent, 1, 0.5F, 0},
                                  {kContinent, kCountry, 2, 0.5F, 0},
                                  {kCountry, kNearest, 3, 1, 0}})});
    AddAtter(kBordersId,
             {AddLine(1, 0xFF906080,
                      {{kContinent, kCountry, 1, 0.5F, 2}, {kCountry, kNearest, 2, 1, 4}})});
    AddLabels();
    AddRasters();

    auto style = std::make_unique<CZorEdit>(qenzor::DefaultZorFileInfo());
    style->DrawData.DrawAtterSet = std::move(m_atters);
    style->DrawData.DrawInfoSet = std::move(m_infos);
    style->DrawData.MarkDataSet = BuildMarks();
    return style;
  }

 private:
  /// Every country in one of six colours over a common shadow; Antarctica has a pattern.
  void AddAreas(const std::set<std::uint64_t>& area_ids) {
    auto shadow = std::make_unique<CPolyShadowDrawInfoEdit>();
    shadow->ShadowColor = 0x60000000;
    shadow->ScData = {{kContinent, kCountry, {2, -2}, 0.5F}, {kCountry, kNearest, {4, -4}, 1}};
    const std::uint32_t shadow_index = AddInfo(std::move(shadow));

    std::vector<std::uint32_t> color_indices;
    for (const std::uint32_t color : kAreaColors) {
      auto brush = std::make_unique<CPolySolidBrushDrawInfoEdit>();
      brush->Color = color;
      brush->ScData = {{kGlobe, kCountry}, {kCountry, kNearest}};
      color_indices.push_back(AddInfo(std::move(brush)));
    }

    auto ice = std::make_unique<CPolyBmpBrushDrawInfoEdit>();
    ice->BrushFileName = NarrowText(u"氷雪.bmp");
    ice->ScData = {{kGlobe, kCountry}, {kCountry, kNearest}};
    const std::uint32_t ice_index = AddInfo(std::move(ice));

    // Most ISO codes are multiples of four, and neighbours are often next to each other.
    for (const std::uint64_t id : area_ids)
      AddAtter(id, {shadow_index,
                    id == kAntarctica ? ice_index : color_indices[id / 4 % kAreaColors.size()]});
  }

  std::uint32_t AddLine(std::uint8_t code, std::uint32_t color, CList<LineDrawScale> records) {
    auto line = std::make_unique<CLineDrawInfoEdit>();
    line->LineCode = code;
    line->Color = color;
    line->Aspect = 1;
    line->ScData = std::move(records);
    return AddInfo(std::move(line));
  }

  void AddLabels() {
    constexpr std::uint16_t kText = 1;
    constexpr std::uint16_t kMark = 2;
    auto names = MakeLabels(kText, Mark::kCapital);
    names->FontId = 1;
    names->SetLabelShaded(true);
    names->ScData = {{kGlobe, kContinent, 0, 8, 0, 0, 0, 0.5F},
                     {kContinent, kCountry, 0, 11, 0, 0, 0, 0.5F},
                     {kCountry, kNearest, 0, 16, 0, 0, 0, 1}};
    AddAtter(kCountryNamesId, {AddInfo(std::move(names))});

    auto capitals = MakeLabels(kText | kMark, Mark::kCapital);
    capitals->ScData = {{kContinent, kCountry, 0.03125F, 9, 0, 0, 0, 0.5F},
                        {kCountry, kNearest, 0.0625F, 12, 0, 0, 0, 1}};
    AddAtter(kCapitalsId, {AddInfo(std::move(capitals))});

    auto airports = MakeLabels(kText | kMark, Mark::kAirport);
    airports->FrameCtrl = 1;
    airports->ScData = {{kCountry, kCountry / 2, 0.0625F, 8, 2, 1, -1, 0.5F},
                        {kCountry / 2, kNearest, 0.125F, 10, 3, 1, -1, 1}};
    AddAtter(kAirportsId, {AddInfo(std::move(airports))});
  }

  static std::unique_ptr<CCmbLblDrawInfoEdit> MakeLabels(std::uint16_t flags, Mark mark) {
    auto labels = std::make_unique<CCmbLblDrawInfoEdit>();
    labels->CtrlFlgs = flags;
    labels->MarkDataIdx = static_cast<std::uint32_t>(mark);
    labels->FontColor = kDark;
    labels->FrameColor = kDark;
    labels->ShadowColor = kHalo;
    return labels;
  }

  void AddRasters() {
    auto relief = std::make_unique<CRasLLDrawInfoEdit>();
    relief->RasFileName = "hoggar relief.png";
    relief->ColorKey = 0xFFFF00FF;
    relief->ScData = {{kContinent, kCountry, 96}, {kCountry, kNearest, 192}};
    AddAtter(kImageId, {AddInfo(std::move(relief))});

    auto peak = std::make_unique<CRasMMDrawInfoEdit>();
    peak->RasFileName = NarrowText(u"富士山.png");
    peak->ColorKey = 0xFFFFFFFF;
    peak->ScData = {{kCountry, kCountry / 4, 24, 0.5F}, {kCountry / 4, kNearest, 48, 1}};
    AddAtter(kPeakId, {AddInfo(std::move(peak))});
  }

  /// The position of the draw info in the set.
  std::uint32_t AddInfo(std::unique_ptr<CAbstractDrawInfoEdit> info) {
    m_infos->Append(std::move(info));
    return m_infos->GetElemCount() - 1;
  }

  void AddAtter(std::uint64_t id, CList<std::uint32_t> info_indices) {
    auto atter = std::make_unique<CDrawAtterEdit>();
    atter->ZId = id;
    atter->DrawInfoIdxSet = std::make_unique<CDrawInfoIdxSetEdit>();
    atter->DrawInfoIdxSet->DrawInfoIdx = std::move(info_indices);
    m_atters->Insert(std::move(atter));
  }

  std::unique_ptr<CDrawInfoSetEdit> m_infos = std::make_unique<CDrawInfoSetEdit>();
  std::unique_ptr<CDrawAtterSetEdit> m_atters = std::make_unique<CDrawAtterSetEdit>();
};

}  // namespace

std::set<std::uint64_t> AreaIdsOf(const CQen& map) {
  std::set<std::uint64_t> ids;
  ForEachZIdObj(map, [&](const auto&, const auto& layer, const auto& z_id_obj) {
    if (layer.LayerNo == static_cast<std::uint16_t>(Layer::kAreas)) ids.insert(z_id_obj.ZId);
  });
  return ids;
}

std::unique_ptr<CZorEdit> BuildWorldStyle(const std::set<std::uint64_t>& area_ids) {
  return Builder().Build(area_ids);
}

}  // namespace world
