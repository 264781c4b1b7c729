// Draw data as XML files.

#include <gtest/gtest.h>

#include "tests/support/faulty_file.h"
#include "tests/support/zor_bytes.h"
#include "tests/support/zor_xml.h"

namespace qenzor::testing {
namespace {

std::string XmlOfDocument(CZor& doc, std::uint32_t level = 0) {
  const TempFile file;
  return CZorTextConverter().ConvertChunkToText(file.Path(), doc, level) ? file.Text() : "false";
}

const std::string kFront =
    "<?xml version=\"1.0\" encoding=\"Shift_JIS\" ?>\r\n"
    "<Zor>\r\n"
    "\t<ZorFileInfo>\r\n"
    "\t\t<Ident>ZORMAP</Ident>\r\n"
    "\t\t<Magic>0x4041</Magic>\r\n"
    "\t\t<MajorVer>3</MajorVer>\r\n"
    "\t\t<MinorVer>4</MinorVer>\r\n"
    "\t\t<Revision>168496141</Revision>\r\n"
    "\t</ZorFileInfo>\r\n";

TEST(ZorTextWrite, AWholeDocument) {
  const auto doc = ZorFromMemory(ZorDocumentBytes());
  ASSERT_NE(doc, nullptr);
  EXPECT_EQ(XmlOfDocument(*doc), kFront +
                                     "\t<ZorDrawData>\r\n"
                                     "\t\t<DrawAtterSet>\r\n"
                                     "\t\t\t<DrawAtter>\r\n"
                                     "\t\t\t\t<ZId>0</ZId>\r\n"
                                     "\t\t\t\t<DrawInfoIdxSet>\r\n"
                                     "\t\t\t\t\t<DrawInfoIdx>1</DrawInfoIdx>\r\n"
                                     "\t\t\t\t\t<DrawInfoIdx>0</DrawInfoIdx>\r\n"
                                     "\t\t\t\t</DrawInfoIdxSet>\r\n"
                                     "\t\t\t</DrawAtter>\r\n"
                                     "\t\t\t<DrawAtter>\r\n"
                                     "\t\t\t\t<ZId>1</ZId>\r\n"
                                     "\t\t\t\t<DrawInfoIdxSet>\r\n"
                                     "\t\t\t\t</DrawInfoIdxSet>\r\n"
                                     "\t\t\t</DrawAtter>\r\n"
                                     "\t\t</DrawAtterSet>\r\n"
                                     "\t\t<DrawInfoSet>\r\n"
                                     "\t\t\t<LineDrawInfo>\r\n"
                                     "\t\t\t\t<ComData>\r\n"
                                     "\t\t\t\t\t<LineCode>7</LineCode>\r\n"
                                     "\t\t\t\t\t<Color A=\"128\" R=\"255\" G=\"0\" B=\"0\" />\r\n"
                                     "\t\t\t\t\t<Aspect>1.5000000000</Aspect>\r\n"
                                     "\t\t\t\t</ComData>\r\n"
                                     "\t\t\t</LineDrawInfo>\r\n"
                                     "\t\t\t<PolySolidBrushDrawInfo>\r\n"
                                     "\t\t\t\t<ComData>\r\n"
                                     "\t\t\t\t\t<Color A=\"255\" R=\"0\" G=\"255\" B=\"0\" />\r\n"
                                     "\t\t\t\t</ComData>\r\n"
                                     "\t\t\t\t<ScData>\r\n"
                                     "\t\t\t\t\t<DenomMax>50000</DenomMax>\r\n"
                                     "\t\t\t\t\t<DenomMin>10</DenomMin>\r\n"
                                     "\t\t\t\t</ScData>\r\n"
                                     "\t\t\t</PolySolidBrushDrawInfo>\r\n"
                                     "\t\t</DrawInfoSet>\r\n"
                                     "\t\t<MarkDataSet>\r\n"
                                     "\t\t\t<MarkData>\r\n"
                                     "\t\t\t\t<RectMin x=\"-5\" y=\"-6\" />\r\n"
                                     "\t\t\t\t<RectMax x=\"5\" y=\"6\" />\r\n"
                                     "\t\t\t\t<MarkElem>\r\n"
                                     "\t\t\t\t\t<ElemKind>1</ElemKind>\r\n"
                                     "\t\t\t\t\t<LineWidth>2</LineWidth>\r\n"
                                     "\t\t\t\t\t<Color A=\"255\" R=\"0\" G=\"0\" B=\"255\" />\r\n"
                                     "\t\t\t\t\t<Pt x=\"3\" y=\"-4\" />\r\n"
                                     "\t\t\t\t</MarkElem>\r\n"
                                     "\t\t\t</MarkData>\r\n"
                                     "\t\t</MarkDataSet>\r\n"
                                     "\t</ZorDrawData>\r\n"
                                     "</Zor>\r\n");
}

TEST(ZorTextWrite, WithoutSetsTheDrawDataElementIsEmpty) {
  const auto doc = ZorFromMemory(ZorInfoBytes().Add(DrawDataBytes({})));
  ASSERT_NE(doc, nullptr);
  EXPECT_EQ(XmlOfDocument(*doc), kFront + "\t<ZorDrawData>\r\n\t</ZorDrawData>\r\n</Zor>\r\n");
}

TEST(ZorTextWrite, ALevelShiftsEveryLineByItsTabs) {
  const auto doc = ZorFromMemory(ZorDocumentBytes());
  std::string shifted;
  for (const char c : XmlOfDocument(*doc)) {
    if (shifted.empty() || shifted.back() == '\n') shifted += "\t\t\t";
    shifted += c;
  }
  EXPECT_EQ(XmlOfDocument(*doc, 3), shifted);
}

std::string ElementOf(CZor& doc, const std::string& tag) {
  const std::string xml = XmlOfDocument(doc);
  const std::size_t from = xml.find('<' + tag + '>');
  return from == std::string::npos ? "" : xml.substr(from, xml.find("\r\n", from) - from);
}

TEST(ZorTextWrite, AMagicWithTheSignBitHasEightDigits) {
  CZor doc;
  doc.Magic = 0x4041;
  EXPECT_EQ(ElementOf(doc, "Magic"), "<Magic>0x4041</Magic>");
  doc.Magic = 0x7FFF;
  EXPECT_EQ(ElementOf(doc, "Magic"), "<Magic>0x7FFF</Magic>");
  doc.Magic = 0x8000;
  EXPECT_EQ(ElementOf(doc, "Magic"), "<Magic>0xFFFF8000</Magic>");
  doc.Magic = 0xABCD;
  EXPECT_EQ(ElementOf(doc, "Magic"), "<Magic>0xFFFFABCD</Magic>");
  doc.Magic = 0;
  EXPECT_EQ(ElementOf(doc, "Magic"), "<Magic>0x0</Magic>");
}

TEST(ZorTextWrite, TheGreatestNumbersAreWrittenWhole) {
  CZor doc;
  doc.MajorVer = 65535;
  doc.MinorVer = 32768;
  doc.Revision = 4294967295U;
  EXPECT_EQ(ElementOf(doc, "MajorVer"), "<MajorVer>65535</MajorVer>");
  EXPECT_EQ(ElementOf(doc, "MinorVer"), "<MinorVer>32768</MinorVer>");
  EXPECT_EQ(ElementOf(doc, "Revision"), "<Revision>4294967295</Revision>");
}

TEST(ZorTextWrite, TheIdentIsSixCharactersEscapedLikeAnyValue) {
  CZor doc;
  doc.Ident = {'A', ' ', '<', '&', '>', '"', 'x', 'y', 'z'};
  EXPECT_EQ(ElementOf(doc, "Ident"), "<Ident>A&amp;nbsp;&lt;&amp;&gt;&quot;</Ident>");
}

TEST(ZorTextWrite, APathThatCannotBeCreatedFails) {
  CZor doc;
  EXPECT_FALSE(CZorTextConverter().ConvertChunkToText("/nonexistent/map.xml", doc, 0));
}

TEST(ZorTextWrite, AFullDiskThrows) {
  CZor doc;
  EXPECT_THROW(static_cast<void>(CZorTextConverter().ConvertChunkToText("/dev/full", doc, 0)),
               CFileException);
}

TEST(ZorTextWrite, WhatCannotBeWrittenThrowsAndLeavesTheDocumentWhole) {
  const auto doc = ZorFromMemory(ZorDocumentBytes());
  FaultyFile whole(FaultyFile::kNever);
  CStdioFile counter(whole);
  CZorTextConverter().ConvertChunkToText(counter, *doc, 0);
  counter.Close();
  ASSERT_GT(whole.GetCalls(), 0U);
  for (std::uint32_t call = 0; call < whole.GetCalls(); ++call) {
    FaultyFile sink(call);
    CStdioFile file(sink);
    EXPECT_THROW(
        {
          CZorTextConverter().ConvertChunkToText(file, *doc, 0);
          file.Close();
        },
        CFileException);
  }
  EXPECT_EQ(WrittenZor(*doc), ZorDocumentBytes());
}

TEST(ZorTextWrite, ReplacesALongerFile) {
  CZor doc;
  const std::string expected = XmlOfDocument(doc);
  const TempFile longer{std::string_view(expected + expected)};
  ASSERT_TRUE(CZorTextConverter().ConvertChunkToText(longer.Path(), doc, 0));
  EXPECT_EQ(longer.Text(), expected);
}

}  // namespace
}  // namespace qenzor::testing
