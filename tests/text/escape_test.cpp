// What a value becomes in XML, and the shapes of single elements.

#include <gtest/gtest.h>

#include "qenzor/text/abstract_chunk_text_converter.h"

namespace qenzor::testing {
namespace {

using Converter = CAbstractChunkTextConverter;

CString Narrow(CString text) {
  Converter::EncodeSpecialCharacterSetA(text);
  return text;
}

CStringW Wide(CStringW text) {
  Converter::EncodeSpecialCharacterSetW(text);
  return text;
}

TEST(Escape, ASpaceIsEscapedTwice) {
  EXPECT_EQ(Narrow("a b&d"), "a&amp;nbsp;b&amp;d");
  EXPECT_EQ(Wide(u"a b&d"), u"a&amp;nbsp;b&amp;d");
}

TEST(Escape, EveryPassAtWork) {
  EXPECT_EQ(Narrow(" &<>\"'\n"), "&amp;nbsp;&amp;&lt;&gt;&quot;&apos;&lt;br /&gt;");
  EXPECT_EQ(Wide(u" &<>\"'\n"), u"&amp;nbsp;&amp;&lt;&gt;&quot;&apos;&lt;br /&gt;");
}

TEST(Escape, ALineFeedKeepsTheSpaceOfItsMark) { EXPECT_EQ(Narrow("\n"), "&lt;br /&gt;"); }

TEST(Escape, WhatLooksEscapedIsEscapedAgain) {
  EXPECT_EQ(Narrow("&nbsp;"), "&amp;nbsp;");
  EXPECT_EQ(Narrow("&amp;"), "&amp;amp;");
  EXPECT_EQ(Narrow("<br />"), "&lt;br&amp;nbsp;/&gt;");
}

TEST(Escape, OtherControlCharactersStay) {
  EXPECT_EQ(Narrow("\r\t\x01\x7F"), "\r\t\x01\x7F");
  EXPECT_EQ(Wide(u"\r\t\x01"), u"\r\t\x01");
}

TEST(Escape, AnEmptyTextStaysEmpty) {
  EXPECT_EQ(Narrow(""), "");
  EXPECT_EQ(Wide(u""), u"");
}

TEST(Escape, WideTextIsNotTakenForItsLowBytes) {
  EXPECT_EQ(Wide(u"\u2620\u263C"), u"\u2620\u263C");
}

TEST(ElemString, PutsTheEscapedValueBetweenTags) {
  EXPECT_EQ(Converter::GetElemString("LayerNo", CString("3"), ""), "<LayerNo>3</LayerNo>");
  EXPECT_EQ(Converter::GetElemString("T", CString("a<b"), ""), "<T>a&lt;b</T>");
  EXPECT_EQ(Converter::GetElemString("T", CString(), ""), "<T></T>");
}

TEST(ElemString, AttributesStandBehindTheTagAsTheyAre) {
  EXPECT_EQ(Converter::GetElemString("T", CString("v"), " k=\"<\""), "<T k=\"<\">v</T>");
}

TEST(ElemString, WideValuesAreConvertedToTheCodePage) {
  EXPECT_EQ(Converter::GetElemString("Text", CStringW(u"\u5730 \u56f3"), ""),
            "<Text>\x92\x6E&amp;nbsp;\x90\x7D</Text>");
}

TEST(ElemString, ACharacterThatTheCodePageLacksBecomesItsDefault) {
  EXPECT_EQ(Converter::GetElemString("Text", CStringW(u"a\u00E9b"), ""), "<Text>a?b</Text>");
}

TEST(ElemString, ATrailByteIsNeverEscaped) {
  // The second byte of this character is a backslash, of others a letter or a brace.
  EXPECT_EQ(Converter::GetElemString("T", CStringW(u"\u8868\u30DD"), ""),
            "<T>\x95\x5C\x83\x7C</T>");
}

TEST(ColorElemString, NamesItsFourBytesInOrder) {
  EXPECT_EQ(Converter::GetColorElemString("Color", 0x80FF0010),
            "<Color A=\"128\" R=\"255\" G=\"0\" B=\"16\" />");
  EXPECT_EQ(Converter::GetColorElemString("Color", 0xFF008000),
            "<Color A=\"255\" R=\"0\" G=\"128\" B=\"0\" />");
  EXPECT_EQ(Converter::GetColorElemString("C", 0), "<C A=\"0\" R=\"0\" G=\"0\" B=\"0\" />");
}

TEST(Indent, IsSoManyTabs) {
  EXPECT_EQ(Converter::GetIndent(0), "");
  EXPECT_EQ(Converter::GetIndent(3), "\t\t\t");
}

}  // namespace
}  // namespace qenzor::testing
