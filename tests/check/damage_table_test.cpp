// The table of damage: each entry is a small edit of a good document, and the codes and places of
// what is found then.

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "tests/support/check_kinds.h"
#include "tests/support/findings.h"
#include "tests/support/good_xml.h"
#include "tests/support/qen_bytes.h"
#include "tests/support/zor_bytes.h"

namespace {

using namespace qenzor;
using namespace qenzor::testing;

/// Everything that is found, as "Q1042 25:13, Q1044 25:4" or by offset.
std::string Listed(const std::vector<XmlFound>& found) {
  std::string text;
  for (const XmlFound& each : found)
    text += (text.empty() ? "" : ", ") + each.Code + ' ' + std::to_string(each.Line) + ':' +
            std::to_string(each.Column);
  return text;
}
std::string Listed(const std::vector<Found>& found) {
  std::string text;
  for (const Found& each : found)
    text += (text.empty() ? "" : ", ") + each.Code + ' ' + std::to_string(each.Offset);
  return text;
}

struct XmlEntry {
  const char* Piece;  ///< stands once in the document
  const char* By;
  const char* Expected;
};

/// Checks an edited text, and that it has an error exactly when no document can be made of it.
void ExpectXml(const char* good, BinaryKind kind, const XmlEntry& entry) {
  std::string text = good;
  const std::size_t at = text.find(entry.Piece);
  ASSERT_NE(at, std::string::npos) << entry.Piece;
  ASSERT_EQ(text.find(entry.Piece, at + 1), std::string::npos) << entry.Piece;
  text.replace(at, std::string(entry.Piece).size(), entry.By);
  FoundSink sink;
  const CCheckCounts counts = CheckXml(text, kind, {}, sink);
  EXPECT_EQ(Listed(sink.Xml), entry.Expected) << entry.Piece << " -> " << entry.By;
  EXPECT_EQ(counts.Of(Severity::kError) == 0, IsXmlTaken(text, kind)) << entry.By;
}

constexpr std::array kMapEntries{
    // Names.
    XmlEntry{"<LayerNo>3</LayerNo>", "<Layerno>3</Layerno>", "Q1042 17:24, Q1044 17:13"},
    XmlEntry{"<Height>5</Height>", "<Hight>5</Hight>", "Q1042 25:13, Q1044 25:4"},
    XmlEntry{"<CompCoef>1</CompCoef>", "<CompCoeff>1</CompCoeff>", "Q1042 13:3, Q1044 3:2"},
    XmlEntry{"<QenMapData>", "<QenMapData><Extra/>", "Q1042 15:14"},
    XmlEntry{"<Pt x=\"3\" y=\"4\" />", "<pt x=\"3\" y=\"4\" />", "Q1042 22:5"},
    XmlEntry{"<Pt x=\"3\" y=\"4\" />", "< Pt x=\"3\" y=\"4\" />", "Q1034 22:5"},
    XmlEntry{"<Pt x=\"3\" y=\"4\" />", "<2Pt x=\"3\" y=\"4\" />", "Q1034 22:5"},
    XmlEntry{"<Pt x=\"3\" y=\"4\" />", "<Pt X=\"3\" y=\"4\" />", "Q1046 22:9, Q1047 22:5"},
    XmlEntry{"<Pt x=\"3\" y=\"4\" />", "<Pt x=\"3\" />", "Q1047 22:5"},
    XmlEntry{"<Pt x=\"3\" y=\"4\" />", "<Pt x=\"3\" y=\"4\" z=\"0\" />", "Q1046 22:21"},
    XmlEntry{"<Pt x=\"3\" y=\"4\" />", "<Pt x=\"3\" x=\"3\" y=\"4\" />", "Q1030 22:15"},
    // Places.
    XmlEntry{"<RasLLObj>", "<MeshSegment /><RasLLObj>", "Q1043 32:4"},
    XmlEntry{"<LayerNo>3</LayerNo>", "<LayerNo>3</LayerNo><ZId>1</ZId>", "Q1043 17:44"},
    XmlEntry{"<LayerNo>3</LayerNo>", "<LayerNo>3</LayerNo><LayerNo>3</LayerNo>", "Q1045 17:44"},
    XmlEntry{"<Height>5</Height>", "", "Q1044 25:4"},
    XmlEntry{"<Height>5</Height>", "<Height>5</Height><Height>6</Height>", "Q1045 25:31"},
    XmlEntry{"<LayerSet>", "<LayerSet/><LayerSet>", "Q1045 17:14"},
    XmlEntry{"<QenFileInfo>", "<QenFileInfo>QENMAP", "Q1041 3:15"},
    XmlEntry{"<ObjSet>", "<ObjSet>5", "Q1041 19:11"},
    XmlEntry{"</Qen>\n", "</Qen>\nend", "Q1040 37:1"},
    XmlEntry{"</Qen>\n", "</Qen></Qen>", "Q1040 36:7"},
    // Values.
    XmlEntry{"<LayerNo>3<", "<LayerNo>three<", "Q1048 17:33"},
    XmlEntry{"<LayerNo>3<", "<LayerNo>3.5<", "Q1048 17:33"},
    XmlEntry{"<LayerNo>3<", "<LayerNo><!-- third -->3<", "Q1048 17:47, Q1048 17:24"},
    XmlEntry{"<LayerNo>3<", "<LayerNo>65536<", "Q1049 17:33"},
    XmlEntry{"<LayerNo>3<", "<LayerNo>&#51;<", ""},
    XmlEntry{"<LayerNo>3<", "<LayerNo>&#3;<", "Q1048 17:33"},
    XmlEntry{"<GeoCoodinate>1<", "<GeoCoodinate>256<", "Q1049 9:17"},
    XmlEntry{"x=\"3\"", "x=\"&#51;\"", ""},
    XmlEntry{"x=\"3\"", "x=\"\"", "Q1048 22:12"},
    XmlEntry{"x=\"3\"", "x='3'", ""},
    XmlEntry{"x=\"3\"", "x=3", ""},
    XmlEntry{"x=\"3\"", "x=\"3px\"", "Q1048 22:12"},
    XmlEntry{"x=\"3\"", "x=\"40000\"", "Q1050 22:12"},
    XmlEntry{"x=\"3\"", "x=\"40000px\"", "Q1048 22:12, Q1050 22:12"},
    XmlEntry{"E=\"3\" N=\"4\"", "E=\"3\" N=\"-32769\"", "Q1050 32:41"},
    XmlEntry{"<Angle>1.5<", "<Angle>1,5<", "Q1048 26:44"},
    XmlEntry{"<Angle>1.5<", "<Angle><", "Q1051 26:37"},
    XmlEntry{"<Angle>1.5<", "<Angle>1e99<", "Q1049 26:44"},
    XmlEntry{"<Angle>1.5<", "<Angle>1e-99<", "Q1049 26:44"},
    XmlEntry{"<Angle>1.5<", "<Angle>0e-99<", ""},
    XmlEntry{"<Magic>0x4041<", "<Magic>16449<", "Q1048 5:10"},
    XmlEntry{"<Ident>QENMAP<", "<Ident>QEN<", "Q1056 4:10, Q1061 4:10"},
    // Texts.
    XmlEntry{"a&amp;nbsp;b", "a & b", "Q1054 30:13"},
    XmlEntry{"a&amp;nbsp;b", "Smith&Sons", "Q1054 30:16"},
    XmlEntry{"a&amp;nbsp;b", "a&#12354;b", "Q1055 30:12"},
    XmlEntry{"a&amp;nbsp;b", "a&#0;b", "Q1055 30:12"},
    XmlEntry{"a&amp;nbsp;b", "a<b/>b", "Q1042 30:12, Q1048 30:16"},
    XmlEntry{"a&amp;nbsp;b", "<![CDATA[a & b]]>", ""},
    XmlEntry{"http://a", "<Text>http://a</Text>", "Q1057 23:31"},
    // What does not parse.
    XmlEntry{"</LineObj>", "</LineObjs>", "Q1030 24:4"},
    XmlEntry{"a&amp;nbsp;b", "a < b", "Q1030 31:4"},
    XmlEntry{"x=\"3\"", "x=\"3", "Q1030 22:5"},
    XmlEntry{"x=\"3\" y=\"4\" />", "x=\"3\" y />", "Q1030 22:5"},
    XmlEntry{"<Pt x=\"3\" y=\"4\" />", "<!-- <Pt x=\"3\" y=\"4\" />", "Q1030 22:5"},
    // What the values mean.
    XmlEntry{"<MeshSegmentNo>1<", "<MeshSegmentNo>2<", "Q1066 16:47"},
    XmlEntry{"<SegmentNumY>1<", "<SegmentNumY>0<", "Q1064 12:16"},
    XmlEntry{"<MinorVer>0<", "<MinorVer>1<", "Q1063 7:13"},
    XmlEntry{"N=\"1000\"", "N=\"0\"", "Q1065 10:3"},
    XmlEntry{"<LayerSet>", "<LayerSet><LayerData><LayerNo>3</LayerNo></LayerData>", "Q1068 17:56"},
};

constexpr std::array kDrawingEntries{
    XmlEntry{"G=\"16\"", "G=\"-1\"", "Q1049 12:25"},
    XmlEntry{"<Color A=\"255\"", "<Color a=\"255\"", "Q1046 12:8, Q1047 12:1"},
    XmlEntry{"<Aspect>1</Aspect>", "<Aspect/>", "Q1051 13:1"},
    XmlEntry{"<LineDrawInfo>", "<DrawAtter/><LineDrawInfo>", "Q1043 10:1"},
    XmlEntry{"x=\"1\" y=\"2\"", "x=\"1\" y=\"70000\"", "Q1049 21:26"},
    XmlEntry{"<DrawInfoIdx>1<", "<DrawInfoIdx>-1<", "Q1049 8:14, Q1070 8:14, Q1072 18:1"},
    XmlEntry{"<DrawInfoIdx>1<", "<DrawInfoIdx>2<", "Q1070 8:14, Q1072 18:1"},
    XmlEntry{"</DrawAtter></DrawAtterSet>",
             "</DrawAtter><DrawAtter><ZId>5</ZId></DrawAtter></DrawAtterSet>", "Q1069 8:58"},
    XmlEntry{"<LineCode>0</LineCode>", "<LineCode>0</LineCode><ComData/>", "Q1043 11:32"},
    XmlEntry{"</DrawInfoSet>",
             "</DrawInfoSet><MarkDataSet><MarkData><RectMin x=\"0\" y=\"0\"/>"
             "<RectMax x=\"1\" y=\"1\"/></MarkData></MarkDataSet>",
             "Q1073 22:49"},
    XmlEntry{"<DenomMin>10</DenomMin>\n<DenomMaxWidth>", "<DenomMin>21</DenomMin>\n<DenomMaxWidth>",
             "Q1074 14:1"},
};

TEST(DamageTable, OfAMapAsXml) {
  ExpectXml(kGoodMapXml, BinaryKind::kQen, {"<Qen>", "<Qen>", ""});
  for (const XmlEntry& entry : kMapEntries) ExpectXml(kGoodMapXml, BinaryKind::kQen, entry);
}

TEST(DamageTable, OfDrawDataAsXml) {
  ExpectXml(kGoodDrawingXml, BinaryKind::kZor, {"<Zor>", "<Zor>", ""});
  for (const XmlEntry& entry : kDrawingEntries) ExpectXml(kGoodDrawingXml, BinaryKind::kZor, entry);
}

/// Bytes of a good document that are replaced; where By is empty, the file ends there.
struct BinaryEntry {
  std::uint32_t At;
  std::vector<std::uint8_t> By;
  const char* Expected;
};

void ExpectBinary(const Bytes& good, BinaryKind kind, const BinaryEntry& entry) {
  Bytes bytes = entry.By.empty() ? good.Front(entry.At) : good;
  for (std::uint32_t i = 0; i < entry.By.size(); ++i) bytes[entry.At + i] = entry.By[i];
  FoundSink sink;
  const CCheckCounts counts = CheckBinary({bytes.data(), bytes.size()}, kind, {}, sink);
  EXPECT_EQ(Listed(sink.All), entry.Expected) << entry.At;
  EXPECT_EQ(counts.Of(Severity::kError) == 0, IsRead(bytes, kind)) << entry.At;
}

TEST(DamageTable, OfAMapInBinary) {
  // Chunks: map data 42, segments 50, segment 62, layers 72, layer 84, z-ids 94, z-id 106,
  // objects 122, line 134, label 152, its links 186, link 198; 212 bytes.
  const Bytes map = GoodQenInfo().Add(
      MapDataBytes({LineBytes({{1, 2}, {3, 4}}), LabelBytes(u"ab", InfoSetBytes(u"c"))}));
  ASSERT_EQ(map.size(), 212U);
  const std::vector<BinaryEntry> entries{
      {0, {'q'}, "Q1061 0"},
      {6, {0x0A}, "Q1060 6"},
      {9, {0}, "Q1062 9"},
      {11, {2}, "Q1063 13"},
      {36, {0}, "Q1064 36"},
      {36, {1}, "Q1066 70"},
      {20, {0xFF, 0xFF, 0xFF, 0x7F}, "Q1065 20"},
      {42, {26}, "Q1016 42"},
      {46, {0xA1}, "Q1012 208, Q1017 211"},
      {46, {0xA3}, "Q1010 42"},
      {50, {77}, "Q1018 50, Q1011 86"},
      {50, {20}, "Q1019 50"},
      {58, {2}, "Q1021 58"},
      {62, {7}, "Q1019 62, Q1021 58"},
      {76, {0x87}, "Q1011 72"},
      {126, {0x53}, "Q1011 122"},
      {134, {22}, "Q1019 134, Q1013 146"},
      {142, {3}, "Q1012 144"},
      {142, {1}, "Q1013 148"},
      {178, {7}, "Q1022 178, Q1018 187, Q1011 203"},
      {180, {0, 0}, "Q1023 180"},
      {182, {0}, "Q1024 182"},
      {206, {0xFF}, "Q1012 208"},
      {211, {}, "Q1010 208"},
      {100, {}, "Q1010 84"},
      {20, {}, "Q1010 20"},
  };
  ExpectBinary(map, BinaryKind::kQen, {0, {'Q'}, ""});
  for (const BinaryEntry& entry : entries) ExpectBinary(map, BinaryKind::kQen, entry);
}

TEST(DamageTable, OfDrawDataInBinary) {
  // Chunks: draw data 19, attributes 27, attribute 39, its indices 55, draw infos 75, line 87,
  // brush 106, whose record stands at 120; 128 bytes.
  const Bytes drawing = GoodZorInfo().Add(
      DrawDataBytes({SetChunk(id::kDrawAtterSet, {AtterBytes(7, {0, 1})}),
                     SetChunk(id::kDrawInfoSet, {LineInfoBytes(0), SolidBrushBytes(9)})}));
  ASSERT_EQ(drawing.size(), 128U);
  const std::vector<BinaryEntry> entries{
      {15, {1}, ""},
      {9, {0x42}, "Q1062 9"},
      {8, {0}, "Q1060 6"},
      {19, {25}, "Q1016 19"},
      {27, {24}, "Q1019 39, Q1021 35, Q1072 87, Q1072 106"},
      {39, {77}, "Q1018 39, Q1012 55"},
      {63, {3}, "Q1012 67"},
      {63, {1}, "Q1013 71"},
      {67, {2}, "Q1070 67, Q1072 87"},
      {71, {0}, "Q1072 106"},
      {83, {3}, "Q1021 83"},
      {87, {15}, "Q1012 103"},
      {104, {9}, "Q1012 106"},
      {118, {2}, "Q1012 120"},
      {120, {5, 0, 0, 0}, "Q1074 120"},
      {127, {}, "Q1010 120"},
  };
  ExpectBinary(drawing, BinaryKind::kZor, {0, {'Z'}, ""});
  for (const BinaryEntry& entry : entries) ExpectBinary(drawing, BinaryKind::kZor, entry);
}

}  // namespace
