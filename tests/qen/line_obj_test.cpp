#include "qenzor/qen/line_obj.h"

#include <gtest/gtest.h>

#include "qenzor/qen/poly_obj.h"
#include "qenzor/qen/ras_mm_obj.h"
#include "tests/support/chunk_io.h"
#include "tests/support/counted.h"
#include "tests/support/qen_bytes.h"
#include "tests/support/qen_xml.h"

namespace qenzor::testing {
namespace {

const Points kPoints{{3, -4}, {-7, 9}, {0, 0}};

TEST(LineObj, IsEmptyWhenConstructed) {
  CLineObj line;
  EXPECT_EQ(line.GetHeader().ChunkId, 9U);
  EXPECT_EQ(line.GetHeader().DataSize, 0U);
  EXPECT_TRUE(line.Pt.empty());
  EXPECT_EQ(line.GetBoundRect(), CRect{});
  EXPECT_EQ(line.AddedObjInfoSet, nullptr);
}

TEST(LineObj, ReadsAndWritesItsPoints) {
  const Bytes bytes = Bytes().U32(9).U32(14).U16(3).I16(3).I16(-4).I16(-7).I16(9).I16(0).I16(0);
  for (const auto& line : {FromMemory<CLineObj>(bytes), FromFile<CLineObj>(bytes)}) {
    ASSERT_NE(line, nullptr);
    ASSERT_EQ(line->Pt.size(), 3);
    EXPECT_EQ(line->Pt[1], (CPoint{-7, 9}));
    EXPECT_EQ(line->GetBoundRect(), (CRect{-7, -4, 3, 9}));
    EXPECT_EQ(Written(*line), bytes);
  }
}

TEST(LineObj, SignsAreExtended) {
  const auto line = FromMemory<CLineObj>(LineBytes({{-32768, 32767}}));
  ASSERT_NE(line, nullptr);
  EXPECT_EQ(line->Pt[0], (CPoint{-32768, 32767}));
}

TEST(LineObj, WithoutPointsIsAnEmptyObjectWithAnEmptyRectangle) {
  const Bytes bytes = LineBytes({});
  for (const auto& line : {FromMemory<CLineObj>(bytes), FromFile<CLineObj>(bytes)}) {
    ASSERT_NE(line, nullptr);
    EXPECT_TRUE(line->Pt.empty());
    EXPECT_EQ(line->GetBoundRect(), CRect{});
    EXPECT_EQ(Written(*line), bytes);
  }
}

TEST(LineObj, TheRectangleOfOnePointIsThatPoint) {
  for (const auto& line :
       {FromMemory<CLineObj>(LineBytes({{5, -6}})), FromFile<CLineObj>(LineBytes({{5, -6}}))}) {
    ASSERT_NE(line, nullptr);
    EXPECT_EQ(line->GetBoundRect(), (CRect{5, -6, 5, -6}));
  }
}

TEST(LineObj, TheMostPointsThatTheFormatSupportsAreRead) {
  Points points(32767);
  for (std::size_t i = 0; i < points.size(); ++i)
    points[i] = {static_cast<std::int32_t>(i), -static_cast<std::int32_t>(i)};
  const Bytes bytes = LineBytes(points);
  for (const auto& line : {FromMemory<CLineObj>(bytes), FromFile<CLineObj>(bytes)}) {
    ASSERT_NE(line, nullptr);
    EXPECT_EQ(line->GetBoundRect(), (CRect{0, -32766, 32766, 0}));
    EXPECT_TRUE(Written(*line) == bytes);
  }
}

TEST(LineObj, EveryMissingByteFails) {
  const Bytes whole = LineBytes(kPoints);
  for (std::size_t size = 8; size < whole.size(); ++size) {
    EXPECT_EQ(FromMemory<CLineObj>(whole.Front(size)), nullptr) << size;
    EXPECT_EQ(FromFile<CLineObj>(whole.Front(size)), nullptr) << size;
  }
}

TEST(LineObj, CarriesAnAddedInfoSet) {
  const Bytes bytes = LineBytes(kPoints, InfoSetBytes(u"url"));
  for (const auto& line : {FromMemory<CLineObj>(bytes), FromFile<CLineObj>(bytes)}) {
    ASSERT_NE(line, nullptr);
    EXPECT_EQ(Written(*line), bytes);
    EXPECT_EQ(line->GetHeader().DataSize, 14 + 8 + line->AddedObjInfoSet->GetHeader().DataSize);
  }
}

TEST(LineObj, TheLaterInfoSetStaysAndTheEarlierIsDestroyed) {
  CLineObj line;
  line.SubChunkSet(0, new Counted<CAddedObjInfoSet>);
  auto* later = new CAddedObjInfoSet;
  line.SubChunkSet(1, later);
  EXPECT_EQ(Counted<CAddedObjInfoSet>::Alive(), 0);
  line.SubChunkSet(2, new Counted<CUrlInfo>);
  EXPECT_EQ(Counted<CUrlInfo>::Alive(), 0);
  EXPECT_EQ(line.AddedObjInfoSet.get(), later);
}

TEST(LineObj, DropsOtherSubChunks) {
  const auto line = FromMemory<CLineObj>(LineBytes(kPoints, UrlBytes(u"url")));
  ASSERT_NE(line, nullptr);
  EXPECT_EQ(Written(*line), LineBytes(kPoints));
}

TEST(LineObj, CloneCopiesHeaderRectanglePointsAndInfo) {
  const Bytes bytes = LineBytes(kPoints, InfoSetBytes(u"url"));
  const auto line = FromMemory<CLineObj>(bytes);
  ASSERT_NE(line, nullptr);
  const auto clone = ClonedFrom(*line);
  ASSERT_NE(clone, nullptr);
  EXPECT_EQ(clone->GetBoundRect(), line->GetBoundRect());
  EXPECT_NE(clone->Pt.data(), line->Pt.data());
  EXPECT_EQ(Written(*clone, false), bytes);
}

TEST(LineObj, DeepCopyOfAnotherClassReleasesButKeepsTheRectangle) {
  const auto line = FromMemory<CLineObj>(LineBytes(kPoints, InfoSetBytes(u"url")));
  ASSERT_NE(line, nullptr);
  CPolyObj other;
  line->DeepCopy(&other);
  EXPECT_TRUE(line->Pt.empty());
  EXPECT_EQ(line->AddedObjInfoSet, nullptr);
  EXPECT_EQ(line->GetBoundRect(), (CRect{-7, -4, 3, 9}));
  EXPECT_EQ(line->GetHeader().ChunkId, 9U);
}

TEST(LineObj, DeepCopyOfASourceWithoutInfoRemovesIt) {
  const auto line = FromMemory<CLineObj>(LineBytes(kPoints, InfoSetBytes(u"url")));
  const auto source = FromMemory<CLineObj>(LineBytes({{1, 1}}));
  line->DeepCopy(source.get());
  EXPECT_EQ(Written(*line), LineBytes({{1, 1}}));
}

TEST(LineObjEdit, RoundTripKeepsEveryByteButNoRectangle) {
  const Bytes bytes = LineBytes(kPoints, InfoSetBytes(u"url"));
  const auto line = FromMemory<CLineObj>(bytes);
  CLineObjEdit edit;
  edit.ChunkDataToEditData(line.get());
  EXPECT_EQ(edit.Pt, (CList<CPoint>(kPoints.begin(), kPoints.end())));
  const auto back = ToChunk<CLineObj>(edit);
  EXPECT_EQ(back->GetBoundRect(), CRect{});
  EXPECT_EQ(back->GetHeader().DataSize, 0U);
  EXPECT_EQ(Written(*back), bytes);
}

TEST(LineObjEdit, APointCountBeyondSixteenBitsIsCut) {
  CLineObjEdit edit;
  edit.Pt.assign(65536 + 2, CPoint{1, 2});
  const auto line = ToChunk<CLineObj>(edit);
  EXPECT_EQ(Written(*line), LineBytes({{1, 2}, {1, 2}}));
}

TEST(LineObjEdit, CoordinatesAreCutToSixteenBitsOnlyInTheFile) {
  CLineObjEdit edit;
  edit.Pt = {{40000, -40000}};
  const auto line = ToChunk<CLineObj>(edit);
  EXPECT_EQ(line->Pt[0], (CPoint{40000, -40000}));
  const Bytes written = Written(*line);
  EXPECT_EQ(written, LineBytes({{-25536, 25536}}));
  EXPECT_EQ(FromMemory<CLineObj>(written)->Pt[0], (CPoint{-25536, 25536}));
}

TEST(LineObjEdit, CopiesReplaceAndOtherClassesRelease) {
  CLineObjEdit edit;
  edit.Pt = {{1, 1}};
  edit.SetSubChunkEdit(new CAddedObjInfoSetEdit);
  const std::unique_ptr<CAbstractChunkEdit> clone(edit.Clone());
  auto* copy = dynamic_cast<CLineObjEdit*>(clone.get());
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->Pt, edit.Pt);
  EXPECT_NE(copy->AddedObjInfoSet, edit.AddedObjInfoSet);
  CRasMMObjEdit other;
  copy->DeepCopy(&other);
  EXPECT_TRUE(copy->Pt.empty());
  EXPECT_EQ(copy->AddedObjInfoSet, nullptr);
}

TEST(LineObjEdit, TakesAnInfoSetOnly) {
  CLineObjEdit edit;
  EXPECT_TRUE(edit.SetSubChunkEdit(new Counted<CAddedObjInfoSetEdit>));
  EXPECT_TRUE(edit.SetSubChunkEdit(new CAddedObjInfoSetEdit));
  EXPECT_EQ(Counted<CAddedObjInfoSetEdit>::Alive(), 0);
  EXPECT_FALSE(edit.SetSubChunkEdit(new Counted<CUrlInfoEdit>));
  EXPECT_EQ(Counted<CUrlInfoEdit>::Alive(), 0);
}

TEST(LineObjText, WritesPointsThenInfo) {
  const auto line =
      FromMemory<CLineObj>(LineBytes({{10, -4}, {0, 5}}, SetChunk(id::kAddedObjInfoSet, {})));
  CLineObjTextConverter converter;
  EXPECT_EQ(XmlOf(converter, line.get(), 2),
            "\t\t<Pt x=\"10\" y=\"-4\" />\r\n\t\t<Pt x=\"0\" y=\"5\" />\r\n"
            "\t\t<AddedObjInfoSet>\r\n\t\t</AddedObjInfoSet>\r\n");
}

TEST(LineObjText, ReadsPointsInOrderAndTheLaterInfoSet) {
  const auto edit = EditFromObjectXml(
      "<LineObj><Pt x='40000' y='2'/><AddedObjInfoSet/><Height>3</Height><Pt x='3' y='4'/>"
      "<AddedObjInfoSet><UrlInfo>u</UrlInfo></AddedObjInfoSet><pt x='9' y='9'/></LineObj>");
  auto* line = FirstObject<CLineObjEdit>(*edit);
  ASSERT_NE(line, nullptr);
  EXPECT_EQ(line->Pt, (CList<CPoint>{{40000, 2}, {3, 4}}));
  EXPECT_EQ(line->AddedObjInfoSet->GetElemCount(), 1U);
}

}  // namespace
}  // namespace qenzor::testing
