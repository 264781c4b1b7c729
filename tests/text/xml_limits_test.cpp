// The limits that XML text must keep before a parser sees it.

#include <gtest/gtest.h>

#include "qenzor/text/xml_file.h"
#include "tests/support/qen_xml.h"

namespace qenzor::testing {
namespace {

std::string Repeat(const std::string& text, std::uint32_t count) {
  std::string repeated;
  for (; count > 0; --count) repeated += text;
  return repeated;
}

/// A document whose elements nest so deep in all.
std::string Nested(std::uint32_t depth) {
  return "<Qen>" + Repeat("<e>", depth - 1) + Repeat("</e>", depth - 1) + "</Qen>";
}

std::string WithAttributes(std::uint32_t count) {
  std::string xml = "<Qen><e";
  for (std::uint32_t i = 0; i < count; ++i) xml += " a" + std::to_string(i) + "='=>\"'";
  return xml + "/></Qen>";
}

TEST(XmlLimits, ElementsNest256Deep) {
  EXPECT_EQ(kMaxXmlDepth, 256U);
  EXPECT_TRUE(IsWithinXmlLimits(Nested(256)));
  EXPECT_NE(EditFromXml(Nested(256)), nullptr);
  EXPECT_FALSE(IsWithinXmlLimits(Nested(257)));
  EXPECT_EQ(EditFromXml(Nested(257)), nullptr);
}

TEST(XmlLimits, AnEmptyElementCountsAsALevel) {
  const std::string open = "<Qen>" + Repeat("<e>", 254);
  const std::string close = Repeat("</e>", 254) + "</Qen>";
  EXPECT_TRUE(IsWithinXmlLimits(open + "<e/>" + close));
  EXPECT_TRUE(IsWithinXmlLimits(open + "<e/><e/><e/>" + close));
  EXPECT_FALSE(IsWithinXmlLimits(open + "<e><e/></e>" + close));
}

TEST(XmlLimits, AMillionSiblingsAreNoDepth) {
  EXPECT_TRUE(IsWithinXmlLimits("<Qen>" + Repeat("<e></e><f/>", 500000) + "</Qen>"));
}

TEST(XmlLimits, AnElementBears64Attributes) {
  EXPECT_EQ(kMaxXmlAttributes, 64U);
  EXPECT_TRUE(IsWithinXmlLimits(WithAttributes(64)));
  EXPECT_NE(EditFromXml(WithAttributes(64)), nullptr);
  EXPECT_FALSE(IsWithinXmlLimits(WithAttributes(65)));
  EXPECT_EQ(EditFromXml(WithAttributes(65)), nullptr);
}

TEST(XmlLimits, AttributesCountForEachElementAnew) {
  std::string xml = WithAttributes(64);
  xml.insert(xml.find("</Qen>"), WithAttributes(64).substr(5, WithAttributes(64).size() - 11));
  EXPECT_TRUE(IsWithinXmlLimits(xml));
}

TEST(XmlLimits, ANulIsRefusedWhereverItStands) {
  const std::string xml = "<Qen><e>text</e></Qen>";
  for (std::size_t at = 0; at <= xml.size(); ++at) {
    std::string with_nul = xml;
    with_nul.insert(at, 1, '\0');
    EXPECT_FALSE(IsWithinXmlLimits(with_nul)) << at;
    EXPECT_EQ(EditFromXml(with_nul), nullptr) << at;
  }
}

TEST(XmlLimits, CommentsAndCharacterDataHoldNoElements) {
  EXPECT_TRUE(IsWithinXmlLimits("<Qen><!--" + Repeat("<e>", 300) + "--></Qen>"));
  EXPECT_TRUE(IsWithinXmlLimits("<Qen><![CDATA[" + Repeat("<e>", 300) + "]]></Qen>"));
}

TEST(XmlLimits, QuotedValuesHideNoDepth) {
  EXPECT_FALSE(IsWithinXmlLimits("<Qen>" + Repeat("<e a='/>'>", 256)));
  EXPECT_TRUE(IsWithinXmlLimits("<Qen>" + Repeat("<e a='>'/>", 300) + "</Qen>"));
}

// In UTF-8 the parser believes a first byte about its character's length and passes over the '<' of
// an end tag or over a closing quote, which brings what follows deeper, or into sight.
TEST(XmlLimits, CharactersThatSwallowMarkupHideNoDepth) {
  const std::string swallowed_ends = "<Qen>" + Repeat("<a>\xC3</a>", 300) + "</Qen>";
  const std::string swallowed_quote = "<Qen a=\"\xE3\" b=\">" + Repeat("<e>", 300);
  for (const char* declaration :
       {"<?xml version=\"1.0\"?>", "<?xml version='1.0' encoding='utf-8' ?>",
        "<?XML Encoding=UTF8?>", "\xEF\xBB\xBF"}) {
    EXPECT_FALSE(IsWithinXmlLimits(declaration + swallowed_ends)) << declaration;
    EXPECT_FALSE(IsWithinXmlLimits(declaration + swallowed_quote)) << declaration;
  }
  for (const char* declaration : {"", "<?xml version=\"1.0\" encoding=\"Shift_JIS\" ?>"}) {
    EXPECT_TRUE(IsWithinXmlLimits(declaration + swallowed_ends)) << declaration;
    EXPECT_TRUE(IsWithinXmlLimits(declaration + swallowed_quote)) << declaration;
  }
}

// A numeric entity reaches to the next ';' and is read from there backwards, so that it can begin
// long before.
TEST(XmlLimits, EntitiesThatSwallowMarkupHideNoDepth) {
  EXPECT_FALSE(IsWithinXmlLimits("<Qen>" + Repeat("<a>&#</a>#65;", 300)));
  EXPECT_FALSE(IsWithinXmlLimits("<Qen>" + Repeat("<a>&#x</a>x4f;", 300)));
  EXPECT_FALSE(IsWithinXmlLimits("<Qen a='&#' #1;'>" + Repeat("<e>", 300)));
  EXPECT_TRUE(IsWithinXmlLimits("<Qen>" + Repeat("<a>&#65;&#x4F;&amp;&</a>", 300) + "</Qen>"));
  // Here the parser gives up.
  EXPECT_TRUE(IsWithinXmlLimits("<Qen>&#65" + Repeat("<e>", 300)));
  EXPECT_TRUE(IsWithinXmlLimits("<Qen>&#x4G;" + Repeat("<e>", 300)));
  EXPECT_TRUE(IsWithinXmlLimits("<Qen>&#4f;" + Repeat("<e>", 300)));
}

TEST(XmlLimits, TextThatEndsInsideACharacterIsLeftToTheParser) {
  for (const char* end : {"\xC3", "\xE3", "\xF0", "\xF0\x9F"})
    EXPECT_EQ(EditFromXml(std::string("\xEF\xBB\xBF<Qen><a>") + end), nullptr);
}

TEST(XmlLimits, ADeclarationHidesNoDepth) {
  const std::string nested = Repeat("<e>", 300);
  EXPECT_TRUE(IsWithinXmlLimits("<?xml version='>" + nested + "' ?><Qen/>"));
  EXPECT_FALSE(IsWithinXmlLimits("<?xml revision='>" + nested + "' ?><Qen/>"));
  EXPECT_FALSE(IsWithinXmlLimits("<?other version='>" + nested + "' ?><Qen/>"));
  EXPECT_FALSE(IsWithinXmlLimits("<Qen><?xml version='1' ?>" + nested));
  EXPECT_TRUE(IsWithinXmlLimits("<?xml version ?>" + nested));  // the parser gives up there
  EXPECT_TRUE(IsWithinXmlLimits("<?xml version='1"));
  EXPECT_TRUE(IsWithinXmlLimits("<?xml version="));
  EXPECT_FALSE(IsWithinXmlLimits("<?xml encoding='&#85;TF-8' ?><Qen/>"));
}

TEST(XmlLimits, NothingIsReadBehindTextOutsideTheRoot) {
  EXPECT_TRUE(IsWithinXmlLimits("<Qen/> text " + Repeat("<e>", 300)));
  EXPECT_NE(EditFromXml("<Qen/> text " + Repeat("<e>", 300)), nullptr);
  EXPECT_FALSE(IsWithinXmlLimits("<Qen/> <!-- --> " + Repeat("<e>", 300)));
}

TEST(XmlLimits, AnUnquotedValueEndsAtASpaceASlashOrTheTag) {
  EXPECT_TRUE(IsWithinXmlLimits("<Qen a=" + Repeat("=", 100) + "/>"));
  EXPECT_TRUE(IsWithinXmlLimits("<Qen>" + Repeat("<e a=b/>", 300) + "</Qen>"));
  EXPECT_FALSE(IsWithinXmlLimits("<Qen>" + Repeat("<e a=b>", 300)));
  EXPECT_TRUE(IsWithinXmlLimits("<Qen><e a=b'" + Repeat(">", 300)));
}

TEST(XmlLimits, AnErrorTellsItsPlaceAndReason) {
  const std::optional<XmlError> nul = FindXmlLimitError(std::string_view("<Qen>\n  \0</Qen>", 15));
  ASSERT_TRUE(nul.has_value());
  EXPECT_EQ(nul->Line, 2U);
  EXPECT_EQ(nul->Column, 3U);
  EXPECT_FALSE(nul->Reason.empty());
  EXPECT_FALSE(FindXmlLimitError("<Qen/>").has_value());
}

TEST(XmlFile, AFileThatLoadsHasNoError) {
  const TempFile file(std::string_view("<Qen/>"));
  EXPECT_FALSE(FindXmlError(file.Path()).has_value());
}

TEST(XmlFile, AFileThatCannotBeReadHasAnErrorWithoutALine) {
  const std::optional<XmlError> error = FindXmlError("/nonexistent/file.xml");
  ASSERT_TRUE(error.has_value());
  EXPECT_EQ(error->Line, 0U);
  EXPECT_FALSE(error->Reason.empty());
}

TEST(XmlFile, AFileThatIsNoXmlHasAnErrorAtItsLine) {
  const TempFile file(std::string_view("<Qen>\n<a>\n</b>\n</Qen>"));
  const std::optional<XmlError> error = FindXmlError(file.Path());
  ASSERT_TRUE(error.has_value());
  EXPECT_GE(error->Line, 2U);
  EXPECT_FALSE(error->Reason.empty());
}

}  // namespace
}  // namespace qenzor::testing
