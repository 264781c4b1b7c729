// Small edits of good XML, each with what is found and where.

#include <gtest/gtest.h>

#include <memory>

#include "qenzor/qen/qen.h"
#include "qenzor/zor/zor.h"
#include "tests/support/findings.h"
#include "tests/support/good_xml.h"

namespace {

using namespace qenzor;
using namespace qenzor::testing;

constexpr const char* kObjects =
    "MeshSegmentSet/MeshSegment[0]/LayerSet/LayerData[0]/ZIdObjSet/ZIdObj[0]/ObjSet";
constexpr const char* kLine =
    "MeshSegmentSet/MeshSegment[0]/LayerSet/LayerData[0]/ZIdObjSet/ZIdObj[0]/ObjSet/LineObj[0]";
constexpr const char* kLabel =
    "MeshSegmentSet/MeshSegment[0]/LayerSet/LayerData[0]/ZIdObjSet/ZIdObj[0]/ObjSet/CmbLblObj[2]";

struct Checked {
  std::vector<XmlFound> Found;
  std::vector<std::string> Reasons;
  std::uint64_t Errors = 0;
};

Checked Check(const std::string& text, BinaryKind kind) {
  FoundSink sink;
  const CCheckCounts counts = CheckXml(text, kind, {}, sink);
  return {sink.Xml, sink.Reasons, counts.Of(Severity::kError)};
}

/// The good text with its only occurrence of a piece replaced.
std::string Edited(std::string text, const std::string& piece, const std::string& by) {
  const std::size_t at = text.find(piece);
  EXPECT_NE(at, std::string::npos) << piece;
  EXPECT_EQ(text.find(piece, at + 1), std::string::npos) << piece;
  return text.replace(at, piece.size(), by);
}

std::vector<XmlFound> InMap(const std::string& piece, const std::string& by) {
  return Check(Edited(kGoodMapXml, piece, by), BinaryKind::kQen).Found;
}
std::vector<XmlFound> InDrawing(const std::string& piece, const std::string& by) {
  return Check(Edited(kGoodDrawingXml, piece, by), BinaryKind::kZor).Found;
}

using Expected = std::vector<XmlFound>;

TEST(XmlDamage, GoodTextHasNothingToFind) {
  EXPECT_EQ(Check(kGoodMapXml, BinaryKind::kQen).Found, Expected{});
  EXPECT_EQ(Check(kGoodDrawingXml, BinaryKind::kZor).Found, Expected{});
}

TEST(XmlDamage, LinesMayEndInAnyWay) {
  std::string text = Edited(kGoodMapXml, "<LayerNo>3<", "<LayerNo>x<");
  const std::vector<XmlFound> expected{
      {"Q1048", 17, 33, "MeshSegmentSet/MeshSegment[0]/LayerSet/LayerData[0]"}};
  EXPECT_EQ(Check(text, BinaryKind::kQen).Found, expected);
  std::string with_cr;
  std::string with_cr_lf;
  for (const char c : text) {
    with_cr += c == '\n' ? '\r' : c;
    with_cr_lf += c == '\n' ? std::string("\r\n") : std::string(1, c);
  }
  EXPECT_EQ(Check(with_cr, BinaryKind::kQen).Found, expected);
  EXPECT_EQ(Check(with_cr_lf, BinaryKind::kQen).Found, expected);
}

TEST(XmlDamage, UnknownElementsComeWithAProposal) {
  const Checked checked =
      Check(Edited(kGoodMapXml, "<Height>5</Height>", "<height>5</height>"), BinaryKind::kQen);
  const std::string poly = std::string(kObjects) + "/PolyObj[1]";
  EXPECT_EQ(checked.Found, (Expected{{"Q1042", 25, 13, poly}, {"Q1044", 25, 4, poly}}));
  EXPECT_NE(checked.Reasons[0].find("did you mean Height?"), std::string::npos);
  EXPECT_EQ(InMap("<LayerNo>3</LayerNo>", "<LayerNo>3</LayerNo><Note><LayerNo>4</LayerNo></Note>"),
            (Expected{{"Q1042", 17, 44, "MeshSegmentSet/MeshSegment[0]/LayerSet/LayerData[0]"}}));
  EXPECT_EQ(InMap("<QenMapData>", "<SetElem /><QenMapData>"), (Expected{{"Q1042", 15, 2, "Qen"}}));
}

TEST(XmlDamage, ElementsInAPlaceThatDropsThemAreFound) {
  EXPECT_EQ(InMap("<RasLLObj>", "<LayerData /><RasLLObj>"), (Expected{{"Q1043", 32, 4, kObjects}}));
  EXPECT_EQ(InDrawing("<LineDrawInfo>", "<MarkData /><LineDrawInfo>"),
            (Expected{{"Q1043", 10, 1, "DrawInfoSet"}}));
  EXPECT_EQ(InMap("<Pt x=\"3\" y=\"4\" />", "<Height>1</Height>"),
            (Expected{{"Q1043", 22, 5, kLine}}));
}

TEST(XmlDamage, MissingAndRepeatedElementsAreFound) {
  EXPECT_EQ(InMap("\t\t<CompCoef>1</CompCoef>\n", ""), (Expected{{"Q1044", 3, 2, "QenFileInfo"}}));
  EXPECT_EQ(InMap("<LayerNo>3</LayerNo>", "<LayerNo>3</LayerNo><LayerNo>4</LayerNo>"),
            (Expected{{"Q1045", 17, 44, "MeshSegmentSet/MeshSegment[0]/LayerSet/LayerData[0]"}}));
  EXPECT_EQ(InDrawing("<Aspect>1</Aspect>", ""),
            (Expected{{"Q1044", 11, 1, "DrawInfoSet/LineDrawInfo[0]"}}));
  EXPECT_EQ(InDrawing("<ShadowColor A=\"1\" R=\"2\" G=\"3\" B=\"4\" />", ""),
            (Expected{{"Q1044", 18, 21, "DrawInfoSet/PolyShadowDrawInfo[1]"}}));
  EXPECT_EQ(InMap("<LayerSet>", "<LayerSet /><LayerSet>"),
            (Expected{{"Q1045", 17, 15, "MeshSegmentSet/MeshSegment[0]"}}));
}

TEST(XmlDamage, AttributesThatAreUnknownOrMissingAreFound) {
  EXPECT_EQ(InMap("<Pt x=\"3\" y=\"4\" />", "<Pt X=\"3\" y=\"4\" />"),
            (Expected{{"Q1046", 22, 9, kLine}, {"Q1047", 22, 5, kLine}}));
  EXPECT_EQ(InMap("<Pt x=\"3\" y=\"4\" />", "<Pt x=\"3\" y=\"4\" z=\"5\" />"),
            (Expected{{"Q1046", 22, 21, kLine}}));
  EXPECT_EQ(InMap("<QenMapData>", "<QenMapData version=\"1\">"),
            (Expected{{"Q1046", 15, 14, "QenMapData"}}));
  EXPECT_EQ(InDrawing("<Color A=\"255\" R=\"0\" G=\"16\" B=\"0\" />",
                      "<Color R=\"0\" G=\"16\" B=\"0\" />"),
            (Expected{{"Q1047", 12, 1, "DrawInfoSet/LineDrawInfo[0]"}}));
}

TEST(XmlDamage, ValuesThatAreNotReadInFullAreFound) {
  const std::string layer = "MeshSegmentSet/MeshSegment[0]/LayerSet/LayerData[0]";
  for (const char* value : {"abc", "zero", "12x", "0x10", "1.5", "1 2", "-", "--1"})
    EXPECT_EQ(InMap("<LayerNo>3<", "<LayerNo>" + std::string(value) + "<").front(),
              (XmlFound{"Q1048", 17, 33, layer}))
        << value;
  for (const char* value : {" 3 ", "+3", "003", "0", "<![CDATA[3]]>"})
    EXPECT_EQ(InMap("<LayerNo>3<", "<LayerNo>" + std::string(value) + "<"), Expected{}) << value;
  EXPECT_EQ(InMap("<LayerNo>3</LayerNo>", "<LayerNo></LayerNo>"),
            (Expected{{"Q1048", 17, 24, layer}}));
  EXPECT_EQ(InMap("<LayerNo>3</LayerNo>", "<LayerNo />"), (Expected{{"Q1048", 17, 24, layer}}));
  EXPECT_EQ(InMap("<LayerNo>3<", "<LayerNo>3<!-- of 5 -->4<"),
            (Expected{{"Q1048", 17, 47, layer}}));
  EXPECT_EQ(InMap("x=\"3\"", "x=\"3e2\""), (Expected{{"Q1048", 22, 12, kLine}}));
  EXPECT_EQ(InMap("0x4041", "0x4042"), (Expected{{"Q1048", 5, 10, "QenFileInfo"}}));
  EXPECT_EQ(InMap("<Ident>QENMAP", "<Ident>QENMAPS"), (Expected{{"Q1056", 4, 10, "QenFileInfo"}}));
}

TEST(XmlDamage, ValuesThatDoNotFitAreFound) {
  const std::string layer = "MeshSegmentSet/MeshSegment[0]/LayerSet/LayerData[0]";
  EXPECT_EQ(InMap("<LayerNo>3<", "<LayerNo>70000<"), (Expected{{"Q1049", 17, 33, layer}}));
  EXPECT_EQ(InMap("<LayerNo>3<", "<LayerNo>-1<"), (Expected{{"Q1049", 17, 33, layer}}));
  EXPECT_EQ(InMap("<LayerNo>3<", "<LayerNo>65535<"), Expected{});
  EXPECT_EQ(InMap("<Revision>7<", "<Revision>4294967296<"),
            (Expected{{"Q1049", 8, 13, "QenFileInfo"}}));
  EXPECT_EQ(InMap("<ZId>70000000000<", "<ZId>18446744073709551616<").front().Code, "Q1049");
  EXPECT_EQ(InMap("<ZId>70000000000<", "<ZId>18446744073709551615<"), Expected{});
  EXPECT_EQ(InMap("<Height>5<", "<Height>2147483648<").front().Code, "Q1049");
  EXPECT_EQ(InMap("<Height>5<", "<Height>-2147483648<"), Expected{});
  EXPECT_EQ(InDrawing("G=\"16\"", "G=\"256\""),
            (Expected{{"Q1049", 12, 25, "DrawInfoSet/LineDrawInfo[0]"}}));
  EXPECT_EQ(InDrawing("x=\"1\" y=\"2\"", "x=\"32768\" y=\"2\""),
            (Expected{{"Q1049", 21, 20, "DrawInfoSet/PolyShadowDrawInfo[1]"}}));
  EXPECT_EQ(InMap("x=\"3\"", "x=\"-32768\""), Expected{});
}

TEST(XmlDamage, CoordinatesBeyond16BitsAreErrors) {
  EXPECT_EQ(InMap("x=\"3\"", "x=\"32768\""), (Expected{{"Q1050", 22, 12, kLine}}));
  EXPECT_EQ(InMap("S=\"2\"", "S=\"-32769\"").front().Code, "Q1050");
  EXPECT_EQ(InMap("N=\"1000\"", "N=\"2000000000\""), Expected{});
}

TEST(XmlDamage, FloatsThatAreLeftOutOrNotNumbersAreFound) {
  EXPECT_EQ(InMap("<Angle>1.5<", "<Angle><"), (Expected{{"Q1051", 26, 37, kLabel}}));
  EXPECT_EQ(InMap("<Angle>1.5<", "<Angle>1." + std::string(62, '0') + "<"),
            (Expected{{"Q1051", 26, 44, kLabel}}));
  EXPECT_EQ(InMap("<Angle>1.5<", "<Angle>1." + std::string(61, '0') + "<"), Expected{});
  for (const char* value : {"inf", "nan", "1,5", "1.5.2", "e5", "."})
    EXPECT_EQ(InMap("<Angle>1.5<", "<Angle>" + std::string(value) + "<"),
              (Expected{{"Q1048", 26, 44, kLabel}}))
        << value;
  for (const char* value : {"1", ".5", "5.", "+1.5E+3", "-0"})
    EXPECT_EQ(InMap("<Angle>1.5<", "<Angle>" + std::string(value) + "<"), Expected{}) << value;
  EXPECT_EQ(InMap("<Angle>1.5<", "<Angle>1e39<"), (Expected{{"Q1049", 26, 44, kLabel}}));
}

TEST(XmlDamage, TextsThatAreTooLongAreErrors) {
  EXPECT_EQ(InMap("a&amp;nbsp;b", std::string(32767, 'x')), (Expected{{"Q1052", 30, 11, kLabel}}));
  EXPECT_EQ(InMap("a&amp;nbsp;b", std::string(32765, 'x') + "&amp;nbsp;"), Expected{});
}

TEST(XmlDamage, AmpersandsAndReferencesThatAreNoCharactersAreFound) {
  EXPECT_EQ(InMap("a&amp;nbsp;b", "a & b"), (Expected{{"Q1054", 30, 13, kLabel}}));
  EXPECT_EQ(InMap("a&amp;nbsp;b", "a&nbsp;b"), (Expected{{"Q1054", 30, 12, kLabel}}));
  EXPECT_EQ(InMap("a&amp;nbsp;b", "a&#x3042;b"), (Expected{{"Q1055", 30, 12, kLabel}}));
  EXPECT_EQ(InMap("a&amp;nbsp;b", "a&#65;&lt;&gt;&quot;&apos;b"), Expected{});
}

TEST(XmlDamage, TextInAContainerIsFound) {
  EXPECT_EQ(InMap("<LineObj>", "<LineObj>road"), (Expected{{"Q1041", 20, 13, kLine}}));
  EXPECT_EQ(InMap("<ObjSet>", "<ObjSet>road"), (Expected{{"Q1041", 19, 11, kObjects}}));
  EXPECT_EQ(InMap("<Pt x=\"3\" y=\"4\" />", "<Pt x=\"3\" y=\"4\">road</Pt>"),
            (Expected{{"Q1041", 22, 21, kLine}}));
  EXPECT_EQ(InMap("<LineObj>", "<LineObj><!-- road -->"), Expected{});
}

TEST(XmlDamage, ALinkThatIsWrittenButNotReadIsFoundEachTime) {
  EXPECT_EQ(InMap("http://a", "<Text>http://a</Text><Text>http://a</Text>"),
            (Expected{{"Q1057", 23, 31, std::string(kLine) + "/AddedObjInfoSet/UrlInfo[0]"},
                      {"Q1057", 23, 52, std::string(kLine) + "/AddedObjInfoSet/UrlInfo[0]"}}));
}

TEST(XmlDamage, TheEncodingIsCheckedAsAWhole) {
  EXPECT_EQ(InMap("Shift_JIS", "utf-8"), (Expected{{"Q1035", 1, 31, ""}}));
  for (const char* name : {"shift_jis", "Windows-31J", "CP932"})
    EXPECT_EQ(InMap("Shift_JIS", name), Expected{}) << name;
  const std::vector<XmlFound> found = InMap("a&amp;nbsp;b", "a\xE3\x81\x82\xC3\xA9");
  ASSERT_FALSE(found.empty());
  EXPECT_EQ(found[0], (XmlFound{"Q1036", 30, 12, ""}));
  EXPECT_EQ(InMap("a&amp;nbsp;b", "a\x82\xA0"), Expected{});
  EXPECT_EQ(InMap("a&amp;nbsp;b", "a\x82\xA0\x81"), (Expected{{"Q1037", 30, 11, kLabel}}));
}

TEST(XmlDamage, WhatStandsBehindTheRootIsFound) {
  EXPECT_EQ(InMap("</Qen>\n", "</Qen>\n<Qen />\n"), (Expected{{"Q1040", 37, 1, "Qen"}}));
  EXPECT_EQ(InMap("</Qen>\n", "</Qen>\n<!-- done -->\n"), Expected{});
}

TEST(XmlDamage, WhatTheDocumentsValuesSayIsFoundInTheText) {
  EXPECT_EQ(InMap("<SegmentNumX>2<", "<SegmentNumX>1<"),
            (Expected{{"Q1066", 16, 47, "MeshSegmentSet/MeshSegment[0]"}}));
  EXPECT_EQ(InMap("<MajorVer>1<", "<MajorVer>2<"), (Expected{{"Q1063", 7, 13, "QenFileInfo"}}));
  EXPECT_EQ(InMap("E=\"2000\"", "E=\"0\""), (Expected{{"Q1065", 10, 3, "QenFileInfo"}}));
  EXPECT_EQ(InDrawing("<DrawInfoIdx>1<", "<DrawInfoIdx>2<"),
            (Expected{{"Q1070", 8, 14, "DrawAtterSet/DrawAtter[0]/DrawInfoIdxSet"},
                      {"Q1072", 18, 1, "DrawInfoSet/PolyShadowDrawInfo[1]"}}));
  EXPECT_EQ(InDrawing("<ScData><DenomMax>20</DenomMax><DenomMin>10</DenomMin>\n<DenomMaxWidth>",
                      "<ScData><DenomMax>5</DenomMax><DenomMin>10</DenomMin>\n<DenomMaxWidth>"),
            (Expected{{"Q1074", 14, 1, "DrawInfoSet/LineDrawInfo[0]"}}));
}

TEST(XmlDamage, TextThatDoesNotLoadIsAnErrorThatNamesTheOpenElement) {
  const Checked unclosed = Check(Edited(kGoodMapXml, "\t\t\t</LineObj>\n", ""), BinaryKind::kQen);
  EXPECT_EQ(unclosed.Found, (Expected{{"Q1030", 32, 3, ""}}));
  EXPECT_EQ(unclosed.Reasons[0],
            "the end tag of ObjSet stands where LineObj, which begins at line 20, is open");
  const std::string cut =
      std::string(kGoodMapXml).substr(0, std::string(kGoodMapXml).find("\t</QenMapData>"));
  const Checked ended = Check(cut, BinaryKind::kQen);
  ASSERT_EQ(ended.Found.size(), 1U);
  EXPECT_EQ(ended.Found[0].Code, "Q1030");
  EXPECT_EQ(ended.Reasons[0], "the text ends inside QenMapData, which begins at line 15");
  EXPECT_EQ(Check("", BinaryKind::kQen).Found.at(0).Code, "Q1030");
}

TEST(XmlDamage, TheRootMustBeThatOfTheKind) {
  EXPECT_EQ(Check(kGoodDrawingXml, BinaryKind::kQen).Found, (Expected{{"Q1031", 1, 1, ""}}));
  EXPECT_EQ(Check("<!-- a -->\n <qen />", BinaryKind::kQen).Found, (Expected{{"Q1031", 2, 2, ""}}));
  EXPECT_EQ(Check("<Qen></Qen>", BinaryKind::kQen).Found,
            (Expected{{"Q1044", 1, 1, "Qen"}, {"Q1032", 1, 1, "Qen"}}));
}

}  // namespace
