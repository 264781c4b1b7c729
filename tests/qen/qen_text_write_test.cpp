// Map projects as XML files.

#include <gtest/gtest.h>

#include "tests/support/qen_bytes.h"
#include "tests/support/qen_xml.h"

namespace qenzor::testing {
namespace {

std::string XmlOfDocument(CQen& doc, std::uint32_t level = 0) {
  const TempFile file;
  return CQenTextConverter().ConvertChunkToText(file.Path(), doc, level) ? file.Text() : "false";
}

std::unique_ptr<CQen> DocumentOf(const Bytes& bytes) {
  auto doc = std::make_unique<CQen>();
  return doc->Read(bytes.data(), bytes.size()) ? std::move(doc) : nullptr;
}

const std::string kInfo =
    "\t\t<Ident>QENMAP</Ident>\r\n"
    "\t\t<Magic>0x4041</Magic>\r\n"
    "\t\t<MajorVer>1</MajorVer>\r\n"
    "\t\t<MinorVer>2</MinorVer>\r\n"
    "\t\t<Revision>16909060</Revision>\r\n"
    "\t\t<GeoCoodinate>5</GeoCoodinate>\r\n"
    "\t\t<IncRect W=\"-100\" S=\"-200\" E=\"300\" N=\"400\" />\r\n"
    "\t\t<SegmentNumX>6</SegmentNumX>\r\n"
    "\t\t<SegmentNumY>7</SegmentNumY>\r\n"
    "\t\t<CompCoef>8</CompCoef>\r\n";

TEST(QenTextWrite, AWholeDocument) {
  const auto doc = DocumentOf(QenInfoBytes().Add(MapDataBytes({RasMMBytes({1, 2})})));
  ASSERT_NE(doc, nullptr);
  EXPECT_EQ(XmlOfDocument(*doc),
            "<?xml version=\"1.0\" encoding=\"Shift_JIS\" ?>\r\n"
            "<Qen>\r\n"
            "\t<QenFileInfo>\r\n" +
                kInfo +
                "\t</QenFileInfo>\r\n"
                "\t<QenMapData>\r\n"
                "\t\t<MeshSegmentSet>\r\n"
                "\t\t\t<MeshSegment>\r\n"
                "\t\t\t\t<MeshSegmentNo>1</MeshSegmentNo>\r\n"
                "\t\t\t\t<LayerSet>\r\n"
                "\t\t\t\t\t<LayerData>\r\n"
                "\t\t\t\t\t\t<LayerNo>2</LayerNo>\r\n"
                "\t\t\t\t\t\t<ZIdObjSet>\r\n"
                "\t\t\t\t\t\t\t<ZIdObj>\r\n"
                "\t\t\t\t\t\t\t\t<ZId>7</ZId>\r\n"
                "\t\t\t\t\t\t\t\t<ObjSet>\r\n"
                "\t\t\t\t\t\t\t\t\t<RasMMObj>\r\n"
                "\t\t\t\t\t\t\t\t\t\t<Pt x=\"1\" y=\"2\" />\r\n"
                "\t\t\t\t\t\t\t\t\t</RasMMObj>\r\n"
                "\t\t\t\t\t\t\t\t</ObjSet>\r\n"
                "\t\t\t\t\t\t\t</ZIdObj>\r\n"
                "\t\t\t\t\t\t</ZIdObjSet>\r\n"
                "\t\t\t\t\t</LayerData>\r\n"
                "\t\t\t\t</LayerSet>\r\n"
                "\t\t\t</MeshSegment>\r\n"
                "\t\t</MeshSegmentSet>\r\n"
                "\t</QenMapData>\r\n"
                "</Qen>\r\n");
}

TEST(QenTextWrite, WithoutMapDataItsElementIsAbsent) {
  const auto doc = DocumentOf(QenDocumentBytes());
  ASSERT_NE(doc, nullptr);
  doc->MapData.reset();
  EXPECT_EQ(XmlOfDocument(*doc),
            "<?xml version=\"1.0\" encoding=\"Shift_JIS\" ?>\r\n<Qen>\r\n\t<QenFileInfo>\r\n" +
                kInfo + "\t</QenFileInfo>\r\n</Qen>\r\n");
}

TEST(QenTextWrite, ALevelShiftsEveryLineByItsTabs) {
  const auto doc = DocumentOf(QenDocumentBytes());
  ASSERT_NE(doc, nullptr);
  // The line of a URL begins with its element, which no tab precedes.
  doc->MapData.reset();
  std::string shifted;
  for (const char c : XmlOfDocument(*doc)) {
    if (shifted.empty() || shifted.back() == '\n') shifted += "\t\t\t";
    shifted += c;
  }
  EXPECT_EQ(XmlOfDocument(*doc, 3), shifted);
}

std::string ElementOf(CQen& doc, const std::string& tag) {
  const std::string xml = XmlOfDocument(doc);
  const std::size_t from = xml.find('<' + tag);
  return from == std::string::npos ? "" : xml.substr(from, xml.find("\r\n", from) - from);
}

TEST(QenTextWrite, AMagicWithTheSignBitHasEightDigits) {
  CQen doc;
  doc.Magic = 0x7FFF;
  EXPECT_EQ(ElementOf(doc, "Magic"), "<Magic>0x7FFF</Magic>");
  doc.Magic = 0x8000;
  EXPECT_EQ(ElementOf(doc, "Magic"), "<Magic>0xFFFF8000</Magic>");
  doc.Magic = 0xFEDC;
  EXPECT_EQ(ElementOf(doc, "Magic"), "<Magic>0xFFFFFEDC</Magic>");
  doc.Magic = 0;
  EXPECT_EQ(ElementOf(doc, "Magic"), "<Magic>0x0</Magic>");
}

TEST(QenTextWrite, TheGreatestNumbersAreWrittenWhole) {
  CQen doc;
  doc.MajorVer = 65535;
  doc.Revision = 4294967295U;
  doc.GeoCoodinate = 255;
  doc.IncRect = {std::numeric_limits<std::int32_t>::min(), 0, 2147483647, -1};
  EXPECT_EQ(ElementOf(doc, "MajorVer"), "<MajorVer>65535</MajorVer>");
  EXPECT_EQ(ElementOf(doc, "Revision"), "<Revision>4294967295</Revision>");
  EXPECT_EQ(ElementOf(doc, "GeoCoodinate"), "<GeoCoodinate>255</GeoCoodinate>");
  EXPECT_EQ(ElementOf(doc, "IncRect"),
            "<IncRect W=\"-2147483648\" S=\"0\" E=\"2147483647\" N=\"-1\" />");
}

TEST(QenTextWrite, TheIdentIsEscapedLikeAnyValue) {
  CQen doc;
  doc.Ident = {'A', ' ', '<', '&', '>', '"', '\r', '\n', '\x1A'};
  EXPECT_EQ(ElementOf(doc, "Ident"), "<Ident>A&amp;nbsp;&lt;&amp;&gt;&quot;</Ident>");
}

TEST(QenTextWrite, APathThatCannotBeCreatedFails) {
  CQen doc;
  EXPECT_FALSE(CQenTextConverter().ConvertChunkToText("/nonexistent/map.xml", doc, 0));
}

TEST(QenTextWrite, AFullDiskThrows) {
  CQen doc;
  EXPECT_THROW(static_cast<void>(CQenTextConverter().ConvertChunkToText("/dev/full", doc, 0)),
               CFileException);
}

TEST(QenTextWrite, ReplacesALongerFile) {
  CQen doc;
  const std::string expected = XmlOfDocument(doc);
  const TempFile longer{std::string_view(expected + expected)};
  ASSERT_TRUE(CQenTextConverter().ConvertChunkToText(longer.Path(), doc, 0));
  EXPECT_EQ(longer.Text(), expected);
}

}  // namespace
}  // namespace qenzor::testing
