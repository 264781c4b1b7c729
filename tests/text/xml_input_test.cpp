// How elements fill edit objects: leniently, by exact tag.

#include <gtest/gtest.h>

#include "qenzor/qen/line_obj.h"
#include "qenzor/qen/poly_obj.h"
#include "qenzor/qen/ras_ll_obj.h"
#include "qenzor/qen/ras_mm_obj.h"
#include "tests/support/qen_xml.h"

namespace qenzor::testing {
namespace {

std::int32_t HeightOf(const std::string& text) {
  const auto edit = EditFromObjectXml("<PolyObj><Height>" + text + "</Height></PolyObj>");
  return FirstObject<CPolyObjEdit>(*edit)->Height;
}

std::uint64_t ZIdOf(const std::string& text) {
  const auto edit = EditFromXml(
      "<Qen><QenMapData><MeshSegmentSet><MeshSegment><LayerSet><LayerData><ZIdObjSet><ZIdObj><"
      "ZId>" +
      text +
      "</ZId></ZIdObj></ZIdObjSet></LayerData></LayerSet></MeshSegment></MeshSegmentSet>"
      "</QenMapData></Qen>");
  return FirstZId(*edit)->ZId;
}

TEST(XmlInput, UnknownElementsAreSkipped) {
  const auto edit = EditFromObjectXml(
      "<SetElem><Pt x='1' y='1'/></SetElem><Nonsense/><RasMMObj><Foo>7</Foo><Pt x='3' y='4'/>"
      "</RasMMObj><lineobj/>");
  ASSERT_EQ(FirstObjSet(*edit)->GetElemCount(), 1U);
  EXPECT_EQ(FirstObject<CRasMMObjEdit>(*edit)->Pt, (CPoint{3, 4}));
}

TEST(XmlInput, KnownElementsOfAnotherKindAreMadeAndDropped) {
  const auto edit = EditFromObjectXml(
      "<LayerData><LayerNo>1</LayerNo></LayerData><MarkData/><LineObj/><ObjSet/>");
  ASSERT_EQ(FirstObjSet(*edit)->GetElemCount(), 1U);
  EXPECT_NE(FirstObject<CLineObjEdit>(*edit), nullptr);
}

TEST(XmlInput, AnObjectSetTakesAllFiveKindsInDocumentOrder) {
  const auto edit = EditFromObjectXml("<RasMMObj/><RasLLObj/><CmbLblObj/><PolyObj/><LineObj/>");
  const std::unique_ptr<CQen> doc(edit->EditDataToQenData());
  auto* layer = doc->MapData->MeshSegmentSet->GetElem(0)->LayerSet->GetElem(0);
  CObjSet* set = layer->ZIdObjSet->GetElem(0)->ObjSet.get();
  ASSERT_EQ(set->GetElemCount(), 5U);
  const std::uint32_t ids[] = {18, 16, 5, 13, 9};
  for (std::uint32_t i = 0; i < 5; ++i) EXPECT_EQ(set->GetElem(i)->GetHeader().ChunkId, ids[i]);
}

TEST(XmlInput, MissingElementsLeaveTheFieldsAsConstructed) {
  const auto edit = EditFromObjectXml("<PolyObj/>");
  EXPECT_EQ(FirstObject<CPolyObjEdit>(*edit)->Height, 0);
  EXPECT_TRUE(FirstObject<CPolyObjEdit>(*edit)->Pt.empty());
  EXPECT_EQ(FirstObject<CPolyObjEdit>(*edit)->AddedObjInfoSet, nullptr);
}

TEST(XmlInput, ARepeatedElementOverwritesAndAListAppends) {
  const auto edit = EditFromObjectXml(
      "<PolyObj><Pt x='1' y='2'/><Height>5</Height><Pt x='3' y='4'/><Height>6</Height></PolyObj>");
  auto* poly = FirstObject<CPolyObjEdit>(*edit);
  EXPECT_EQ(poly->Height, 6);
  EXPECT_EQ(poly->Pt, (CList<CPoint>{{1, 2}, {3, 4}}));
}

TEST(XmlInput, NumbersFollowTheStandardConversions) {
  EXPECT_EQ(HeightOf("12"), 12);
  EXPECT_EQ(HeightOf("-12"), -12);
  EXPECT_EQ(HeightOf("+12"), 12);
  EXPECT_EQ(HeightOf(" \t\n12"), 12);
  EXPECT_EQ(HeightOf("12abc"), 12);
  EXPECT_EQ(HeightOf("12.9"), 12);
  EXPECT_EQ(HeightOf("abc"), 0);
  EXPECT_EQ(HeightOf("0x10"), 0);
  EXPECT_EQ(HeightOf("- 5"), 0);
}

TEST(XmlInput, NumbersOutOfRangeSaturate) {
  EXPECT_EQ(HeightOf("2147483647"), 2147483647);
  EXPECT_EQ(HeightOf("2147483648"), 2147483647);
  EXPECT_EQ(HeightOf("-2147483649"), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(ZIdOf("18446744073709551615"), 18446744073709551615ULL);
  EXPECT_EQ(ZIdOf("18446744073709551616"), 18446744073709551615ULL);
  EXPECT_EQ(ZIdOf("-1"), 18446744073709551615ULL);
}

TEST(XmlInput, AnElementWithoutTextIsZero) {
  EXPECT_EQ(HeightOf(""), 0);
  EXPECT_EQ(HeightOf("   "), 0);
  EXPECT_EQ(HeightOf("<Sub>9</Sub>"), 0);
  EXPECT_EQ(HeightOf("<!-- 9 -->9"), 0);
  EXPECT_EQ(ZIdOf(""), 0U);
}

TEST(XmlInput, CharacterDataAndReferencesAreText) {
  EXPECT_EQ(HeightOf("<![CDATA[31]]>"), 31);
  EXPECT_EQ(HeightOf("&#x33;&#50;"), 32);
}

TEST(XmlInput, PointsReadTheirAttributesAndTakeAbsentOnesAsZero) {
  const auto edit = EditFromObjectXml(
      "<LineObj><Pt x='1'/><Pt y='2'/><Pt/><Pt X='9' y='-3 ' x='0007' z='4'/><Pt x='a' y=' 5b'/>"
      "</LineObj>");
  EXPECT_EQ(FirstObject<CLineObjEdit>(*edit)->Pt,
            (CList<CPoint>{{1, 0}, {0, 2}, {0, 0}, {7, -3}, {0, 5}}));
}

TEST(XmlInput, RectanglesReadTheirAttributesAndTakeAbsentOnesAsZero) {
  const auto edit = EditFromObjectXml("<RasLLObj><Rect W='-5' E='6'/></RasLLObj>");
  EXPECT_EQ(FirstObject<CRasLLObjEdit>(*edit)->Rect, (CRect{-5, 0, 6, 0}));
}

TEST(XmlInput, TextBetweenElementsAndCommentsAreSkipped) {
  const auto edit = EditFromObjectXml(
      "words<!-- <LineObj/> --><?pi ?><LineObj> words <!-- c --><Pt x='1' y='1'/>words</LineObj>");
  ASSERT_EQ(FirstObjSet(*edit)->GetElemCount(), 1U);
  EXPECT_EQ(FirstObject<CLineObjEdit>(*edit)->Pt.size(), 1U);
}

TEST(XmlInput, ASetElementIsReplacedByALaterOne) {
  const auto edit = EditFromXml(
      "<Qen><QenMapData>"
      "<MeshSegmentSet><MeshSegment/><MeshSegment/></MeshSegmentSet>"
      "<MeshSegmentSet><MeshSegment><MeshSegmentNo>4</MeshSegmentNo></MeshSegment></MeshSegmentSet>"
      "</QenMapData></Qen>");
  ASSERT_EQ(edit->MapData->MeshSegmentSet->GetElemCount(), 1U);
  EXPECT_EQ(FirstSegment(*edit)->MeshSegmentNo, 4);
}

}  // namespace
}  // namespace qenzor::testing
