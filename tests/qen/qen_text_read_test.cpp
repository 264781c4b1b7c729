// Map projects from XML files.

#include <gtest/gtest.h>

#include "tests/support/qen_bytes.h"
#include "tests/support/qen_xml.h"

namespace qenzor::testing {
namespace {

std::unique_ptr<CQenEdit> EditFromInfo(const std::string& content) {
  return EditFromXml("<Qen><QenFileInfo>" + content + "</QenFileInfo></Qen>");
}

std::string IdentFrom(const std::string& text) {
  return {EditFromInfo("<Ident>" + text + "</Ident>")->Ident.data(), 9};
}

TEST(QenTextRead, TheRootMustBeTheDocumentsWord) {
  EXPECT_NE(EditFromXml("<Qen/>"), nullptr);
  for (const char* xml : {"<qen/>", "<QEN/>", "<Zor/>", "<QenMapData/>", "<Qenx/>"})
    EXPECT_EQ(EditFromXml(xml), nullptr) << xml;
}

TEST(QenTextRead, AnythingThatIsNoXmlGivesNull) {
  for (const char* xml : {"", "   ", "words", "<Qen>", "<Qen><a></b></Qen>",
                          "<?xml version='1.0'?>", "<!-- only a comment -->"})
    EXPECT_EQ(EditFromXml(xml), nullptr) << xml;
}

TEST(QenTextRead, AFileThatCannotBeReadGivesNull) {
  CQenTextConverter converter;
  EXPECT_EQ(std::unique_ptr<CQenEdit>(converter.ConvertTextToQenEdit("/nonexistent.xml")), nullptr);
  EXPECT_EQ(std::unique_ptr<CQenEdit>(converter.ConvertTextToQenEdit(::testing::TempDir())),
            nullptr);
}

TEST(QenTextRead, TheFirstElementIsTheRoot) {
  EXPECT_NE(EditFromXml("<?xml version='1.0' encoding='Shift_JIS' ?><!-- c -->\r\n<Qen></Qen>"),
            nullptr);
}

TEST(QenTextRead, MissingElementsLeaveDefinedValues) {
  const auto edit = EditFromXml("<Qen/>");
  EXPECT_EQ(edit->Ident, (std::array<char, 9>{}));
  EXPECT_EQ(edit->Magic, 0);
  EXPECT_EQ(edit->Revision, 0U);
  EXPECT_EQ(edit->IncRect, CRect{});
  EXPECT_EQ(edit->MapData, nullptr);
}

TEST(QenTextRead, EveryInfoElementFillsItsField) {
  const auto edit = EditFromInfo(
      "<CompCoef>8</CompCoef><SegmentNumY>7</SegmentNumY><SegmentNumX>6</SegmentNumX>"
      "<IncRect W='-100' S='-200' E='300' N='400'/><GeoCoodinate>5</GeoCoodinate>"
      "<Revision>16909060</Revision><MinorVer>2</MinorVer><MajorVer>1</MajorVer>"
      "<Magic>0x4041</Magic><Ident>QENMAP</Ident>");
  const std::unique_ptr<CQen> doc(edit->EditDataToQenData());
  doc->MapData = std::make_unique<CQenMapData>();
  CMemFile file;
  ASSERT_TRUE(doc->Write(&file));
  EXPECT_EQ(Bytes(file.GetBytes()), QenInfoBytes().Add(Chunk(25, {})));
}

TEST(QenTextRead, IdentIsCutOrPaddedToSixCharacters) {
  EXPECT_EQ(IdentFrom("ABCDEF"), "ABCDEF\r\n\x1A");
  EXPECT_EQ(IdentFrom("ABCDE"), std::string("ABCDE\0\r\n\x1A", 9));
  EXPECT_EQ(IdentFrom("ABCDEFG"), "ABCDEF\r\n\x1A");
  EXPECT_EQ(IdentFrom("ABCDEFGH"), "ABCDEF\r\n\x1A");
  EXPECT_EQ(IdentFrom("ABCDEFGHIJKLMNOP"), "ABCDEF\r\n\x1A");
  EXPECT_EQ(IdentFrom(""), std::string("\0\0\0\0\0\0\r\n\x1A", 9));
}

TEST(QenTextRead, ARepeatedIdentOverwritesUpToItsZero) {
  const auto edit = EditFromInfo("<Ident>ABCDEF</Ident><Ident>XY</Ident>");
  EXPECT_EQ(std::string(edit->Ident.data(), 9), std::string("XY\0DEF\r\n\x1A", 9));
}

TEST(QenTextRead, TheMagicIsRecognisedNotParsed) {
  const auto magic_of = [](const std::string& text) {
    return EditFromInfo("<Magic>" + text + "</Magic>")->Magic;
  };
  EXPECT_EQ(magic_of("0x4041"), 0x4041);
  EXPECT_EQ(magic_of("0x40410"), 0x4041);
  EXPECT_EQ(magic_of("0x4042"), 0);
  EXPECT_EQ(magic_of("0X4041"), 0);
  EXPECT_EQ(magic_of("16449"), 0);
  EXPECT_EQ(magic_of("0x404"), 0);
  EXPECT_EQ(magic_of(""), 0);
  EXPECT_EQ(EditFromInfo("<Magic>0x4041</Magic><Magic>0x4042</Magic>")->Magic, 0x4041);
}

TEST(QenTextRead, NumbersAreCutToTheirField) {
  EXPECT_EQ(EditFromInfo("<MajorVer>70000</MajorVer>")->MajorVer, 4464);
  EXPECT_EQ(EditFromInfo("<MinorVer>70000</MinorVer>")->MinorVer, 4464);
  EXPECT_EQ(EditFromInfo("<GeoCoodinate>257</GeoCoodinate>")->GeoCoodinate, 1);
  EXPECT_EQ(EditFromInfo("<SegmentNumX>-1</SegmentNumX>")->SegmentNumX, 65535);
  EXPECT_EQ(EditFromInfo("<SegmentNumY>65536</SegmentNumY>")->SegmentNumY, 0);
  EXPECT_EQ(EditFromInfo("<CompCoef>65537</CompCoef>")->CompCoef, 1);
}

TEST(QenTextRead, TheRevisionIsUnsignedAndSaturates) {
  const auto revision_of = [](const std::string& text) {
    return EditFromInfo("<Revision>" + text + "</Revision>")->Revision;
  };
  EXPECT_EQ(revision_of("4294967295"), 4294967295U);
  EXPECT_EQ(revision_of("4294967296"), 4294967295U);
  EXPECT_EQ(revision_of("-1"), 4294967295U);
  EXPECT_EQ(revision_of("0x10"), 0U);
}

TEST(QenTextRead, ARectangleWithAbsentAttributesHasZeroes) {
  EXPECT_EQ(EditFromInfo("<IncRect N='4' W='1'/>")->IncRect, (CRect{1, 0, 0, 4}));
}

TEST(QenTextRead, ARepeatedInfoElementOverwritesFieldByField) {
  const auto edit = EditFromXml(
      "<Qen><QenFileInfo><MajorVer>1</MajorVer><MinorVer>2</MinorVer></QenFileInfo>"
      "<QenFileInfo><MinorVer>3</MinorVer></QenFileInfo></Qen>");
  EXPECT_EQ(edit->MajorVer, 1);
  EXPECT_EQ(edit->MinorVer, 3);
}

TEST(QenTextRead, ARepeatedMapDataElementReplacesTheEarlier) {
  const auto edit =
      EditFromXml("<Qen><QenMapData><MeshSegmentSet/></QenMapData><QenMapData></QenMapData></Qen>");
  ASSERT_NE(edit->MapData, nullptr);
  EXPECT_EQ(edit->MapData->MeshSegmentSet, nullptr);
}

TEST(QenTextRead, OtherElementsAreIgnored) {
  const auto edit = EditFromXml(
      "<Qen><ZorFileInfo><MajorVer>1</MajorVer></ZorFileInfo><qenMapData/><MajorVer>4</MajorVer>"
      "<QenFileInfo><majorver>9</majorver></QenFileInfo></Qen>");
  EXPECT_EQ(edit->MajorVer, 0);
  EXPECT_EQ(edit->MapData, nullptr);
}

TEST(QenTextRead, LineEndsOfEveryKindAreWhiteSpace) {
  for (const char* line_end : {"\n", "\r\n", "\r"}) {
    const std::string e = line_end;
    const auto edit = EditFromXml("<Qen>" + e + "<QenFileInfo>" + e + "<MajorVer>" + e + "7" + e +
                                  "</MajorVer>" + e + "</QenFileInfo>" + e + "</Qen>" + e);
    ASSERT_NE(edit, nullptr);
    EXPECT_EQ(edit->MajorVer, 7);
  }
}

}  // namespace
}  // namespace qenzor::testing
