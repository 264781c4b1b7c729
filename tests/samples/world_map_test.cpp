#include <map>
#include <set>

#include "examples/support/mesh.h"
#include "examples/support/world_map_builder.h"
#include "qenzor/qen/cmb_lbl_obj.h"
#include "qenzor/qen/line_obj.h"
#include "qenzor/qen/poly_obj.h"
#include "qenzor/qen/ras_ll_obj.h"
#include "qenzor/qen/ras_mm_obj.h"
#include "tests/samples/map_walk.h"
#include "tests/samples/samples.h"

namespace qenzor::samples {
namespace {

using world::Layer;

class WorldMap : public testing::Test {
 protected:
  void SetUp() override {
    CQen map;
    ASSERT_TRUE(map.Read(PathOf("world.qen")));
    m_map.QenDataToEditData(&map);
  }

  CQenEdit m_map;
};

TEST_F(WorldMap, BuiltAnewIsTheCommittedFile) {
  const auto rebuilt = world::BuildWorldMap(WorldTopology());
  EXPECT_EQ(BytesOf(*rebuilt), BytesOf(PathOf("world.qen")));
}

TEST_F(WorldMap, FileInfoDescribesTheMesh) {
  EXPECT_EQ(std::string(m_map.Ident.begin(), m_map.Ident.end()), "QENMAP\r\n\x1A");
  EXPECT_EQ(m_map.Magic, 0x4041);
  EXPECT_EQ(m_map.MajorVer, 1);
  EXPECT_EQ(m_map.MinorVer, 0);
  EXPECT_EQ(m_map.Revision, 0U);
  EXPECT_EQ(m_map.IncRect, (CRect{-648'000'000, -324'000'000, 648'000'000, 324'000'000}));
  EXPECT_EQ(m_map.SegmentNumX, 24);
  EXPECT_EQ(m_map.SegmentNumY, 12);
  EXPECT_EQ(m_map.CompCoef, 1000);
}

TEST_F(WorldMap, SegmentsAscendAndNoneIsEmpty) {
  int last = -1;
  for (const auto& segment : *m_map.MapData->MeshSegmentSet->GetElemPtr()) {
    EXPECT_GT(segment->MeshSegmentNo, last);
    last = segment->MeshSegmentNo;
    EXPECT_GT(segment->LayerSet->GetElemCount(), 0U) << last;
  }
  EXPECT_LT(last, m_map.SegmentNumX * m_map.SegmentNumY);
}

/// The layer where objects of its class stand, that of coasts for borders too.
Layer LayerOfClass(CAbstractObjEdit& object) {
  if (dynamic_cast<CPolyObjEdit*>(&object) != nullptr) return Layer::kAreas;
  if (dynamic_cast<CLineObjEdit*>(&object) != nullptr) return Layer::kCoasts;
  if (dynamic_cast<CCmbLblObjEdit*>(&object) != nullptr) return Layer::kLabels;
  return Layer::kRasters;
}

TEST_F(WorldMap, EveryKindOfObjectStandsInItsLayer) {
  std::map<Layer, int> counts;
  ForEachObject(m_map, [&counts](const ObjectPlace& place, CAbstractObjEdit& object) {
    ++counts[place.layer];
    EXPECT_EQ(LayerOfClass(object), place.layer == Layer::kBorders ? Layer::kCoasts : place.layer);
  });
  EXPECT_EQ(counts[Layer::kAreas], 736);
  EXPECT_EQ(counts[Layer::kCoasts], 627);
  EXPECT_EQ(counts[Layer::kBorders], 498);
  EXPECT_EQ(counts[Layer::kLabels], 177 + 15 + 6);
  EXPECT_EQ(counts[Layer::kRasters], 2);
}

TEST_F(WorldMap, EveryCountryHasAreasAndOneUrl) {
  std::set<std::uint64_t> countries;
  for (const world::Country& country : WorldTopology().countries) countries.insert(country.id);
  ASSERT_EQ(countries.size(), 177U);

  std::set<std::uint64_t> with_areas;
  std::map<std::uint64_t, std::vector<CStringW>> urls;
  ForEach<CPolyObjEdit>(m_map, [&](const ObjectPlace& place, const CPolyObjEdit& area) {
    with_areas.insert(place.z_id);
    if (!area.AddedObjInfoSet) return;
    for (const auto& info : *area.AddedObjInfoSet->GetElemPtr())
      urls[place.z_id].push_back(dynamic_cast<CUrlInfoEdit&>(*info).Text);
  });
  EXPECT_EQ(with_areas, countries);
  EXPECT_EQ(urls.size(), countries.size());
  EXPECT_EQ(urls[392], std::vector{CStringW(u"https://example.org/country/392")});
}

TEST_F(WorldMap, CountriesWithoutIsoCodeAreNumberedByName) {
  std::map<std::uint64_t, std::string> numbered;
  for (const world::Country& country : WorldTopology().countries)
    if (country.id >= world::kFirstFreeId) numbered[country.id] = country.name;
  EXPECT_EQ(numbered, (std::map<std::uint64_t, std::string>{
                          {10001, "Kosovo"}, {10002, "N. Cyprus"}, {10003, "Somaliland"}}));
}

TEST_F(WorldMap, AreasAreClosedClockwiseRingsInsideTheirSegment) {
  ForEach<CPolyObjEdit>(m_map, [](const ObjectPlace& place, const CPolyObjEdit& area) {
    ASSERT_GE(area.Pt.size(), 4U);
    EXPECT_EQ(area.Pt.front(), area.Pt.back());
    EXPECT_LT(world::TwiceArea(area.Pt), 0) << place.z_id << " in " << place.segment;
    for (const CPoint& point : area.Pt) {
      EXPECT_LE(std::abs(point.x), 27'000);
      EXPECT_LE(std::abs(point.y), 27'000);
    }
  });
}

/// Twice the area of the outline, which has a point more wherever it crosses an edge of the mesh.
std::int64_t TwiceArea(const world::Outline& outline) {
  std::int64_t area = std::abs(world::TwiceArea(world::SplitAtMesh(outline.shell)));
  for (const world::Path& hole : outline.holes)
    area -= std::abs(world::TwiceArea(world::SplitAtMesh(hole)));
  return area;
}

TEST_F(WorldMap, AreasOfACountryAddUpToItsOutline) {
  std::map<std::uint64_t, std::int64_t> stored;
  ForEach<CPolyObjEdit>(m_map, [&](const ObjectPlace& place, const CPolyObjEdit& area) {
    stored[place.z_id] += std::abs(world::TwiceArea(area.Pt));
  });

  std::map<std::uint64_t, std::int64_t> expected;
  const world::Topology topology = WorldTopology();
  for (const world::Country& country : topology.countries)
    for (const world::PolygonArcs& polygon : country.polygons)
      if (const auto outline = world::OutlineOf(topology, polygon))
        expected[country.id] += TwiceArea(*outline);
  EXPECT_EQ(stored, expected);
}

TEST_F(WorldMap, LabelsCarryTheNamesInBothScripts) {
  std::set<CStringW> names;
  ForEach<CCmbLblObjEdit>(m_map, [&](const ObjectPlace& place, const CCmbLblObjEdit& label) {
    if (place.z_id == world::kCountryNamesId) names.insert(label.Text);
  });
  EXPECT_EQ(names.size(), 177U);
  EXPECT_TRUE(names.contains(u"Japan\n日本"));
  EXPECT_TRUE(names.contains(u"Côte d'Ivoire"));
  const auto japanese = std::ranges::count_if(
      names, [](const CStringW& name) { return name.find(u'\n') != CStringW::npos; });
  EXPECT_EQ(japanese, 29);
}

}  // namespace
}  // namespace qenzor::samples
