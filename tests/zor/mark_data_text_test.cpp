// The text form of marks.

#include <gtest/gtest.h>

#include "tests/support/chunk_io.h"
#include "tests/support/zor_bytes.h"
#include "tests/support/zor_xml.h"

namespace qenzor::testing {
namespace {

TEST(MarkDataText, WritesItsEdgesThenItsElements) {
  const auto mark = FromMemory<CMarkData>(
      MarkBytes({-5, -6, 7, 8}, {MarkElemBytes(-1, 300, 0x80FF0001, {{1, -2}, {32767, -32768}}),
                                 MarkElemBytes(2, -32768, 0, {})}));
  ASSERT_NE(mark, nullptr);
  EXPECT_EQ(XmlElement("MarkData", mark.get(), 1),
            "\t<MarkData>\r\n"
            "\t\t<RectMin x=\"-5\" y=\"-6\" />\r\n"
            "\t\t<RectMax x=\"7\" y=\"8\" />\r\n"
            "\t\t<MarkElem>\r\n"
            "\t\t\t<ElemKind>-1</ElemKind>\r\n"
            "\t\t\t<LineWidth>300</LineWidth>\r\n"
            "\t\t\t<Color A=\"128\" R=\"255\" G=\"0\" B=\"1\" />\r\n"
            "\t\t\t<Pt x=\"1\" y=\"-2\" />\r\n"
            "\t\t\t<Pt x=\"32767\" y=\"-32768\" />\r\n"
            "\t\t</MarkElem>\r\n"
            "\t\t<MarkElem>\r\n"
            "\t\t\t<ElemKind>2</ElemKind>\r\n"
            "\t\t\t<LineWidth>-32768</LineWidth>\r\n"
            "\t\t\t<Color A=\"0\" R=\"0\" G=\"0\" B=\"0\" />\r\n"
            "\t\t</MarkElem>\r\n"
            "\t</MarkData>\r\n");
}

TEST(MarkDataText, WithoutElementsWritesItsEdgesOnly) {
  CMarkData mark;
  EXPECT_EQ(XmlElement("MarkData", &mark),
            "<MarkData>\r\n"
            "\t<RectMin x=\"0\" y=\"0\" />\r\n"
            "\t<RectMax x=\"0\" y=\"0\" />\r\n"
            "</MarkData>\r\n");
}

TEST(MarkDataText, CoordinatesInMemoryAreWrittenWhole) {
  CMarkData mark;
  mark.RectMin = {40000, -70000};
  CMarkDataTextConverter converter;
  EXPECT_EQ(XmlOf(converter, &mark),
            "<RectMin x=\"40000\" y=\"-70000\" />\r\n<RectMax x=\"0\" y=\"0\" />\r\n");
}

TEST(MarkDataText, WritesNothingOfAnotherClass) {
  CDrawInfoIdxSet other;
  CMarkDataTextConverter converter;
  EXPECT_EQ(XmlOf(converter, &other), "");
}

/// The mark that an element with this content gives.
std::unique_ptr<CMarkDataEdit> MarkFrom(const std::string& content) {
  const auto edit =
      ZorEditFromDrawDataXml("<MarkDataSet><MarkData>" + content + "</MarkData></MarkDataSet>");
  CMarkDataEdit* mark = edit->DrawData.MarkDataSet->GetElem(0);
  return std::unique_ptr<CMarkDataEdit>(static_cast<CMarkDataEdit*>(mark->Clone()));
}

/// The one element of a mark that an element with this content gives.
std::unique_ptr<CMarkElemEdit> ElemFrom(const std::string& content) {
  const auto mark = MarkFrom("<MarkElem>" + content + "</MarkElem>");
  return std::unique_ptr<CMarkElemEdit>(mark->MarkElem.at(0)->Clone());
}

TEST(MarkDataText, ReadsEverythingInAnyOrder) {
  const auto mark = MarkFrom(
      "<MarkElem><Pt x='1' y='-2'/><Color B='1' A='128' R='255'/><Pt y='4' x='3'/>"
      "<LineWidth>300</LineWidth><ElemKind>-1</ElemKind></MarkElem>"
      "<RectMax x='7' y='8'/><MarkElem><ElemKind>2</ElemKind></MarkElem><RectMin x='-5' y='-6'/>");
  EXPECT_EQ(Written(*ToChunk<CMarkData>(*mark)),
            MarkBytes({-5, -6, 7, 8}, {MarkElemBytes(-1, 300, 0x80FF0001, {{1, -2}, {3, 4}}),
                                       MarkElemBytes(2, 0, 0, {})}));
}

TEST(MarkDataText, AnElementWithoutChildrenIsOfZeroes) {
  const auto mark = MarkFrom("<MarkElem/><MarkElem></MarkElem>");
  EXPECT_EQ(Written(*ToChunk<CMarkData>(*mark)),
            MarkBytes({}, {MarkElemBytes(0, 0, 0, {}), MarkElemBytes(0, 0, 0, {})}));
}

TEST(MarkDataText, MissingAttributesAreZero) {
  const auto mark = MarkFrom(
      "<RectMin x='1' y='2'/><RectMin y='3'/><RectMax/><MarkElem><Pt/><Pt x='4'/>"
      "</MarkElem>");
  EXPECT_EQ(mark->RectMin, (CPoint{0, 3}));
  EXPECT_EQ(mark->RectMax, (CPoint{0, 0}));
  EXPECT_EQ(mark->MarkElem[0]->Pt, (CList<CPoint>{{0, 0}, {4, 0}}));
}

TEST(MarkDataText, CoordinatesKeep32BitsUntilTheyAreWritten) {
  const auto mark = MarkFrom(
      "<RectMin x='40000' y='-40000'/><MarkElem><Pt x='40000' y='2147483647'/></MarkElem>");
  EXPECT_EQ(mark->RectMin, (CPoint{40000, -40000}));
  EXPECT_EQ(mark->MarkElem[0]->Pt, (CList<CPoint>{{40000, 2147483647}}));
  EXPECT_EQ(Written(*ToChunk<CMarkData>(*mark)),
            MarkBytes({-25536, 25536, 0, 0}, {MarkElemBytes(0, 0, 0, {{-25536, -1}})}));
}

TEST(MarkDataText, KindAndWidthAreCutToSixteenBits) {
  EXPECT_EQ(ElemFrom("<ElemKind>65537</ElemKind>")->ElemKind, 1);
  EXPECT_EQ(ElemFrom("<ElemKind>32768</ElemKind>")->ElemKind, -32768);
  EXPECT_EQ(ElemFrom("<LineWidth>-32769</LineWidth>")->LineWidth, 32767);
  EXPECT_EQ(ElemFrom("<LineWidth>words</LineWidth>")->LineWidth, 0);
  EXPECT_EQ(ElemFrom("<LineWidth>3</LineWidth><LineWidth/>")->LineWidth, 0);
}

TEST(MarkDataText, ColoursAreCutByteByByte) {
  EXPECT_EQ(ElemFrom("<Color A='257' R='258' G='-1' B='300'/>")->Color, 0x0102FF2CU);
  EXPECT_EQ(ElemFrom("<Color A='1' R='2' G='3' B='4'/><Color R='9'/>")->Color, 0x00090000U);
}

TEST(MarkDataText, OtherTagsAreIgnored) {
  const auto mark = MarkFrom(
      "<Pt x='1' y='1'/><ElemKind>3</ElemKind><rectmin x='1' y='1'/><markelem/>"
      "<MarkElem><pt x='1' y='1'/><RectMin x='1' y='1'/><MarkElem/></MarkElem>");
  EXPECT_EQ(Written(*ToChunk<CMarkData>(*mark)), MarkBytes({}, {MarkElemBytes(0, 0, 0, {})}));
}

}  // namespace
}  // namespace qenzor::testing
