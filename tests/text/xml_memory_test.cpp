// XML text through memory: no file is needed to read or to write it, and a failure tells its place.

#include <gtest/gtest.h>

#include "qenzor/qen/cmb_lbl_obj.h"
#include "qenzor/qen_xml.h"
#include "qenzor/zor_xml.h"
#include "tests/support/qen_xml.h"

namespace qenzor::testing {
namespace {

const std::string kObjectFront =
    "<Qen><QenMapData><MeshSegmentSet><MeshSegment><LayerSet><LayerData><ZIdObjSet><ZIdObj><"
    "ObjSet>";
const std::string kObjectBack =
    "</ObjSet></ZIdObj></ZIdObjSet></LayerData></LayerSet></MeshSegment></MeshSegmentSet></"
    "QenMapData>"
    "</Qen>";

std::string Label(const std::string& text) {
  return kObjectFront + "<CmbLblObj><Text>" + text + "</Text></CmbLblObj>" + kObjectBack;
}

CStringW LabelText(CQenEdit& edit) { return FirstObject<CCmbLblObjEdit>(edit)->Text; }

std::string Written(CQenEdit& edit, XmlEncoding encoding) {
  const std::unique_ptr<CQen> document(edit.EditDataToQenData());
  auto text = QenToXml(*document, encoding);
  return text ? *text : std::string();
}

TEST(XmlMemory, TextIsReadAndWrittenWithoutAFile) {
  const auto edit = ParseQenXml(Label("abc"));
  ASSERT_TRUE(edit);
  EXPECT_EQ(LabelText(*edit), u"abc");
  const std::string text = Written(*edit, XmlEncoding::kShiftJis);
  EXPECT_TRUE(text.starts_with("<?xml version=\"1.0\" encoding=\"Shift_JIS\" ?>\r\n<Qen>\r\n"));
  EXPECT_NE(text.find("<Text>abc</Text>"), std::string::npos);
  const auto drawing = ParseZorXml("<Zor><ZorFileInfo><Revision>9</Revision></ZorFileInfo></Zor>");
  ASSERT_TRUE(drawing);
  EXPECT_EQ(drawing->Revision, 9U);
  const std::unique_ptr<CZor> document(drawing->EditDataToZorData());
  const auto written = ZorToXml(*document);
  ASSERT_TRUE(written);
  EXPECT_NE(written->find("<Revision>9</Revision>"), std::string::npos);
}

TEST(XmlMemory, AFailureTellsKindLineAndColumn) {
  const auto broken = ParseQenXml("<Qen>\n <a></b></Qen>");
  ASSERT_FALSE(broken);
  EXPECT_EQ(broken.GetFailure().Kind, FailureKind::kDamaged);
  EXPECT_EQ(broken.GetFailure().Line, 2U);
  EXPECT_EQ(broken.GetFailure().Column, 5U);
  const auto other = ParseZorXml("<Qen/>");
  ASSERT_FALSE(other);
  EXPECT_EQ(other.GetFailure().Kind, FailureKind::kNotSuchDocument);
  const auto empty = ParseQenXml("");
  ASSERT_FALSE(empty);
  const auto missing = ReadQenXml(CString("/nonexistent/map.xml"));
  ASSERT_FALSE(missing);
  EXPECT_EQ(missing.GetFailure().Kind, FailureKind::kCannotOpen);
  EXPECT_EQ(missing.GetFailure().Path, "/nonexistent/map.xml");
}

TEST(XmlMemory, WhatTheCodePageLacksSurvivesInUtf8) {
  CQenEdit& source = *ParseQenXml(Label("x")).Take().release();
  const std::unique_ptr<CQenEdit> owned(&source);
  const CStringW text = u"\u6F22 \u00E9\u20AC\U0001F5FA\u042F\n&<" + CStringW(1, u'\xD800');
  FirstObject<CCmbLblObjEdit>(source)->Text = text;
  const std::string xml = Written(source, XmlEncoding::kUtf8);
  EXPECT_TRUE(xml.starts_with("<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\r\n"));
  EXPECT_NE(xml.find("\xE6\xBC\xA2&amp;nbsp;\xC3\xA9\xE2\x82\xAC\xF0\x9F\x97\xBA\xD0\xAF"),
            std::string::npos);
  CStringW expected = text;
  expected.back() = u'\uFFFD';  // half a pair is no character
  for (const XmlEncoding encoding : {XmlEncoding::kUtf8, XmlEncoding::kAuto}) {
    XmlReadOptions options;
    options.Encoding = encoding;
    const auto edit = ParseQenXml(xml, options);
    ASSERT_TRUE(edit);
    EXPECT_EQ(LabelText(*edit), expected);
  }
}

TEST(XmlMemory, TheCodePageIsReadUnlessAnotherEncodingIsAskedFor) {
  const std::string katakana = Label("\x83\x5C");
  EXPECT_EQ(LabelText(*ParseQenXml(katakana)), u"\u30BD");
  const std::string utf8 = Label("\xE3\x82\xBD");
  XmlReadOptions options;
  options.Encoding = XmlEncoding::kUtf8;
  EXPECT_EQ(LabelText(*ParseQenXml(utf8, options)), u"\u30BD");
  options.Encoding = XmlEncoding::kAuto;
  EXPECT_EQ(LabelText(*ParseQenXml(utf8, options)), u"\u30BD");
  EXPECT_EQ(LabelText(*ParseQenXml("\xEF\xBB\xBF" + utf8, options)), u"\u30BD");
  const std::string front = "<?xml version='1.0' encoding=";
  EXPECT_EQ(LabelText(*ParseQenXml(front + "'UTF-8'?>" + utf8, options)), u"\u30BD");
  EXPECT_EQ(LabelText(*ParseQenXml(front + "'Shift_JIS'?>" + katakana, options)), u"\u30BD");
}

TEST(XmlMemory, AReferenceIsACharacterInUtf8) {
  XmlReadOptions options;
  options.Encoding = XmlEncoding::kUtf8;
  EXPECT_EQ(LabelText(*ParseQenXml(Label("&#x30BD;&#233;"), options)), u"\u30BD\u00E9");
}

TEST(XmlMemory, TextThatSeemsToBeInAnotherEncodingIsToldOnce) {
  const auto warnings = [](const std::string& text, XmlEncoding encoding) {
    XmlReadOptions options;
    options.Encoding = encoding;
    int count = 0;
    options.Warn = [&count](std::string_view) { ++count; };
    EXPECT_TRUE(ParseQenXml(text, options));
    return count;
  };
  const std::string front = "<?xml version='1.0' encoding=";
  EXPECT_EQ(warnings(Label("\xE3\x82\xBD"), XmlEncoding::kShiftJis), 1);
  EXPECT_EQ(warnings(Label("\x83\x5C"), XmlEncoding::kShiftJis), 0);
  EXPECT_EQ(warnings(Label("abc"), XmlEncoding::kShiftJis), 0);
  EXPECT_EQ(warnings(front + "'utf-8'?>" + Label("abc"), XmlEncoding::kShiftJis), 1);
  EXPECT_EQ(warnings(front + "'Shift_JIS'?>" + Label("abc"), XmlEncoding::kShiftJis), 0);
  EXPECT_EQ(warnings(front + "'cp932'?>" + Label("abc"), XmlEncoding::kShiftJis), 0);
  EXPECT_EQ(warnings(Label("\xE3\x82\xBD"), XmlEncoding::kUtf8), 0);
  EXPECT_EQ(warnings(front + "'utf-8'?>" + Label("abc"), XmlEncoding::kAuto), 0);
}

TEST(XmlMemory, AnEditFormThatIsGivenUpMakesTheSameDocument) {
  const auto edit = ParseQenXml(Label("abc"));
  const std::string whole = Written(*edit, XmlEncoding::kShiftJis);
  const std::unique_ptr<CQen> taken(edit->TakeQenData());
  EXPECT_EQ(*QenToXml(*taken), whole);
  EXPECT_EQ(edit->MapData, nullptr);
  std::string atters;
  for (int key = 1; key < 100; ++key)
    atters += "<DrawAtter><ZId>" + std::to_string(key * 8191 * 17) + "</ZId></DrawAtter>";
  const std::string drawing =
      "<Zor><ZorDrawData><DrawAtterSet>" + atters + "</DrawAtterSet></ZorDrawData></Zor>";
  const std::unique_ptr<CZor> kept(ParseZorXml(drawing)->EditDataToZorData());
  const std::unique_ptr<CZor> given(ParseZorXml(drawing)->TakeZorData());
  EXPECT_EQ(*ZorToXml(*kept), *ZorToXml(*given));
}

}  // namespace
}  // namespace qenzor::testing
