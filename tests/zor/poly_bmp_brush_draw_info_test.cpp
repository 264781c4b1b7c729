#include "qenzor/zor/poly_bmp_brush_draw_info.h"

#include <gtest/gtest.h>

#include "tests/support/chunk_io.h"
#include "tests/support/zor_bytes.h"
#include "tests/support/zor_xml.h"

namespace qenzor::testing {
namespace {

/// A bitmap brush of this name block and one record.
Bytes BrushBytes(const Bytes& name) {
  return Chunk(id::kPolyBmpBrushDrawInfo, Bytes(name).U16(1).U32(50000).U32(10));
}

Bytes BrushBytes(std::u16string_view name) { return BrushBytes(Bytes().Text(name)); }

void ExpectName(const Bytes& bytes, const CStringW& name, const Bytes& written) {
  for (const auto& info :
       {FromMemory<CPolyBmpBrushDrawInfo>(bytes), FromFile<CPolyBmpBrushDrawInfo>(bytes)}) {
    ASSERT_NE(info, nullptr);
    EXPECT_EQ(info->BrushFileName, name);
    ASSERT_EQ(info->ScData.size(), 1);
    EXPECT_EQ(info->ScData[0], (PolyBmpBrushDrawScale{50000, 10}));
    EXPECT_EQ(Written(*info), written);
  }
}

TEST(PolyBmpBrushDrawInfo, WithoutNameAndRecordsIsFourZeroBytes) {
  CPolyBmpBrushDrawInfo info;
  EXPECT_EQ(Written(info), (Bytes{27, 0, 0, 0, 4, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(PolyBmpBrushDrawInfo, ANameOfFiveCharactersTakesSixteenBytesOfData) {
  CPolyBmpBrushDrawInfo info;
  info.BrushFileName = u"a.bmp";
  EXPECT_EQ(Written(info), (Bytes{27,  0, 0,   0, 16,  0, 0,   0, 12,  0, 0xFF, 0xFE,
                                  'a', 0, '.', 0, 'b', 0, 'm', 0, 'p', 0, 0,    0}));
}

TEST(PolyBmpBrushDrawInfo, ReadsNamesInBothByteOrders) {
  ExpectName(BrushBytes(u"\u5730\u56F3.bmp"), u"\u5730\u56F3.bmp", BrushBytes(u"\u5730\u56F3.bmp"));
  ExpectName(BrushBytes(Bytes().SwappedText(u"\u5730\u56F3.bmp")), u"\u5730\u56F3.bmp",
             BrushBytes(u"\u5730\u56F3.bmp"));
}

TEST(PolyBmpBrushDrawInfo, AnUnknownMarkGivesAnEmptyNameNotAnError) {
  ExpectName(BrushBytes(Bytes().U16(6).U16(0x1234).U16('a').U16('b')), u"", BrushBytes(u""));
}

TEST(PolyBmpBrushDrawInfo, ANameBlockTooShortForAMarkIsEmpty) {
  ExpectName(BrushBytes(Bytes().U16(0)), u"", BrushBytes(u""));
  ExpectName(BrushBytes(Bytes().U16(1).U8(0xFF)), u"", BrushBytes(u""));
}

TEST(PolyBmpBrushDrawInfo, AMarkAloneIsAnEmptyName) {
  ExpectName(BrushBytes(Bytes().U16(2).U16(0xFEFF)), u"", BrushBytes(u""));
}

TEST(PolyBmpBrushDrawInfo, ANameEndsAtItsFirstZero) {
  ExpectName(BrushBytes(Bytes().U16(8).U16(0xFEFF).U16('a').U16(0).U16('b')), u"a",
             BrushBytes(u"a"));
}

TEST(PolyBmpBrushDrawInfo, ReadsANameOf31Characters) {
  const CStringW name(31, u'n');
  ExpectName(BrushBytes(name), name, BrushBytes(name));
  ExpectName(BrushBytes(Bytes().SwappedText(name)), name, BrushBytes(name));
}

TEST(PolyBmpBrushDrawInfo, ANameBlockOfMoreThan64BytesIsRefused) {
  const Bytes block_of_65 = Bytes().U16(65).U16(0xFEFF).Add(std::string(63, 'n'));
  for (const Bytes& name :
       {block_of_65, Bytes().Text(CStringW(32, u'n')), Bytes().Text(CStringW(32766, u'n'))}) {
    EXPECT_EQ(FromMemory<CPolyBmpBrushDrawInfo>(BrushBytes(name)), nullptr);
    EXPECT_EQ(FromFile<CPolyBmpBrushDrawInfo>(BrushBytes(name)), nullptr);
  }
}

TEST(PolyBmpBrushDrawInfo, ALongerNameIsWrittenWhole) {
  CPolyBmpBrushDrawInfo info;
  info.BrushFileName = CStringW(32, u'n');
  EXPECT_EQ(Written(info), Chunk(27, Bytes().Text(CStringW(32, u'n')).U16(0)));
}

TEST(PolyBmpBrushDrawInfo, TheEditHoldsTheNameInTheCodePage) {
  const auto info = FromMemory<CPolyBmpBrushDrawInfo>(BrushBytes(u"\u5730\uFF71\u00E9"));
  CPolyBmpBrushDrawInfoEdit edit;
  EXPECT_EQ(edit.BrushFileName, "");
  edit.ChunkDataToEditData(info.get());
  EXPECT_EQ(edit.BrushFileName, "\x92\x6E\xB1?");
  EXPECT_EQ(edit.ScData, (CList<PolyBmpBrushDrawScale>{{50000, 10}}));
  EXPECT_EQ(Written(*ToChunk<CPolyBmpBrushDrawInfo>(edit)), BrushBytes(u"\u5730\uFF71?"));
  edit.BrushFileName = "\x95\x5C.bmp";
  EXPECT_EQ(ToChunk<CPolyBmpBrushDrawInfo>(edit)->BrushFileName, u"\u8868.bmp");
}

TEST(PolyBmpBrushDrawInfo, ReleaseKeepsTheName) {
  const auto info = FromMemory<CPolyBmpBrushDrawInfo>(BrushBytes(u"a.bmp"));
  CPolyBmpBrushDrawInfoEdit edit;
  edit.ChunkDataToEditData(info.get());
  edit.Release();
  EXPECT_EQ(edit.BrushFileName, "a.bmp");
}

TEST(PolyBmpBrushDrawInfoText, WritesItsFieldsInOrderWithTheNameEscaped) {
  const auto info = FromMemory<CPolyBmpBrushDrawInfo>(BrushBytes(u"a b<&>\"'\n\u5730"));
  EXPECT_EQ(XmlElement("PolyBmpBrushDrawInfo", info.get()),
            "<PolyBmpBrushDrawInfo>\r\n"
            "\t<ComData>\r\n"
            "\t\t<BrushFileName>a&amp;nbsp;b&lt;&amp;&gt;&quot;&apos;&lt;br /&gt;\x92\x6E"
            "</BrushFileName>\r\n"
            "\t</ComData>\r\n"
            "\t<ScData>\r\n"
            "\t\t<DenomMax>50000</DenomMax>\r\n"
            "\t\t<DenomMin>10</DenomMin>\r\n"
            "\t</ScData>\r\n"
            "</PolyBmpBrushDrawInfo>\r\n");
}

/// The name that an element with this text gives.
CString NameFrom(const std::string& content) {
  return DrawInfoFrom<CPolyBmpBrushDrawInfo>("<ComData>" + content + "</ComData>")->BrushFileName;
}

TEST(PolyBmpBrushDrawInfoText, TakesTheNameAsItStands) {
  EXPECT_EQ(NameFrom("<BrushFileName>\x92\x6E.bmp</BrushFileName>"), "\x92\x6E.bmp");
  EXPECT_EQ(NameFrom("<BrushFileName>a&amp;nbsp;b&lt;br /&gt;</BrushFileName>"), "a&nbsp;b<br />");
}

TEST(PolyBmpBrushDrawInfoText, AnElementWithoutTextEmptiesTheName) {
  EXPECT_EQ(NameFrom("<BrushFileName>a</BrushFileName><BrushFileName/>"), "");
  EXPECT_EQ(NameFrom("<BrushFileName>a</BrushFileName><BrushFileName><b/>c</BrushFileName>"), "");
}

TEST(PolyBmpBrushDrawInfoText, OtherTagsAreSkipped) {
  EXPECT_EQ(NameFrom("<BrushFileName>a</BrushFileName><RasFileName>b</RasFileName>"
                     "<brushfilename>c</brushfilename>"),
            "a");
}

}  // namespace
}  // namespace qenzor::testing
