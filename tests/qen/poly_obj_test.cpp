#include "qenzor/qen/poly_obj.h"

#include <gtest/gtest.h>

#include "qenzor/qen/line_obj.h"
#include "tests/support/chunk_io.h"
#include "tests/support/qen_bytes.h"
#include "tests/support/qen_xml.h"

namespace qenzor::testing {
namespace {

const Points kRing{{0, 0}, {5, 1}, {-2, 8}, {0, 0}};

TEST(PolyObj, IsEmptyWhenConstructed) {
  CPolyObj poly;
  EXPECT_EQ(poly.GetHeader().ChunkId, 13U);
  EXPECT_EQ(poly.Height, 0);
  EXPECT_TRUE(poly.Pt.empty());
  EXPECT_EQ(poly.GetBoundRect(), CRect{});
  EXPECT_EQ(Written(poly), Bytes().U32(13).U32(6).I32(0).U16(0));
}

TEST(PolyObj, ReadsAndWritesHeightAndPoints) {
  const Bytes bytes = Bytes().U32(13).U32(14).I32(-70000).U16(2).I16(1).I16(-2).I16(3).I16(4);
  for (const auto& poly : {FromMemory<CPolyObj>(bytes), FromFile<CPolyObj>(bytes)}) {
    ASSERT_NE(poly, nullptr);
    EXPECT_EQ(poly->Height, -70000);
    EXPECT_EQ(poly->Pt[1], (CPoint{3, 4}));
    EXPECT_EQ(Written(*poly), bytes);
  }
}

TEST(PolyObj, TheRectangleOfAClosedRingIsTheSameInBothPaths) {
  const Bytes bytes = PolyBytes(1, kRing);
  for (const auto& poly : {FromMemory<CPolyObj>(bytes), FromFile<CPolyObj>(bytes)}) {
    ASSERT_NE(poly, nullptr);
    EXPECT_EQ(poly->GetBoundRect(), (CRect{-2, 0, 5, 8}));
  }
}

TEST(PolyObj, ALastPointOfItsOwnCountsInAFileOnly) {
  const Bytes bytes = PolyBytes(1, {{0, 0}, {5, 1}, {-2, 8}, {100, -100}});
  EXPECT_EQ(FromMemory<CPolyObj>(bytes)->GetBoundRect(), (CRect{-2, 0, 5, 8}));
  EXPECT_EQ(FromFile<CPolyObj>(bytes)->GetBoundRect(), (CRect{-2, -100, 100, 8}));
  EXPECT_EQ(FromMemory<CPolyObj>(bytes)->Pt[3], (CPoint{100, -100}));
}

TEST(PolyObj, RectanglesOfFewPoints) {
  EXPECT_EQ(FromMemory<CPolyObj>(PolyBytes(1, {}))->GetBoundRect(), CRect{});
  EXPECT_EQ(FromFile<CPolyObj>(PolyBytes(1, {}))->GetBoundRect(), CRect{});
  EXPECT_EQ(FromMemory<CPolyObj>(PolyBytes(1, {{4, 5}}))->GetBoundRect(), (CRect{4, 5, 4, 5}));
  EXPECT_EQ(FromFile<CPolyObj>(PolyBytes(1, {{4, 5}}))->GetBoundRect(), (CRect{4, 5, 4, 5}));
  const Bytes two = PolyBytes(1, {{4, 5}, {6, 7}});
  EXPECT_EQ(FromMemory<CPolyObj>(two)->GetBoundRect(), (CRect{4, 5, 4, 5}));
  EXPECT_EQ(FromFile<CPolyObj>(two)->GetBoundRect(), (CRect{4, 5, 6, 7}));
}

TEST(PolyObj, EveryMissingByteFails) {
  const Bytes whole = PolyBytes(7, kRing);
  for (std::size_t size = 8; size < whole.size(); ++size) {
    EXPECT_EQ(FromMemory<CPolyObj>(whole.Front(size)), nullptr) << size;
    EXPECT_EQ(FromFile<CPolyObj>(whole.Front(size)), nullptr) << size;
  }
}

TEST(PolyObj, ItsDataSizeWithAnInfoSet) {
  const Bytes bytes = PolyBytes(7, kRing, SetChunk(id::kAddedObjInfoSet, {}));
  const auto poly = FromMemory<CPolyObj>(bytes);
  ASSERT_NE(poly, nullptr);
  EXPECT_EQ(Written(*poly), bytes);
  EXPECT_EQ(poly->GetHeader().DataSize, 4U * 4 + 6 + 8 + 4);
}

TEST(PolyObj, CloneCopiesEverything) {
  const Bytes bytes = PolyBytes(7, kRing, InfoSetBytes(u"url"));
  const auto poly = FromMemory<CPolyObj>(bytes);
  const auto clone = ClonedFrom(*poly);
  ASSERT_NE(clone, nullptr);
  EXPECT_EQ(clone->GetBoundRect(), poly->GetBoundRect());
  EXPECT_EQ(Written(*clone, false), bytes);
}

TEST(PolyObj, DeepCopyOfAnotherClassKeepsHeightAndRectangle) {
  const auto poly = FromMemory<CPolyObj>(PolyBytes(7, kRing, InfoSetBytes(u"url")));
  CLineObj other;
  poly->DeepCopy(&other);
  EXPECT_EQ(poly->Height, 7);
  EXPECT_EQ(poly->GetBoundRect(), (CRect{-2, 0, 5, 8}));
  EXPECT_TRUE(poly->Pt.empty());
  EXPECT_EQ(poly->AddedObjInfoSet, nullptr);
}

TEST(PolyObjEdit, RoundTripKeepsEveryByteButNoRectangle) {
  const Bytes bytes = PolyBytes(-7, kRing, InfoSetBytes(u"url"));
  const auto poly = FromMemory<CPolyObj>(bytes);
  CPolyObjEdit edit;
  edit.ChunkDataToEditData(poly.get());
  EXPECT_EQ(edit.Height, -7);
  const auto back = ToChunk<CPolyObj>(edit);
  EXPECT_EQ(back->GetBoundRect(), CRect{});
  EXPECT_EQ(back->GetHeader().DataSize, 0U);
  const Bytes written = Written(*back);
  EXPECT_EQ(written, bytes);
  EXPECT_EQ(FromMemory<CPolyObj>(written)->GetBoundRect(), (CRect{-2, 0, 5, 8}));
}

TEST(PolyObjEdit, CloneCopiesHeightPointsAndInfo) {
  CPolyObjEdit edit;
  edit.Height = 9;
  edit.Pt = {{1, 2}};
  edit.SetSubChunkEdit(new CAddedObjInfoSetEdit);
  const std::unique_ptr<CAbstractChunkEdit> clone(edit.Clone());
  auto* copy = dynamic_cast<CPolyObjEdit*>(clone.get());
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->Height, 9);
  EXPECT_EQ(copy->Pt, edit.Pt);
  EXPECT_NE(copy->AddedObjInfoSet, nullptr);
}

TEST(PolyObjText, WritesHeightThenPointsThenInfo) {
  const auto poly =
      FromMemory<CPolyObj>(PolyBytes(-5, {{1, 2}}, SetChunk(id::kAddedObjInfoSet, {})));
  CPolyObjTextConverter converter;
  EXPECT_EQ(XmlOf(converter, poly.get(), 1),
            "\t<Height>-5</Height>\r\n\t<Pt x=\"1\" y=\"2\" />\r\n"
            "\t<AddedObjInfoSet>\r\n\t</AddedObjInfoSet>\r\n");
}

TEST(PolyObjText, ReadsPointsInDocumentOrderWhereverTheHeightStands) {
  const auto edit = EditFromObjectXml(
      "<PolyObj><Pt x='1' y='2'/><Height>-2147483648</Height><Pt x='3' y='4'/></PolyObj>");
  auto* poly = FirstObject<CPolyObjEdit>(*edit);
  ASSERT_NE(poly, nullptr);
  EXPECT_EQ(poly->Height, std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(poly->Pt, (CList<CPoint>{{1, 2}, {3, 4}}));
}

}  // namespace
}  // namespace qenzor::testing
