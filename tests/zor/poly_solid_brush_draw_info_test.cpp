#include "qenzor/zor/poly_solid_brush_draw_info.h"

#include <gtest/gtest.h>

#include "tests/support/chunk_io.h"
#include "tests/support/zor_bytes.h"
#include "tests/support/zor_xml.h"

namespace qenzor::testing {
namespace {

TEST(PolySolidBrushDrawInfo, ReadsAndWritesEveryField) {
  const Bytes bytes = {12,   0,    0,    0,    22,   0,    0,    0,      // header
                       0x04, 0x03, 0x02, 0x01, 2,    0,                  // colour, count
                       0x40, 0x42, 0x0F, 0x00, 0x10, 0x27, 0x00, 0x00,   // 1000000, 10000
                       0x05, 0x00, 0x00, 0x00, 0xFF, 0xFF, 0xFF, 0xFF};  // 5, the greatest
  for (const auto& info :
       {FromMemory<CPolySolidBrushDrawInfo>(bytes), FromFile<CPolySolidBrushDrawInfo>(bytes)}) {
    ASSERT_NE(info, nullptr);
    EXPECT_EQ(info->Color, 0x01020304U);
    ASSERT_EQ(info->ScData.size(), 2);
    EXPECT_EQ(info->ScData[0], (PolySolidBrushDrawScale{1000000, 10000}));
    EXPECT_EQ(info->ScData[1], (PolySolidBrushDrawScale{5, 4294967295U}));
    EXPECT_EQ(Written(*info), bytes);
  }
}

TEST(PolySolidBrushDrawInfo, WithoutRecordsHasSixBytesAndEightMoreForEach) {
  CPolySolidBrushDrawInfo info;
  EXPECT_EQ(info.Color, 0U);
  info.RecursiveReCalcDataSize();
  EXPECT_EQ(info.GetHeader().DataSize, 6U);
  info.ScData.Reset(3);
  info.RecursiveReCalcDataSize();
  EXPECT_EQ(info.GetHeader().DataSize, 30U);
}

TEST(PolySolidBrushDrawInfo, TheEditTakesOverEveryField) {
  const auto info = FromMemory<CPolySolidBrushDrawInfo>(SolidBrushBytes(0x11223344));
  ASSERT_NE(info, nullptr);
  CPolySolidBrushDrawInfoEdit edit;
  EXPECT_EQ(edit.Color, 0U);
  edit.ChunkDataToEditData(info.get());
  EXPECT_EQ(edit.Color, 0x11223344U);
  EXPECT_EQ(edit.ScData, (CList<PolySolidBrushDrawScale>{{50000, 10}}));
  edit.Color = 5;
  edit.ScData.clear();
  EXPECT_EQ(Written(*ToChunk<CPolySolidBrushDrawInfo>(edit)), Chunk(12, Bytes().U32(5).U16(0)));
}

TEST(PolySolidBrushDrawInfoText, WritesItsFieldsInOrder) {
  const auto info = FromMemory<CPolySolidBrushDrawInfo>(SolidBrushBytes(0x80FF0001));
  EXPECT_EQ(XmlElement("PolySolidBrushDrawInfo", info.get()),
            "<PolySolidBrushDrawInfo>\r\n"
            "\t<ComData>\r\n"
            "\t\t<Color A=\"128\" R=\"255\" G=\"0\" B=\"1\" />\r\n"
            "\t</ComData>\r\n"
            "\t<ScData>\r\n"
            "\t\t<DenomMax>50000</DenomMax>\r\n"
            "\t\t<DenomMin>10</DenomMin>\r\n"
            "\t</ScData>\r\n"
            "</PolySolidBrushDrawInfo>\r\n");
}

TEST(PolySolidBrushDrawInfoText, MissingColourAttributesAreZeroAndAllAreCutToAByte) {
  const auto color_of = [](const std::string& element) {
    return DrawInfoFrom<CPolySolidBrushDrawInfo>("<ComData>" + element + "</ComData>")->Color;
  };
  EXPECT_EQ(color_of("<Color A='1' R='2' G='3' B='4'/>"), 0x01020304U);
  EXPECT_EQ(color_of("<Color R='9'/>"), 0x00090000U);
  EXPECT_EQ(color_of("<Color A='511' R='511' G='511' B='511'/>"), 0xFFFFFFFFU);
  EXPECT_EQ(color_of("<ShadowColor A='1' R='2' G='3' B='4'/>"), 0U);
}

}  // namespace
}  // namespace qenzor::testing
