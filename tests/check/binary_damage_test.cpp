// Small edits of a good document, each with what is found and where.

#include <gtest/gtest.h>

#include <functional>

#include "qenzor/qen/qen.h"
#include "qenzor/zor/zor.h"
#include "tests/support/findings.h"
#include "tests/support/qen_bytes.h"
#include "tests/support/zor_bytes.h"

namespace {

using namespace qenzor;
using namespace qenzor::testing;

constexpr std::uint32_t kQenRoot = 42;
constexpr std::uint32_t kZorRoot = 19;

void SetU32(Bytes& bytes, std::size_t at, std::uint32_t value) {
  for (std::size_t i = 0; i < 4; ++i) bytes[at + i] = static_cast<std::uint8_t>(value >> (8 * i));
}

/// A map with these chunks in its one segment, which begins at byte 62; they begin at 72.
Bytes MapWith(const std::vector<Bytes>& segment_chunks) {
  Bytes data = Bytes().U16(1);
  for (const Bytes& chunk : segment_chunks) data.Add(chunk);
  return GoodQenInfo().Add(
      Chunk(id::kQenMapData, SetChunk(id::kMeshSegmentSet, {Chunk(id::kMeshSegment, data)})));
}

/// A map with these objects in its one object set.
Bytes MapOf(const std::vector<Bytes>& objects) { return GoodQenInfo().Add(MapDataBytes(objects)); }

/// A label's draw info that shows this mark.
Bytes LabelInfoBytes(std::uint32_t mark) {
  return Chunk(id::kCmbLblDrawInfo,
               Bytes().U16(2).U32(mark).U8(0).U16(0).U8(0).U32(0).U32(0).U32(0).U16(0));
}

/// Draw data with a mark and two draw infos, all used.
Bytes GoodDrawing() {
  return GoodZorInfo().Add(DrawDataBytes(
      {SetChunk(id::kDrawAtterSet, {AtterBytes(0, {1, 0}), AtterBytes(1)}),
       SetChunk(id::kDrawInfoSet, {LineInfoBytes(7), LabelInfoBytes(0)}),
       SetChunk(id::kMarkDataSet,
                {MarkBytes({-5, -6, 5, 6}, {MarkElemBytes(1, 2, 0xFF0000FF, {{3, -4}})})})}));
}

constexpr const char* kSegment = "MeshSegmentSet/MeshSegment[0]";
constexpr const char* kObjSet =
    "MeshSegmentSet/MeshSegment[0]/LayerSet/LayerData[0]/ZIdObjSet/ZIdObj[0]/ObjSet";

std::string At(const char* front, const std::string& behind) { return front + ("/" + behind); }

void ExpectRead(const Bytes& document, BinaryKind kind, bool expected) {
  if (kind == BinaryKind::kQen)
    EXPECT_EQ(CQen().Read(document.data(), document.size()), expected);
  else
    EXPECT_EQ(CZor().Read(document.data(), document.size()), expected);
}

void ExpectFound(const Bytes& document, BinaryKind kind, const std::vector<Found>& expected) {
  EXPECT_EQ(FindingsOf(document, kind), expected);
  FoundSink ignored;
  const std::uint64_t errors =
      CheckBinary({document.data(), document.size()}, kind, {}, ignored).Of(Severity::kError);
  ExpectRead(document, kind, errors == 0);
}

TEST(BinaryDamage, AGoodDocumentHasNothingToFind) {
  ExpectFound(MapOf({LineBytes({{1, 2}, {3, 4}}), LabelBytes(u"a", InfoSetBytes(u"b"))}),
              BinaryKind::kQen, {});
  ExpectFound(GoodDrawing(), BinaryKind::kZor, {});
}

TEST(BinaryDamage, TheFileInfoAndTheRootHeaderMayBeMissing) {
  const Bytes map = MapWith({});
  ExpectFound(map.Front(0), BinaryKind::kQen, {{"Q1010", 0, ""}});
  ExpectFound(map.Front(41), BinaryKind::kQen, {{"Q1010", 41, ""}});
  ExpectFound(map.Front(49), BinaryKind::kQen, {{"Q1010", 49, "QenMapData"}});
}

TEST(BinaryDamage, EveryCutIsOneFindingAtTheInnermostChunk) {
  for (const auto& [document, kind] :
       {std::pair(MapOf({LineBytes({{1, 2}, {3, 4}}, InfoSetBytes(u"b"))}), BinaryKind::kQen),
        std::pair(GoodDrawing(), BinaryKind::kZor)})
    for (std::uint32_t size = 0; size < document.size(); ++size) {
      const Bytes cut = document.Front(size);
      const std::vector<Found> found = FindingsOf(cut, kind);
      ASSERT_EQ(found.size(), 1U) << size;
      EXPECT_EQ(found[0].Code, "Q1010") << size;
      EXPECT_LE(found[0].Offset, size);
      ExpectRead(cut, kind, false);
    }
}

TEST(BinaryDamage, ASubChunkThatRunsPastItsParentIsAnError) {
  Bytes map = MapWith({SetChunk(id::kLayerSet, {LayerBytes(1)}), SetChunk(id::kObjSet, {})});
  SetU32(map, 76, 15);  // the layer set's data size, one more than it has
  const std::vector<Found> found = FindingsOf(map, BinaryKind::kQen);
  ASSERT_FALSE(found.empty());
  ExpectRead(map, BinaryKind::kQen, false);
  SetU32(map, 76, 100);
  ExpectFound(
      map, BinaryKind::kQen,
      {{"Q1019", 94, At(kSegment, "LayerSet/ObjSet")}, {"Q1011", 72, At(kSegment, "LayerSet")}});
}

TEST(BinaryDamage, FieldsLongerThanTheirChunkAreAnError) {
  Bytes map = MapOf({LineBytes({{1, 2}, {3, 4}}), LineBytes({{5, 6}})});
  const std::uint32_t line = map.size() - 8 - 6 - 8 - 10;
  map[line + 8] = 9;  // the number of points
  ExpectFound(map, BinaryKind::kQen, {{"Q1012", line + 10, At(kObjSet, "LineObj[0]")}});
}

TEST(BinaryDamage, AnEndTooShortForAChunkIsAnError) {
  Bytes map = MapWith({SetChunk(id::kLayerSet, {}), Bytes{1, 2, 3}});
  ExpectFound(map, BinaryKind::kQen, {{"Q1013", 84, kSegment}});
}

TEST(BinaryDamage, ChunksThatAreNotKeptAreWarnings) {
  ExpectFound(MapWith({Chunk(77, {}), SetChunk(id::kObjSet, {LineBytes({})}),
                       SetChunk(id::kLayerSet, {}), SetChunk(id::kLayerSet, {})}),
              BinaryKind::kQen,
              {{"Q1018", 72, At(kSegment, "chunk 77")},
               {"Q1019", 80, At(kSegment, "ObjSet")},
               {"Q1020", 114, At(kSegment, "LayerSet")}});
}

TEST(BinaryDamage, WhatIsWrongInsideADroppedChunkIsFoundOnlyIfReadingFailsOverIt) {
  const Bytes repeated = SetChunk(id::kDrawAtterSet, {AtterBytes(1), AtterBytes(1)});
  ExpectFound(MapWith({repeated}), BinaryKind::kQen, {{"Q1019", 72, At(kSegment, "DrawAtterSet")}});
  ExpectFound(MapWith({Chunk(77, Bytes{1})}), BinaryKind::kQen,
              {{"Q1018", 72, At(kSegment, "chunk 77")}, {"Q1013", 80, At(kSegment, "chunk 77")}});
}

TEST(BinaryDamage, NestingDeeperThanIsReadIsAnError) {
  Bytes chunk = Chunk(77, {});
  for (int i = 0; i < 300; ++i) chunk = Chunk(77, chunk);
  const std::vector<Found> found = FindingsOf(MapWith({chunk}), BinaryKind::kQen);
  ASSERT_EQ(found.size(), 2U);
  EXPECT_EQ(found[1].Code, "Q1014");
  EXPECT_EQ(found[1].Offset, 72U + 252 * 8);
}

TEST(BinaryDamage, AnotherRootAndBytesBehindItAreWarnings) {
  Bytes map = MapWith({});
  map[kQenRoot] = 26;
  map.Add("tail");
  ExpectFound(map, BinaryKind::kQen,
              {{"Q1016", kQenRoot, "QenMapData"}, {"Q1017", 72, "QenMapData"}});
}

TEST(BinaryDamage, ADeclaredCountThatDiffersIsAWarning) {
  Bytes map = MapWith({SetChunk(id::kLayerSet, {LayerBytes(1)})});
  SetU32(map, 80, 3);
  ExpectFound(map, BinaryKind::kQen, {{"Q1021", 80, At(kSegment, "LayerSet")}});
}

TEST(BinaryDamage, TextsThatLoseSomethingAreWarnings) {
  const auto with_url = [](const Bytes& text) {
    return MapOf({LineBytes({}, SetChunk(id::kAddedObjInfoSet, {Chunk(id::kUrlInfo, text)}))});
  };
  const std::string url = At(kObjSet, "LineObj[0]/AddedObjInfoSet/UrlInfo[0]");
  const std::uint32_t at = with_url(Bytes().U16(0)).size() - 2;
  ExpectFound(with_url(Bytes().U16(3).U16(0xFEFF).U8(65)), BinaryKind::kQen, {{"Q1022", at, url}});
  ExpectFound(with_url(Bytes().U16(4).U16(0x1234).U16(65)), BinaryKind::kQen,
              {{"Q1023", at + 2, url}});
  ExpectFound(with_url(Bytes().U16(8).U16(0xFEFF).U16(65).U16(0).U16(66)), BinaryKind::kQen,
              {{"Q1024", at + 6, url}});
  const Bytes brush =
      Chunk(id::kPolyBmpBrushDrawInfo, Bytes().Text(std::u16string(32, u'x')).U16(0));
  ExpectFound(GoodZorInfo().Add(DrawDataBytes({SetChunk(id::kDrawInfoSet, {brush})})),
              BinaryKind::kZor,
              {{"Q1015", kZorRoot + 8 + 8 + 4 + 8 + 2, "DrawInfoSet/PolyBmpBrushDrawInfo[0]"}});
}

TEST(BinaryDamage, MorePointsThanAllReadersTakeAreAWarning) {
  const Bytes map = MapOf({LineBytes(Points(32768))});
  ExpectFound(map, BinaryKind::kQen,
              {{"Q1025", map.size() - 2 - 4 * 32768, At(kObjSet, "LineObj[0]")}});
  ExpectFound(MapOf({LineBytes(Points(32767))}), BinaryKind::kQen, {});
}

TEST(BinaryDamage, RepeatedKeysAndIndicesOutsideTheirSetsAreWarnings) {
  const Bytes drawing = GoodZorInfo().Add(
      DrawDataBytes({SetChunk(id::kDrawAtterSet, {AtterBytes(7, {0}), AtterBytes(7, {0, 1})}),
                     SetChunk(id::kDrawInfoSet, {LabelInfoBytes(1)})}));
  ExpectFound(drawing, BinaryKind::kZor,
              {{"Q1069", 71, "DrawAtterSet/DrawAtter[1]"},
               {"Q1070", 103, "DrawAtterSet/DrawAtter[1]/DrawInfoIdxSet"},
               {"Q1071", 129, "DrawInfoSet/CmbLblDrawInfo[0]"}});
}

TEST(BinaryDamage, AfterAnErrorNothingIsFoundThatOnlyFollowsFromIt) {
  const Bytes drawing = GoodZorInfo().Add(
      DrawDataBytes({SetChunk(id::kDrawAtterSet, {AtterBytes(7, {0, 1, 2})}),
                     SetChunk(id::kDrawInfoSet, {LineInfoBytes(1), LineInfoBytes(2)})}));
  EXPECT_EQ(FindingsOf(drawing, BinaryKind::kZor).size(), 1U);
  const std::vector<Found> found = FindingsOf(drawing.Front(drawing.size() - 1), BinaryKind::kZor);
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].Code, "Q1010");
}

TEST(BinaryDamage, ZIdsOfTheOtherDocumentAreAskedForOnceEach) {
  const Bytes map = MapOf({});
  CZIdTable drawn;
  CheckOptions options;
  options.OtherZIds = &drawn;
  const std::uint32_t z_id = map.size() - 8 - 4 - 8;
  EXPECT_EQ(FindingsOf(map, BinaryKind::kQen, options),
            (std::vector<Found>{{"Q1080", z_id,
                                 "MeshSegmentSet/MeshSegment[0]/LayerSet/"
                                 "LayerData[0]/ZIdObjSet/ZIdObj[0]"}}));
  drawn.Add(7);
  EXPECT_TRUE(FindingsOf(map, BinaryKind::kQen, options).empty());
  EXPECT_EQ(FindingsOf(GoodDrawing(), BinaryKind::kZor, options).size(), 2U);
}

}  // namespace
