// The text form of labels.

#include <gtest/gtest.h>

#include "qenzor/qen/cmb_lbl_obj.h"
#include "tests/support/chunk_io.h"
#include "tests/support/qen_bytes.h"
#include "tests/support/qen_xml.h"

namespace qenzor::testing {
namespace {

/// The label that an element with this content gives.
std::unique_ptr<CCmbLblObjEdit> LabelFrom(const std::string& content) {
  const auto edit = EditFromObjectXml("<CmbLblObj>" + content + "</CmbLblObj>");
  auto* label = FirstObject<CCmbLblObjEdit>(*edit);
  if (label == nullptr) return nullptr;
  return std::unique_ptr<CCmbLblObjEdit>(static_cast<CCmbLblObjEdit*>(label->Clone()));
}

CStringW TextFrom(const std::string& text) { return LabelFrom("<Text>" + text + "</Text>")->Text; }

std::string XmlOfText(const CStringW& text) {
  CCmbLblObj label;
  label.Text = text;
  CCmbLblObjTextConverter converter;
  const std::string xml = XmlOf(converter, &label);
  return xml.substr(xml.find("<Text>"));
}

TEST(CmbLblObjText, WritesItsFieldsInOrder) {
  const auto label = FromMemory<CCmbLblObj>(LabelBytes(u"ab", SetChunk(id::kAddedObjInfoSet, {})));
  CCmbLblObjTextConverter converter;
  EXPECT_EQ(XmlOf(converter, label.get(), 1),
            "\t<CtrlFlgs>25</CtrlFlgs>\r\n"
            "\t<Angle>1.5000000000</Angle>\r\n"
            "\t<Pt x=\"3\" y=\"-4\" />\r\n"
            "\t<LblOffsetFontRate>0.2500000000</LblOffsetFontRate>\r\n"
            "\t<LblOffsetAngle>-2.0000000000</LblOffsetAngle>\r\n"
            "\t<Text>ab</Text>\r\n"
            "\t<AddedObjInfoSet>\r\n\t</AddedObjInfoSet>\r\n");
}

TEST(CmbLblObjText, FloatsAreWidenedBeforeTheyAreWritten) {
  CCmbLblObj label;
  label.Angle = 0.1F;
  CCmbLblObjTextConverter converter;
  EXPECT_NE(XmlOf(converter, &label).find("<Angle>0.1000000015</Angle>"), std::string::npos);
}

TEST(CmbLblObjText, LineFeedsAndSpacesAreEscapedAndComeBack) {
  EXPECT_EQ(XmlOfText(u"a b\nc"), "<Text>a&amp;nbsp;b&lt;br /&gt;c</Text>\r\n");
  EXPECT_EQ(TextFrom("a&amp;nbsp;b&lt;br /&gt;c"), u"a b\nc");
}

TEST(CmbLblObjText, TheCodePageIsShiftJis) {
  EXPECT_EQ(XmlOfText(u"\u5730\uFF71\u8868"), "<Text>\x92\x6E\xB1\x95\x5C</Text>\r\n");
  EXPECT_EQ(TextFrom("\x92\x6E\xB1\x95\x5C"), u"\u5730\uFF71\u8868");
  EXPECT_EQ(XmlOfText(u"\u00E9"), "<Text>?</Text>\r\n");
}

TEST(CmbLblObjText, LineBreaksAreUndoneBeforeSpaces) {
  EXPECT_EQ(TextFrom("&lt;br /&gt;&amp;nbsp;&lt;br /&gt;"), u"\n \n");
  // A space that is undone makes no new line break.
  EXPECT_EQ(TextFrom("&lt;br&amp;nbsp;/&gt;"), u"<br />");
  // What is undone is not looked at again.
  EXPECT_EQ(TextFrom("&amp;&lt;br /&gt;nbsp;"), u"&\nnbsp;");
}

TEST(CmbLblObjText, OnlyTheExactMarksAreUndone) {
  EXPECT_EQ(TextFrom("&lt;br/&gt;&amp;NBSP;&amp;nbsp"), u"<br/>&NBSP;&nbsp");
}

TEST(CmbLblObjText, AnEmptyTextElementEmptiesTheText) {
  EXPECT_EQ(LabelFrom("<Text>a</Text><Text/>")->Text, u"");
  EXPECT_EQ(LabelFrom("<Text>a</Text><Text><b/>c</Text>")->Text, u"");
}

TEST(CmbLblObjText, TheLastPointWins) {
  EXPECT_EQ(LabelFrom("<Pt x='1' y='2'/><Pt y='4'/>")->Pt, (CPoint{0, 4}));
}

TEST(CmbLblObjText, FlagsAreCutToSixteenBits) {
  EXPECT_EQ(LabelFrom("<CtrlFlgs>65561</CtrlFlgs>")->CtrlFlgs, 25);
  EXPECT_EQ(LabelFrom("<CtrlFlgs>-1</CtrlFlgs>")->CtrlFlgs, 65535);
}

TEST(CmbLblObjText, EmptyNumberElementsLeaveTheirFieldAlone) {
  const auto label = LabelFrom(
      "<CtrlFlgs>7</CtrlFlgs><Angle>1.5</Angle><LblOffsetFontRate>2.5</LblOffsetFontRate>"
      "<LblOffsetAngle>3.5</LblOffsetAngle>"
      "<CtrlFlgs/><Angle></Angle><LblOffsetFontRate/><LblOffsetAngle>  </LblOffsetAngle>");
  EXPECT_EQ(label->CtrlFlgs, 7);
  EXPECT_EQ(label->Angle, 1.5F);
  EXPECT_EQ(label->LblOffsetFontRate, 2.5F);
  EXPECT_EQ(label->LblOffsetAngle, 3.5F);
}

TEST(CmbLblObjText, FloatTextsOfMoreThan63CharactersAreSkipped) {
  const std::string zeros(100, '0');
  for (const std::string tag : {"Angle", "LblOffsetFontRate", "LblOffsetAngle"}) {
    const std::string longest = "2." + zeros.substr(0, 61);
    const auto value_of = [&](const std::string& text) {
      const auto label =
          LabelFrom("<" + tag + ">1</" + tag + "><" + tag + ">" + text + "</" + tag + ">");
      return label->Angle + label->LblOffsetFontRate + label->LblOffsetAngle;
    };
    ASSERT_EQ(longest.size(), 63U);
    EXPECT_EQ(value_of(longest), 2.0F) << tag;
    EXPECT_EQ(value_of(longest + "0"), 1.0F) << tag;
    EXPECT_EQ(value_of("2"), 2.0F) << tag;
  }
}

TEST(CmbLblObjText, FloatsFollowTheStandardConversion) {
  const auto angle_of = [](const std::string& text) {
    return LabelFrom("<Angle>" + text + "</Angle>")->Angle;
  };
  EXPECT_EQ(angle_of("-12.25e1xyz"), -122.5F);
  EXPECT_EQ(angle_of(".5"), 0.5F);
  EXPECT_EQ(angle_of("16777217"), 16777216.0F);
  EXPECT_EQ(angle_of("words"), 0.0F);
}

TEST(CmbLblObjText, UnknownElementsAreIgnored) {
  const auto label = LabelFrom("<text>no</text><Height>1</Height><Text>yes</Text>");
  EXPECT_EQ(label->Text, u"yes");
}

}  // namespace
}  // namespace qenzor::testing
