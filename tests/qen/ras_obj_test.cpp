// Rasters placed by their edges, and rasters placed at a point.

#include <gtest/gtest.h>

#include "qenzor/qen/ras_ll_obj.h"
#include "qenzor/qen/ras_mm_obj.h"
#include "tests/support/chunk_io.h"
#include "tests/support/qen_bytes.h"
#include "tests/support/qen_xml.h"

namespace qenzor::testing {
namespace {

const Bytes kEmptyInfo = SetChunk(id::kAddedObjInfoSet, {});

TEST(RasLLObj, ReadsAndWritesItsEdges) {
  const Bytes bytes = Bytes().U32(16).U32(8).I16(-1).I16(-32768).I16(32767).I16(4);
  for (const auto& raster : {FromMemory<CRasLLObj>(bytes), FromFile<CRasLLObj>(bytes)}) {
    ASSERT_NE(raster, nullptr);
    EXPECT_EQ(raster->Rect, (CRect{-1, -32768, 32767, 4}));
    EXPECT_EQ(Written(*raster), bytes);
  }
}

TEST(RasLLObj, EdgesInTheWrongOrderAreKept) {
  const Bytes bytes = RasLLBytes({10, 20, -10, -20});
  const auto raster = FromMemory<CRasLLObj>(bytes);
  ASSERT_NE(raster, nullptr);
  EXPECT_EQ(raster->Rect, (CRect{10, 20, -10, -20}));
  EXPECT_EQ(Written(*raster), bytes);
}

TEST(RasLLObj, WithAnInfoSetOfDataSizeFourHasDataSizeTwenty) {
  const Bytes bytes = RasLLBytes({1, 2, 3, 4}, kEmptyInfo);
  const auto raster = FromFile<CRasLLObj>(bytes);
  ASSERT_NE(raster, nullptr);
  EXPECT_EQ(Written(*raster), bytes);
  EXPECT_EQ(raster->GetHeader().DataSize, 20U);
}

TEST(RasLLObj, FewerThanEightBytesFail) {
  const Bytes whole = RasLLBytes({1, 2, 3, 4});
  for (std::size_t size = 8; size < 16; ++size) {
    EXPECT_EQ(FromMemory<CRasLLObj>(whole.Front(size)), nullptr) << size;
    EXPECT_EQ(FromFile<CRasLLObj>(whole.Front(size)), nullptr) << size;
  }
}

TEST(RasObj, AFileThatEndsTooSoonLeavesWhatCameInTheFields) {
  CMemFile edges(RasLLBytes({1, 2, 3, 4}).Front(14).vector());
  CRasLLObj rect;
  EXPECT_FALSE(rect.Read(&edges));
  EXPECT_EQ(rect.Rect, (CRect{1, 2, 3, 0}));
  CMemFile point(RasMMBytes({1, 2}).Front(10).vector());
  CRasMMObj raster;
  EXPECT_FALSE(raster.Read(&point));
  EXPECT_EQ(raster.Pt, (CPoint{1, 0}));
  // Memory that is too short is not looked at.
  const Bytes cut = RasLLBytes({1, 2, 3, 4}).Front(14);
  CRasLLObj unread;
  EXPECT_FALSE(unread.Read(cut.data(), cut.size()));
  EXPECT_EQ(unread.Rect, CRect());
}

TEST(RasLLObj, CopiesAndEditRoundTripKeepEveryByte) {
  const Bytes bytes = RasLLBytes({1, 2, 3, 4}, InfoSetBytes(u"url"));
  const auto raster = FromMemory<CRasLLObj>(bytes);
  EXPECT_EQ(Written(*ClonedFrom(*raster), false), bytes);
  CRasLLObjEdit edit;
  edit.ChunkDataToEditData(raster.get());
  const std::unique_ptr<CAbstractChunkEdit> copy(edit.Clone());
  const auto back = ToChunk<CRasLLObj>(*copy);
  EXPECT_EQ(back->GetHeader().DataSize, 0U);
  EXPECT_EQ(Written(*back), bytes);
}

TEST(RasLLObj, DeepCopyOfAnotherClassKeepsTheEdges) {
  const auto raster = FromMemory<CRasLLObj>(RasLLBytes({1, 2, 3, 4}, kEmptyInfo));
  CRasMMObj other;
  raster->DeepCopy(&other);
  EXPECT_EQ(Written(*raster), RasLLBytes({1, 2, 3, 4}));
}

TEST(RasLLObjText, WritesItsRectangleThenInfo) {
  const auto raster = FromMemory<CRasLLObj>(RasLLBytes({1, -2, 3, 4}, kEmptyInfo));
  CRasLLObjTextConverter converter;
  EXPECT_EQ(XmlOf(converter, raster.get(), 1),
            "\t<Rect W=\"1\" S=\"-2\" E=\"3\" N=\"4\" />\r\n"
            "\t<AddedObjInfoSet>\r\n\t</AddedObjInfoSet>\r\n");
}

TEST(RasLLObjText, TheLastRectangleReplacesTheWholeOne) {
  const auto edit = EditFromObjectXml(
      "<RasLLObj><Rect W='1' S='2' E='3' N='4'/><Rect N='8' E='7'/><Pt x='1' y='1'/></RasLLObj>");
  EXPECT_EQ(FirstObject<CRasLLObjEdit>(*edit)->Rect, (CRect{0, 0, 7, 8}));
}

TEST(RasLLObjText, AnEastEdgeBeyondSixteenBitsWrapsInTheFile) {
  const auto edit = EditFromObjectXml("<RasLLObj><Rect W='0' S='0' E='32768' N='0'/></RasLLObj>");
  auto* raster = FirstObject<CRasLLObjEdit>(*edit);
  EXPECT_EQ(raster->Rect.right, 32768);
  EXPECT_EQ(Written(*ToChunk<CRasLLObj>(*raster)), RasLLBytes({0, 0, -32768, 0}));
}

TEST(RasMMObj, ReadsAndWritesItsPoint) {
  const Bytes bytes = Bytes().U32(18).U32(4).I16(-32768).I16(7);
  for (const auto& raster : {FromMemory<CRasMMObj>(bytes), FromFile<CRasMMObj>(bytes)}) {
    ASSERT_NE(raster, nullptr);
    EXPECT_EQ(raster->Pt, (CPoint{-32768, 7}));
    EXPECT_EQ(Written(*raster), bytes);
  }
}

TEST(RasMMObj, WithAnInfoSetOfDataSizeFourHasDataSizeSixteen) {
  const Bytes bytes = RasMMBytes({1, 2}, kEmptyInfo);
  const auto raster = FromFile<CRasMMObj>(bytes);
  ASSERT_NE(raster, nullptr);
  EXPECT_EQ(Written(*raster), bytes);
  EXPECT_EQ(raster->GetHeader().DataSize, 16U);
}

TEST(RasMMObj, FewerThanFourBytesFail) {
  const Bytes whole = RasMMBytes({1, 2});
  for (std::size_t size = 8; size < 12; ++size) {
    EXPECT_EQ(FromMemory<CRasMMObj>(whole.Front(size)), nullptr) << size;
    EXPECT_EQ(FromFile<CRasMMObj>(whole.Front(size)), nullptr) << size;
  }
}

TEST(RasMMObj, CopiesAndEditRoundTripKeepEveryByte) {
  const Bytes bytes = RasMMBytes({1, 2}, InfoSetBytes(u"url"));
  const auto raster = FromMemory<CRasMMObj>(bytes);
  EXPECT_EQ(Written(*ClonedFrom(*raster), false), bytes);
  CRasMMObjEdit edit;
  edit.ChunkDataToEditData(raster.get());
  const std::unique_ptr<CAbstractChunkEdit> copy(edit.Clone());
  EXPECT_EQ(Written(*ToChunk<CRasMMObj>(*copy)), bytes);
}

TEST(RasMMObjText, WritesItsPointThenInfo) {
  const auto raster = FromMemory<CRasMMObj>(RasMMBytes({1, -2}, kEmptyInfo));
  CRasMMObjTextConverter converter;
  EXPECT_EQ(XmlOf(converter, raster.get(), 1),
            "\t<Pt x=\"1\" y=\"-2\" />\r\n\t<AddedObjInfoSet>\r\n\t</AddedObjInfoSet>\r\n");
}

TEST(RasMMObjText, TheLastPointWins) {
  const auto edit =
      EditFromObjectXml("<RasMMObj><Pt x='1' y='2'/><AddedObjInfoSet/><Pt x='3'/></RasMMObj>");
  auto* raster = FirstObject<CRasMMObjEdit>(*edit);
  EXPECT_EQ(raster->Pt, (CPoint{3, 0}));
  EXPECT_NE(raster->AddedObjInfoSet, nullptr);
}

}  // namespace
}  // namespace qenzor::testing
