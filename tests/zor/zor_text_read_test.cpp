// Draw data from XML files.

#include <gtest/gtest.h>

#include "tests/support/zor_bytes.h"
#include "tests/support/zor_xml.h"

namespace qenzor::testing {
namespace {

std::unique_ptr<CZorEdit> EditFromInfo(const std::string& content) {
  return ZorEditFromXml("<Zor><ZorFileInfo>" + content + "</ZorFileInfo></Zor>");
}

std::string IdentFrom(const std::string& text) {
  return {EditFromInfo("<Ident>" + text + "</Ident>")->Ident.data(), 9};
}

TEST(ZorTextRead, TheRootMustBeTheDocumentsWord) {
  EXPECT_NE(ZorEditFromXml("<Zor/>"), nullptr);
  for (const char* xml : {"<zor/>", "<ZOR/>", "<Qen/>", "<ZorDrawData/>", "<Zorx/>"})
    EXPECT_EQ(ZorEditFromXml(xml), nullptr) << xml;
}

TEST(ZorTextRead, AnythingThatIsNoXmlGivesNull) {
  for (const char* xml : {"", "   ", "words", "<Zor>", "<Zor><a></b></Zor>",
                          "<?xml version='1.0'?>", "<!-- only a comment -->"})
    EXPECT_EQ(ZorEditFromXml(xml), nullptr) << xml;
}

TEST(ZorTextRead, AFileThatCannotBeReadGivesNull) {
  CZorTextConverter converter;
  EXPECT_EQ(std::unique_ptr<CZorEdit>(converter.ConvertTextToZorEdit("/nonexistent.xml")), nullptr);
  EXPECT_EQ(std::unique_ptr<CZorEdit>(converter.ConvertTextToZorEdit(::testing::TempDir())),
            nullptr);
}

TEST(ZorTextRead, TheFirstElementIsTheRoot) {
  EXPECT_NE(ZorEditFromXml("<?xml version='1.0' encoding='Shift_JIS' ?><!-- c -->\r\n<Zor></Zor>"),
            nullptr);
}

TEST(ZorTextRead, MissingElementsLeaveDefinedValues) {
  const auto edit = ZorEditFromXml("<Zor/>");
  EXPECT_EQ(edit->Ident, (std::array<char, 9>{}));
  EXPECT_EQ(edit->Magic, 0);
  EXPECT_EQ(edit->MajorVer, 0);
  EXPECT_EQ(edit->MinorVer, 0);
  EXPECT_EQ(edit->Revision, 0U);
  EXPECT_EQ(edit->DrawData.DrawAtterSet, nullptr);
}

TEST(ZorTextRead, EveryInfoElementFillsItsField) {
  const auto edit = EditFromInfo(
      "<Revision>168496141</Revision><MinorVer>4</MinorVer><MajorVer>3</MajorVer>"
      "<Magic>0x4041</Magic><Ident>ZORMAP</Ident>");
  EXPECT_EQ(WrittenZor(*ToZor(*edit)), ZorInfoBytes().Add(DrawDataBytes({})));
}

TEST(ZorTextRead, IdentIsCutOrPaddedToSixCharacters) {
  EXPECT_EQ(IdentFrom("ABCDEF"), "ABCDEF\r\n\x1A");
  EXPECT_EQ(IdentFrom("ABCDE"), std::string("ABCDE\0\r\n\x1A", 9));
  EXPECT_EQ(IdentFrom("ABCDEFG"), "ABCDEF\r\n\x1A");
  EXPECT_EQ(IdentFrom("ABCDEFGH"), "ABCDEF\r\n\x1A");
  EXPECT_EQ(IdentFrom("ABCDEFGHIJKLMNOP"), "ABCDEF\r\n\x1A");
  EXPECT_EQ(IdentFrom(""), std::string("\0\0\0\0\0\0\r\n\x1A", 9));
}

TEST(ZorTextRead, TheMagicIsRecognisedNotParsed) {
  const auto magic_of = [](const std::string& text) {
    return EditFromInfo("<Magic>" + text + "</Magic>")->Magic;
  };
  EXPECT_EQ(magic_of("0x4041"), 0x4041);
  EXPECT_EQ(magic_of("0x40410"), 0x4041);
  for (const char* text : {"0x4042", "0X4041", "16449", "0x404", "4041", ""})
    EXPECT_EQ(magic_of(text), 0) << text;
  EXPECT_EQ(EditFromInfo("<Magic>0x4041</Magic><Magic>0x4042</Magic>")->Magic, 0x4041);
}

TEST(ZorTextRead, VersionsAreCutToSixteenBits) {
  EXPECT_EQ(EditFromInfo("<MajorVer>70000</MajorVer>")->MajorVer, 4464);
  EXPECT_EQ(EditFromInfo("<MajorVer>-1</MajorVer>")->MajorVer, 65535);
  EXPECT_EQ(EditFromInfo("<MinorVer>70000</MinorVer>")->MinorVer, 4464);
  EXPECT_EQ(EditFromInfo("<MinorVer>5</MinorVer><MinorVer/>")->MinorVer, 0);
}

TEST(ZorTextRead, TheRevisionIsUnsignedAndSaturates) {
  const auto revision_of = [](const std::string& text) {
    return EditFromInfo("<Revision>" + text + "</Revision>")->Revision;
  };
  EXPECT_EQ(revision_of("4294967295"), 4294967295U);
  EXPECT_EQ(revision_of("4294967296"), 4294967295U);
  EXPECT_EQ(revision_of("-1"), 4294967295U);
  EXPECT_EQ(revision_of("0x10"), 0U);
}

TEST(ZorTextRead, ARepeatedInfoElementOverwritesFieldByField) {
  const auto edit = ZorEditFromXml(
      "<Zor><ZorFileInfo><MajorVer>1</MajorVer><MinorVer>2</MinorVer></ZorFileInfo>"
      "<ZorDrawData/><ZorFileInfo><MinorVer>3</MinorVer></ZorFileInfo></Zor>");
  EXPECT_EQ(edit->MajorVer, 1);
  EXPECT_EQ(edit->MinorVer, 3);
}

TEST(ZorTextRead, ARepeatedDrawDataElementReplacesTheEarlier) {
  const auto edit = ZorEditFromXml(
      "<Zor><ZorDrawData><MarkDataSet/><DrawInfoSet/></ZorDrawData>"
      "<ZorDrawData><DrawAtterSet/></ZorDrawData></Zor>");
  EXPECT_NE(edit->DrawData.DrawAtterSet, nullptr);
  EXPECT_EQ(edit->DrawData.DrawInfoSet, nullptr);
  EXPECT_EQ(edit->DrawData.MarkDataSet, nullptr);
}

TEST(ZorTextRead, OtherElementsAreIgnored) {
  const auto edit = ZorEditFromXml(
      "<Zor><QenFileInfo><MajorVer>1</MajorVer></QenFileInfo><zorDrawData><MarkDataSet/>"
      "</zorDrawData><MajorVer>4</MajorVer><MarkDataSet/>"
      "<ZorFileInfo><majorver>9</majorver><GeoCoodinate>3</GeoCoodinate></ZorFileInfo></Zor>");
  EXPECT_EQ(edit->MajorVer, 0);
  EXPECT_EQ(edit->DrawData.MarkDataSet, nullptr);
}

TEST(ZorTextRead, WithoutAnEditOrAnElementNothingHappens) {
  struct Converter : CZorTextConverter {
    using CZorTextConverter::SetZorEditParam;
    using CZorTextConverter::SetZorFileInfoParam;
  } converter;
  const auto doc = ZorFromMemory(ZorDocumentBytes());
  CZorEdit edit;
  edit.ZorDataToEditData(doc.get());
  converter.SetZorEditParam(&edit, nullptr);
  converter.SetZorFileInfoParam(&edit, nullptr);
  converter.SetZorEditParam(nullptr, nullptr);
  converter.SetZorFileInfoParam(nullptr, nullptr);
  EXPECT_EQ(WrittenZor(*ToZor(edit)), ZorDocumentBytes());
}

TEST(ZorTextRead, ReadsAWholeDocumentBack) {
  const auto doc = ZorFromMemory(ZorDocumentBytes());
  const TempFile file;
  CZorTextConverter converter;
  ASSERT_TRUE(converter.ConvertChunkToText(file.Path(), *doc, 2));
  const std::unique_ptr<CZorEdit> edit(converter.ConvertTextToZorEdit(file.Path()));
  ASSERT_NE(edit, nullptr);
  EXPECT_EQ(WrittenZor(*ToZor(*edit)), ZorDocumentBytes());
}

TEST(ZorTextRead, KeysOfOneBucketComeBackInTheirOrder) {
  // Each of reading, copying, converting and copying again turns them round.
  const std::uint64_t high = 1ULL << 32U;
  const std::vector<std::uint64_t> keys = {5 + 2 * high, 5 + high, 5};
  std::string xml = "<DrawAtterSet>";
  for (const std::uint64_t key : keys)
    xml += "<DrawAtter><ZId>" + std::to_string(key) + "</ZId></DrawAtter>";
  const auto edit = ZorEditFromDrawDataXml(xml + "</DrawAtterSet>");
  const auto doc = ToZor(*edit);
  std::vector<std::uint64_t> found;
  for (const CDrawAtter* atter : doc->DrawData.DrawAtterSet->GetElems())
    found.push_back(atter->ZId);
  EXPECT_EQ(found, keys);
}

}  // namespace
}  // namespace qenzor::testing
