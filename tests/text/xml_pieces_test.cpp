// XML that is read in pieces is what it is when the parser is given all of it: every text here is
// read both ways.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "tests/support/xml_readings.h"

namespace qenzor::testing {
namespace {

namespace fs = std::filesystem;

void ExpectSame(const std::string& text, const XmlPieceSizes& sizes) {
  const std::string at = "window " + std::to_string(sizes.Window) + ", piece " +
                         std::to_string(sizes.Piece) + ": " + text;
  EXPECT_EQ(ReadInPieces<QenXml>(text, sizes), ReadWhole<QenXml>(text)) << at;
  EXPECT_EQ(ReadInPieces<ZorXml>(text, sizes), ReadWhole<ZorXml>(text)) << at;
}

/// At every window from 1 to 200 bytes, with pieces from none to larger than the text.
void ExpectSameAtEveryWindow(const std::string& text) {
  const std::string qen = ReadWhole<QenXml>(text);
  const std::string zor = ReadWhole<ZorXml>(text);
  for (std::size_t window = 1; window <= 200; ++window) {
    const XmlPieceSizes sizes{window, window * 37 % 301};
    ASSERT_EQ(ReadInPieces<QenXml>(text, sizes), qen) << window << ": " << text;
    ASSERT_EQ(ReadInPieces<ZorXml>(text, sizes), zor) << window << ": " << text;
  }
}

/// At sizes that put borders everywhere, with few readings.
void ExpectSameInSmallPieces(const std::string& text) {
  for (const XmlPieceSizes sizes :
       {XmlPieceSizes{1, 0}, XmlPieceSizes{3, 20}, XmlPieceSizes{7, 60}})
    ExpectSame(text, sizes);
}

std::vector<std::string> FilesBelow(const fs::path& folder, const std::string& extension) {
  std::vector<std::string> texts;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    if (!entry.is_regular_file() || entry.path().extension() != extension) continue;
    std::ifstream file(entry.path(), std::ios::binary);
    texts.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
  }
  return texts;
}

const std::string kMap =
    "<?xml version=\"1.0\" encoding=\"Shift_JIS\" "
    "?>\r\n<Qen>\r\n\t<QenFileInfo><Ident>ABCDEF</Ident>"
    "<Magic>0x4041</Magic><IncRect W=\"1\" S='-2' E=3 N=\"4\" /></QenFileInfo>\r\n<QenMapData>"
    "<MeshSegmentSet><MeshSegment><MeshSegmentNo>7</MeshSegmentNo><LayerSet><LayerData>"
    "<ZIdObjSet><ZIdObj><ZId>5</ZId><ObjSet><LineObj><Pt x='1' y='2'/><!-- a -- b --><Pt x=\"3\" "
    "y='&#52;'/></LineObj><Unknown a='1'>text<b><c/></b></Unknown><CmbLblObj><Text>"
    "a&amp;nbsp;b&lt;br /&gt;\x83\x5C<![CDATA[ & ]]></Text></CmbLblObj><PolyObj><Height> 12 "
    "</Height></PolyObj></ObjSet></ZIdObj></ZIdObjSet></LayerData></LayerSet></MeshSegment>"
    "</MeshSegmentSet></QenMapData></Qen>\r\n";

const std::string kDrawing =
    "<Zor><ZorDrawData><DrawAtterSet><DrawAtter><ZId>17</ZId><DrawInfoIdxSet><DrawInfoIdx>1"
    "</DrawInfoIdx></DrawInfoIdxSet></DrawAtter><DrawAtter><ZId>34</ZId></DrawAtter><DrawAtter>"
    "<ZId>51</ZId></DrawAtter></DrawAtterSet><DrawInfoSet><LineDrawInfo><ScData><DenomMax>1"
    "</DenomMax></ScData></LineDrawInfo><PolySolidBrushDrawInfo><ComData><Color A='1' R='2' G='3' "
    "B='4'/></ComData></PolySolidBrushDrawInfo></DrawInfoSet></ZorDrawData></Zor>";

TEST(XmlPieces, TheTestDocumentsAreTheSameAtEveryWindow) {
  const std::vector<std::string> texts = FilesBelow(QENZOR_TEST_DATA, ".xml");
  ASSERT_GT(texts.size(), 100U);
  for (const std::string& text : texts) ExpectSameAtEveryWindow(text);
}

TEST(XmlPieces, WhatTheFuzzTargetsFoundIsTheSame) {
  const fs::path corpus = fs::path(QENZOR_TEST_DATA).parent_path().parent_path() / "fuzz/corpus";
  std::vector<std::string> texts = FilesBelow(corpus / "xml", "");
  const std::vector<std::string> limits = FilesBelow(corpus / "xml_limits", "");
  texts.insert(texts.end(), limits.begin(), limits.end());
  ASSERT_GT(texts.size(), 100U);
  for (const std::string& text : texts) ExpectSameInSmallPieces(text);
}

TEST(XmlPieces, DocumentsOfEveryShapeAreTheSameAtEveryWindow) {
  EXPECT_NE(ReadWhole<QenXml>(kMap), kRefused);
  EXPECT_NE(ReadWhole<ZorXml>(kDrawing), kRefused);
  ExpectSameAtEveryWindow(kMap);
  ExpectSameAtEveryWindow(kDrawing);
}

TEST(XmlPieces, ATextCutShortAnywhereIsTheSame) {
  for (const std::string& text : {kMap, kDrawing})
    for (std::size_t size = 0; size < text.size(); ++size)
      ExpectSame(text.substr(0, size), {size % 9 + 1, size % 5 * 20});
}

TEST(XmlPieces, ATextDamagedAnywhereIsTheSame) {
  const std::string_view damage("<>&;#x\"'/! \r\n\xE3\xEF\0", 16);
  for (const std::string& text : {kMap, "\xEF\xBB\xBF" + kMap, kDrawing})
    for (std::size_t at = 0; at < text.size(); ++at)
      for (std::size_t i = at % 3; i < damage.size(); i += 3) {
        std::string damaged = text;
        damaged[at] = damage[i];
        ExpectSame(damaged, {at % 9 + 1, i * 10});
      }
}

TEST(XmlPieces, TokensInAnyOrderAreTheSame) {
  const std::vector<std::string> tokens{"<Qen>",
                                        "</Qen>",
                                        "<QenMapData>",
                                        "</QenMapData>",
                                        "<a>",
                                        "</a>",
                                        "<a b='c'/>",
                                        "<a b=c d=",
                                        "/>",
                                        "\"",
                                        "'",
                                        "&#",
                                        "&#x",
                                        "65;",
                                        "x41;",
                                        "&amp;",
                                        "&",
                                        "<!--",
                                        "-->",
                                        "--",
                                        "<![CDATA[",
                                        "]]>",
                                        "<?xml ",
                                        "?>",
                                        "encoding='",
                                        "utf-8'",
                                        "text",
                                        " ",
                                        "\r",
                                        "\n",
                                        "\xEF\xBB\xBF",
                                        "\xEF\xBF\xBE",
                                        "\xE3",
                                        "\xF0",
                                        "\xC3",
                                        "<",
                                        ">",
                                        "</",
                                        "<MeshSegmentSet>",
                                        "</MeshSegmentSet>",
                                        "<Zor>",
                                        "</Zor>",
                                        "<x>7</x>",
                                        "<MeshSegment><MeshSegmentNo>3</MeshSegmentNo>"
                                        "</MeshSegment>"};
  const std::vector<std::string> fronts{"", "<?xml version='1.0'?>", "<?xml encoding='Shift_JIS'?>",
                                        "\xEF\xBB\xBF"};
  std::mt19937 random(20260101);
  int accepted = 0;
  for (int i = 0; i < 6000; ++i) {
    std::string content;
    for (auto left = random() % 12; left > 0; --left) content += tokens[random() % tokens.size()];
    std::string text = fronts[random() % fronts.size()];
    if (i % 4 == 0)
      text += content;
    else
      text += "<Qen><QenMapData>" + content + "</QenMapData></Qen>";
    const XmlPieceSizes sizes{random() % 12 + 1, random() % 3 * 12};
    ExpectSame(text, sizes);
    if (ReadInPieces<QenXml>(text, sizes) != kRefused) ++accepted;
  }
  EXPECT_GT(accepted, 500);
}

TEST(XmlPieces, ALongValueIsTakenWithItsFirstText) {
  const std::string digits(300, '0');
  const std::string front = "<Qen><QenMapData><MeshSegmentSet><MeshSegment><MeshSegmentNo>";
  const std::string back = "</MeshSegmentNo></MeshSegment></MeshSegmentSet></QenMapData></Qen>";
  for (const std::string& value :
       {digits + "7", digits + "8<a>" + digits + "</a>9", "<!--" + digits + "-->9",
        "<![CDATA[" + digits + "5]]>6", "&#32;<![CDATA[5]]>" + digits, "&#32;&#10;" + digits + "4",
        "<a>" + digits + "</a>9", "  \n " + digits + "3 ", "5<![CDATA[" + digits + "]]>",
        digits + "&#;"})
    ExpectSameInSmallPieces(front + value + back);
}

TEST(XmlPieces, ALabelKeepsItsTextWhenItIsLong) {
  std::string text;
  for (int i = 0; i < 100; ++i) text += "word&amp;nbsp;&lt;br /&gt;\x83\x5C ";
  ExpectSameInSmallPieces(
      "<?xml "
      "encoding='Shift_JIS'?><Qen><QenMapData><MeshSegmentSet><MeshSegment><LayerSet><LayerData>"
      "<ZIdObjSet><ZIdObj><ObjSet><CmbLblObj><Text>" +
      text + "</Text></CmbLblObj><LineObj><AddedObjInfoSet><UrlInfo>" + text +
      "<x/></UrlInfo></AddedObjInfoSet></LineObj></ObjSet></ZIdObj></ZIdObjSet></LayerData>"
      "</LayerSet></MeshSegment></MeshSegmentSet></QenMapData></Qen>");
}

TEST(XmlPieces, AMarkThatIsALetterAndWhiteSpaceHidesNothing) {
  const std::string mark = "\xEF\xBB\xBF";
  ExpectSameInSmallPieces(mark + "<" + mark + "Qen><" + mark +
                          " QenMapData a='1'></QenMapData></Qen>");
  std::string nested = mark + "<Qen><" + mark + " a b='1'>";
  for (int i = 0; i < 300; ++i) nested += "<e>";
  EXPECT_FALSE(IsWithinXmlLimits(nested));
}

TEST(XmlPieces, SeveralRootsAreReadToTheEnd) {
  ExpectSameInSmallPieces("<Qen/><Zor/>");
  ExpectSameInSmallPieces("<Qen/><Zor>");
  ExpectSameInSmallPieces("<Zor/><Qen><QenMapData/></Qen> words <");
  ExpectSameInSmallPieces(std::string("<Qen/> words \0", 14));
  ExpectSameInSmallPieces("<Qen></Qen><?xml version ?><");
  ExpectSameInSmallPieces("<Qen></Qen><!-- open");
  ExpectSameInSmallPieces("<Qen><!-- open");
}

TEST(XmlPieces, AFailureTellsLineAndColumn) {
  const std::string text = "<Qen>\r\n<QenMapData>\r\n  <a></b>\r\n</QenMapData></Qen>";
  for (const XmlPieceSizes sizes : {XmlPieceSizes{}, XmlPieceSizes{5, 0}}) {
    CMemFile file(std::vector<std::uint8_t>(text.begin(), text.end()));
    const Result<CQenEdit> edit = ReadQenXmlPieces(file, {}, sizes);
    ASSERT_FALSE(edit);
    EXPECT_EQ(edit.GetFailure().Kind, FailureKind::kDamaged);
    EXPECT_EQ(edit.GetFailure().Line, 3U);
    EXPECT_EQ(edit.GetFailure().Column, 6U);
    EXPECT_FALSE(edit.GetFailure().Reason.empty());
  }
}

TEST(XmlPieces, AnotherRootIsNotSuchADocument) {
  CMemFile file(std::vector<std::uint8_t>{'\n', '<', 'Z', 'o', 'r', '/', '>'});
  const Result<CQenEdit> edit = ReadQenXmlPieces(file);
  ASSERT_FALSE(edit);
  EXPECT_EQ(edit.GetFailure().Kind, FailureKind::kNotSuchDocument);
  EXPECT_EQ(edit.GetFailure().Line, 2U);
}

}  // namespace
}  // namespace qenzor::testing
