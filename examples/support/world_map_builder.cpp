#include "examples/support/world_map_builder.h"

#include <boost/locale/encoding_utf.hpp>
#include <set>
#include <stdexcept>

#include "examples/support/map_objects.h"
#include "examples/support/places.h"
#include "qenzor/platform/code_page.h"
#include "qenzor/qen/builder.h"
#include "qenzor/qen/cmb_lbl_obj.h"
#include "qenzor/qen/line_obj.h"
#include "qenzor/qen/poly_obj.h"
#include "qenzor/qen/ras_ll_obj.h"
#include "qenzor/qen/ras_mm_obj.h"

namespace world {
namespace {

using qenzor::CCmbLblObjEdit;
using qenzor::CLineObjEdit;
using qenzor::CList;
using qenzor::CPoint;
using qenzor::CPolyObjEdit;
using qenzor::CQenEdit;
using qenzor::CRasLLObjEdit;
using qenzor::CRasMMObjEdit;
using qenzor::CStringW;
using qenzor::QenFileInfo;

constexpr std::size_t kMostPoints = 32'767;  // of one object

CList<CPoint> CheckedPoints(Path path) {
  if (path.size() > kMostPoints) throw std::runtime_error("a piece has too many points");
  return path;
}

CStringW UrlOf(const Country& country) {
  return qenzor::FromUtf8("https://example.org/country/" + std::to_string(country.id));
}

std::unique_ptr<CCmbLblObjEdit> MakeLabel(CPoint local, std::uint16_t flags, CStringW text) {
  auto label = std::make_unique<CCmbLblObjEdit>();
  label->CtrlFlgs = flags;
  label->Pt = local;
  label->Text = std::move(text);
  return label;
}

class Builder {
 public:
  explicit Builder(const Topology& topology)
      : m_topology(topology), m_arc_owners(topology.arcs.size()) {}

  void BuildInto(CQenEdit& map) {
    for (const Country& country : m_topology.countries) AddCountry(country);
    for (std::size_t arc = 0; arc < m_topology.arcs.size(); ++arc) AddArc(arc);
    AddPlaces();
    AddRasters();
    m_objects.MoveInto(map);
  }

 private:
  /// The areas of the country, the first with its URL, and its name on the largest.
  void AddCountry(const Country& country) {
    std::vector<Piece> pieces;
    Path largest;
    for (const PolygonArcs& polygon : country.polygons) {
      const std::optional<Outline> outline = OutlineOf(m_topology, polygon);
      if (!outline) continue;
      NoteOwner(polygon, country.id);
      std::ranges::move(CutPolygon(*outline), std::back_inserter(pieces));
      if (std::abs(TwiceArea(outline->shell)) > std::abs(TwiceArea(largest)))
        largest = outline->shell;
    }
    std::ranges::stable_sort(pieces, {}, &Piece::segment);
    bool first = true;
    for (Piece& piece : pieces) {
      auto area = std::make_unique<CPolyObjEdit>();
      area->Pt = CheckedPoints(std::move(piece.path));
      if (std::exchange(first, false)) qenzor::AddLink(*area, UrlOf(country));
      m_objects.Add(piece.segment, Layer::kAreas, country.id, std::move(area));
    }
    if (!largest.empty()) AddName(country, LabelPoint(largest));
  }

  void AddName(const Country& country, CPoint position) {
    constexpr std::uint16_t kCentred = 9;
    constexpr std::uint16_t kNoMark = 1U << 6;
    CStringW text = boost::locale::conv::utf_to_utf<char16_t>(country.name);
    if (const std::u16string_view japanese = JapaneseName(country.id); !japanese.empty())
      text.append(u"\n").append(japanese);
    AddLabel(position, kCountryNamesId, kCentred | kNoMark, std::move(text));
  }

  void AddLabel(CPoint position, std::uint64_t id, std::uint16_t flags, CStringW text,
                float offset = 0) {
    constexpr float kEast = 90;  // degrees clockwise from north
    const Piece place = PieceAt(position);
    auto label = MakeLabel(place.path.front(), flags, std::move(text));
    label->LblOffsetFontRate = offset;
    label->LblOffsetAngle = offset > 0 ? kEast : 0;
    m_objects.Add(place.segment, Layer::kLabels, id, std::move(label));
  }

  void NoteOwner(const PolygonArcs& polygon, std::uint64_t id) {
    for (const RingArcs& ring : polygon)
      for (const ArcRef ref : ring)
        m_arc_owners[static_cast<std::size_t>(ref < 0 ? ~ref : ref)].push_back(id);
  }

  /// An arc that one country has for itself is a coast; one that two share is their border.
  void AddArc(std::size_t arc) {
    const std::set<std::uint64_t> owners(m_arc_owners[arc].begin(), m_arc_owners[arc].end());
    if (owners.size() > 1)
      AddLines(arc, Layer::kBorders, kBordersId);
    else if (m_arc_owners[arc].size() == 1)
      AddLines(arc, Layer::kCoasts, kCoastsId);
  }

  void AddLines(std::size_t arc, Layer layer, std::uint64_t id) {
    Path path = m_topology.arcs[arc];
    Unroll(path);
    for (Piece& piece : CutLine(path)) {
      auto line = std::make_unique<CLineObjEdit>();
      line->Pt = CheckedPoints(std::move(piece.path));
      m_objects.Add(piece.segment, layer, id, std::move(line));
    }
  }

  void AddPlaces() {
    constexpr std::uint16_t kRightOfMark = 0;
    constexpr float kCapitalOffset = 0.75F;
    constexpr float kAirportOffset = 1.0F;
    for (const Place& capital : kCapitals)
      AddLabel(capital.position, kCapitalsId, kRightOfMark, CStringW(capital.name), kCapitalOffset);
    for (const Place& airport : kAirports)
      AddLabel(airport.position, kAirportsId, kRightOfMark, CStringW(airport.name), kAirportOffset);
  }

  void AddRasters() {
    const Piece south_west = PieceAt(kHoggarSouthWest);
    const CPoint& low = south_west.path.front();
    auto image = std::make_unique<CRasLLObjEdit>();
    image->Rect = {low.x, low.y, low.x + kHoggarNorthEast.x - kHoggarSouthWest.x,
                   low.y + kHoggarNorthEast.y - kHoggarSouthWest.y};
    m_objects.Add(south_west.segment, Layer::kRasters, kImageId, std::move(image));

    const Piece fuji = PieceAt(kFuji);
    auto peak = std::make_unique<CRasMMObjEdit>();
    peak->Pt = fuji.path.front();
    m_objects.Add(fuji.segment, Layer::kRasters, kPeakId, std::move(peak));
  }

  const Topology& m_topology;
  std::vector<std::vector<std::uint64_t>> m_arc_owners;  // the countries of each arc, per use
  MapObjects m_objects;
};

}  // namespace

std::unique_ptr<CQenEdit> BuildWorldMap(const Topology& topology) {
  constexpr std::int32_t kUnitsPerSecond = 1000;  // of IncRect
  auto map = std::make_unique<CQenEdit>(QenFileInfo::Default());
  map->GeoCoodinate = 1;
  map->IncRect = {-kHalfTurn * kUnitsPerSecond, -kPole * kUnitsPerSecond,
                  kHalfTurn * kUnitsPerSecond, kPole * kUnitsPerSecond};
  map->SegmentNumX = kSegmentsAcross;
  map->SegmentNumY = kSegmentsUp;
  map->CompCoef = kUnitsPerSecond;
  Builder(topology).BuildInto(*map);
  return map;
}

}  // namespace world
