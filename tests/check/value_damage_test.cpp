// What the values of a document say that can be read but is doubtful.

#include <gtest/gtest.h>

#include "tests/support/findings.h"
#include "tests/support/qen_bytes.h"
#include "tests/support/zor_bytes.h"

namespace {

using namespace qenzor;
using namespace qenzor::testing;

Bytes MapOfSegments(const std::vector<Bytes>& segments) {
  return GoodQenInfo().Add(Chunk(id::kQenMapData, SetChunk(id::kMeshSegmentSet, segments)));
}

Bytes DrawingOf(const std::vector<std::uint32_t>& indices, const std::vector<Bytes>& draw_infos) {
  return GoodZorInfo().Add(DrawDataBytes({SetChunk(id::kDrawAtterSet, {AtterBytes(7, indices)}),
                                          SetChunk(id::kDrawInfoSet, draw_infos)}));
}

/// A solid brush with these ranges of scales, each DenomMin and DenomMax. Its records begin 14
/// bytes behind its own beginning.
Bytes BrushOfBands(const std::vector<std::pair<std::uint32_t, std::uint32_t>>& bands) {
  Bytes data = Bytes().U32(0).U16(static_cast<std::uint32_t>(bands.size()));
  for (const auto& [min, max] : bands) data.U32(max).U32(min);
  return Chunk(id::kPolySolidBrushDrawInfo, data);
}

/// Where the only draw info of DrawingOf({0}, …) begins.
constexpr std::uint64_t kDrawInfo = 19 + 8 + 8 + 4 + 16 + 8 + 4 + 4 + 8 + 4;

std::vector<Found> BandFindings(const std::vector<std::pair<std::uint32_t, std::uint32_t>>& bands) {
  return FindingsOf(DrawingOf({0}, {BrushOfBands(bands)}), BinaryKind::kZor);
}

TEST(ValueDamage, AFileInfoOfAnotherKindIsFoundFieldByField) {
  const Bytes map = MapOfSegments({SegmentBytes(0), SegmentBytes(1)});
  EXPECT_EQ(FindingsOf(map, BinaryKind::kQen), std::vector<Found>{});
  const auto with = [&map](std::size_t at, std::uint8_t value) {
    Bytes changed = map;
    changed[at] = value;
    return FindingsOf(changed, BinaryKind::kQen);
  };
  const auto at_info = [](const char* code, std::uint64_t at) {
    return std::vector<Found>{{code, at, "QenFileInfo"}};
  };
  EXPECT_EQ(with(7, 0x0D), at_info("Q1060", 6));
  EXPECT_EQ(with(0, 'q'), at_info("Q1061", 0));
  EXPECT_EQ(with(10, 0x41), at_info("Q1062", 9));
  EXPECT_EQ(with(11, 2), at_info("Q1063", 13));
  EXPECT_EQ(with(13, 1), at_info("Q1063", 13));
  EXPECT_EQ(with(36, 0), at_info("Q1064", 36));
  EXPECT_EQ(with(38, 0), at_info("Q1064", 38));
  EXPECT_EQ(with(23, 0x7F), at_info("Q1065", 20));  // west beyond east
  EXPECT_EQ(with(35, 0xFF), at_info("Q1065", 20));  // north below south
  EXPECT_EQ(with(36, 1), (std::vector<Found>{{"Q1066", 80, "MeshSegmentSet/MeshSegment[1]"}}));
}

TEST(ValueDamage, NumbersThatStandTwiceAreFoundWhereTheyStandAgain) {
  const Bytes layers = SetChunk(id::kLayerSet, {LayerBytes(3), LayerBytes(4), LayerBytes(3)});
  EXPECT_EQ(
      FindingsOf(MapOfSegments({SegmentBytes(0, layers), SegmentBytes(0)}), BinaryKind::kQen),
      (std::vector<Found>{{"Q1068", 104, "MeshSegmentSet/MeshSegment[0]/LayerSet/LayerData[2]"},
                          {"Q1067", 114, "MeshSegmentSet/MeshSegment[1]"}}));
  const Bytes one = SetChunk(id::kLayerSet, {LayerBytes(3)});
  EXPECT_EQ(
      FindingsOf(MapOfSegments({SegmentBytes(0, one), SegmentBytes(1, one)}), BinaryKind::kQen),
      std::vector<Found>{});
}

TEST(ValueDamage, RangesOfScalesLeaveNoGapAndDoNotOverlap) {
  const auto at = [](const char* code, std::uint64_t record) {
    return std::vector<Found>{
        {code, kDrawInfo + 14 + 8 * record, "DrawInfoSet/PolySolidBrushDrawInfo[0]"}};
  };
  EXPECT_EQ(BandFindings({}), std::vector<Found>{});
  EXPECT_EQ(BandFindings({{1, 10}, {10, 20}, {20, 30}}), std::vector<Found>{});
  EXPECT_EQ(BandFindings({{20, 30}, {1, 10}, {10, 20}}), std::vector<Found>{});
  EXPECT_EQ(BandFindings({{5, 5}}), std::vector<Found>{});
  EXPECT_EQ(BandFindings({{10, 1}}), at("Q1074", 0));
  EXPECT_EQ(BandFindings({{1, 10}, {11, 20}}), at("Q1075", 1));
  EXPECT_EQ(BandFindings({{11, 20}, {1, 10}}), at("Q1075", 0));
  EXPECT_EQ(BandFindings({{1, 10}, {9, 20}}), at("Q1076", 1));
  EXPECT_EQ(BandFindings({{1, 100}, {20, 30}, {100, 200}}), at("Q1076", 1));
  EXPECT_EQ(BandFindings({{20, 30}, {1, 100}, {100, 200}}), at("Q1076", 1));
}

TEST(ValueDamage, DrawInfosAndMarksThatNothingUsesAreFound) {
  EXPECT_EQ(FindingsOf(DrawingOf({1}, {LineInfoBytes(0), LineInfoBytes(0)}), BinaryKind::kZor),
            (std::vector<Found>{{"Q1072", kDrawInfo, "DrawInfoSet/LineDrawInfo[0]"}}));
  const Bytes marks = SetChunk(id::kMarkDataSet, {MarkBytes({}, {})});
  EXPECT_EQ(FindingsOf(GoodZorInfo().Add(DrawDataBytes({marks})), BinaryKind::kZor),
            (std::vector<Found>{{"Q1073", 39, "MarkDataSet/MarkData[0]"}}));
}

TEST(ValueDamage, AnAttributeThatFitsNoObjectOfItsZIdIsFound) {
  const Bytes drawing = DrawingOf({0, 1}, {LineInfoBytes(0), BrushOfBands({})});
  const auto found_with = [&drawing](const Bytes& object) {
    const Bytes map = GoodQenInfo().Add(MapDataBytes({object}));
    const ZIdResult z_ids = CollectZIds({map.data(), map.size()}, BinaryKind::kQen);
    EXPECT_TRUE(z_ids.IsWhole);
    CheckOptions options;
    options.OtherZIds = &z_ids.ZIds;
    return FindingsOf(drawing, BinaryKind::kZor, options);
  };
  EXPECT_EQ(found_with(LineBytes({})), std::vector<Found>{});
  EXPECT_EQ(found_with(PolyBytes(0, {})), std::vector<Found>{});
  EXPECT_EQ(found_with(LabelBytes(u"a")),
            (std::vector<Found>{{"Q1082", 39, "DrawAtterSet/DrawAtter[0]"}}));
  EXPECT_EQ(found_with(RasLLBytes({})),
            (std::vector<Found>{{"Q1082", 39, "DrawAtterSet/DrawAtter[0]"}}));
}

TEST(ValueDamage, ANameWhoseByteCountWrapsIsFound) {
  const auto raster = [](std::size_t units) {
    const Bytes fields = Bytes().Text(std::u16string(units, u'x')).U32(0).U16(0);
    return DrawingOf({0}, {Chunk(id::kRasLLDrawInfo, fields)});
  };
  EXPECT_EQ(FindingsOf(raster(32762), BinaryKind::kZor), std::vector<Found>{});
  const std::vector<Found> found = FindingsOf(raster(32763), BinaryKind::kZor);
  ASSERT_FALSE(found.empty());
  EXPECT_EQ(found[0], (Found{"Q1026", kDrawInfo + 8, "DrawInfoSet/RasLLDrawInfo[0]"}));
}

}  // namespace
