// XML that is checked in another encoding, and what XML in that encoding keeps.

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/check_kinds.h"
#include "tests/support/findings.h"
#include "tests/support/good_xml.h"
#include "tests/support/qen_bytes.h"
#include "tests/support/zor_bytes.h"

namespace {

using namespace qenzor;
using namespace qenzor::testing;

std::string MapWithText(const std::string& declared, const std::string& text) {
  std::string xml = kGoodMapXml;
  xml.replace(xml.find("Shift_JIS"), 9, declared);
  const std::string piece = "a&amp;nbsp;b";
  return xml.replace(xml.find(piece), piece.size(), text);
}

std::vector<std::string> CodesOf(const std::string& xml, BinaryKind kind, XmlEncoding encoding) {
  FoundSink sink;
  CheckOptions options;
  options.Encoding = encoding;
  CheckXml(xml, kind, options, sink);
  std::vector<std::string> codes;
  for (const Found& found : sink.All) codes.push_back(found.Code);
  return codes;
}
using Codes = std::vector<std::string>;

constexpr const char* kUtf8 = "\xC3\xB4\xE3\x81\x82";  // two characters, one not in code page 932

TEST(CheckEncoding, Utf8IsReadWhereItIsAskedForOrDeclared) {
  for (const XmlEncoding encoding : {XmlEncoding::kUtf8, XmlEncoding::kAuto})
    EXPECT_EQ(CodesOf(MapWithText("UTF-8", kUtf8), BinaryKind::kQen, encoding), Codes{});
  const Codes as_shift_jis = CodesOf(MapWithText("utf-8", kUtf8), BinaryKind::kQen, {});
  EXPECT_EQ(std::ranges::count(as_shift_jis, "Q1035"), 1);
  EXPECT_EQ(std::ranges::count(as_shift_jis, "Q1036"), 1);
  EXPECT_EQ(CodesOf(MapWithText("Shift_JIS", "\x82\xA0"), BinaryKind::kQen, XmlEncoding::kAuto),
            Codes{});
}

TEST(CheckEncoding, ADeclarationThatIsNotFollowedIsFound) {
  EXPECT_EQ(CodesOf(MapWithText("Shift_JIS", "a"), BinaryKind::kQen, XmlEncoding::kUtf8),
            Codes{"Q1035"});
  EXPECT_EQ(CodesOf(MapWithText("ISO-8859-1", "a"), BinaryKind::kQen, XmlEncoding::kAuto),
            Codes{"Q1035"});
}

TEST(CheckEncoding, BytesThatAreNoCharacterAreFoundInEither) {
  EXPECT_EQ(CodesOf(MapWithText("UTF-8", "a\xFF"), BinaryKind::kQen, XmlEncoding::kUtf8),
            Codes{"Q1037"});
  EXPECT_EQ(CodesOf(MapWithText("UTF-8", "a\xEF\xBF\xBD"), BinaryKind::kQen, XmlEncoding::kUtf8),
            Codes{});
  EXPECT_EQ(CodesOf(MapWithText("UTF-8", "a&#12354;"), BinaryKind::kQen, XmlEncoding::kUtf8),
            Codes{});
}

/// Draw data with one raster of that name.
Bytes DrawingOf(std::u16string_view name) {
  const Bytes raster = Chunk(id::kRasLLDrawInfo, Bytes().Text(name).U32(0).U16(0));
  return GoodZorInfo().Add(DrawDataBytes(
      {SetChunk(id::kDrawAtterSet, {AtterBytes(7, {0})}), SetChunk(id::kDrawInfoSet, {raster})}));
}

TEST(CheckEncoding, AFileNameStaysInTheCodePage) {
  const Bytes drawing = DrawingOf(u"\u00F4.png");
  CZor document;
  ASSERT_TRUE(document.Read(drawing.data(), drawing.size()));
  const auto xml = ZorToXml(document, XmlEncoding::kUtf8);
  EXPECT_EQ(CodesOf(*xml, BinaryKind::kZor, XmlEncoding::kUtf8), Codes{"Q1058"});
}

Codes RoundTripCodesOf(const Bytes& bytes, BinaryKind kind, XmlEncoding encoding) {
  CheckOptions options;
  options.RoundTrip = true;
  options.Encoding = encoding;
  Codes codes;
  for (const Found& found : FindingsOf(bytes, kind, options))
    codes.push_back(found.Code + ' ' + std::to_string(found.Offset));
  return codes;
}

TEST(CheckEncoding, WhatShiftJisLacksIsLostByTheCharacterAndUtf8KeepsIt) {
  const Bytes map = GoodQenInfo().Add(MapDataBytes({LabelBytes(u"a\u00F4\u3042\U0001F600")}));
  // The label begins at 134; its text's units stand behind 18 bytes of fields, count and mark.
  EXPECT_EQ(RoundTripCodesOf(map, BinaryKind::kQen, XmlEncoding::kShiftJis),
            (Codes{"Q1091 166", "Q1091 170"}));
  EXPECT_EQ(RoundTripCodesOf(map, BinaryKind::kQen, XmlEncoding::kUtf8), Codes{});
  EXPECT_EQ(RoundTripCodesOf(DrawingOf(u"\u00F4.png"), BinaryKind::kZor, XmlEncoding::kUtf8).size(),
            1U);
}

TEST(ImageCheck, AnImageThatIsNotThereIsANote) {
  CheckOptions options;
  options.HasImage = [](const CString& name) { return name == "here.png"; };
  const auto found = [&](std::u16string_view name) {
    FoundSink sink;
    const Bytes bytes = DrawingOf(name);
    CheckBinary({bytes.data(), bytes.size()}, BinaryKind::kZor, options, sink);
    return sink.Reasons;
  };
  EXPECT_EQ(found(u"here.png"), Codes{});
  EXPECT_EQ(found(u"C:\\maps\\here.png"), Codes{});
  EXPECT_EQ(found(u"images/there.png"), Codes{"the image there.png is missing"});
  EXPECT_EQ(found(u""), Codes{"RasFileName names no image"});
  EXPECT_EQ(FindFindingKind("image-missing")->Severity, Severity::kNote);
}

}  // namespace
