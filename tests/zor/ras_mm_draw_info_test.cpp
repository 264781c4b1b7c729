#include "qenzor/zor/ras_mm_draw_info.h"

#include <gtest/gtest.h>

#include "tests/support/chunk_io.h"
#include "tests/support/zor_bytes.h"
#include "tests/support/zor_xml.h"

namespace qenzor::testing {
namespace {

// Its names and colours are tested with those of the other raster draw info.

TEST(RasMMDrawInfo, ReadsAndWritesEveryField) {
  const Bytes bytes = {17,   0,    0,    0,    26,   0,    0,    0,  // header
                       4,    0,    0xFF, 0xFE, 'a',  0,              // name
                       0x04, 0x03, 0x02, 0x01, 1,    0,              // colour, count
                       0x40, 0x42, 0x0F, 0x00, 0x10, 0x27, 0x00, 0x00,
                       0xFE, 0xFF, 0x00, 0x00, 0x00, 0xBF};  // width 65534, sensitivity -0.5
  for (const auto& info : {FromMemory<CRasMMDrawInfo>(bytes), FromFile<CRasMMDrawInfo>(bytes)}) {
    ASSERT_NE(info, nullptr);
    EXPECT_EQ(info->RasFileName, u"a");
    EXPECT_EQ(info->ColorKey, 0x01020304U);
    ASSERT_EQ(info->ScData.size(), 1);
    EXPECT_EQ(info->ScData[0], (RasMMDrawScale{1000000, 10000, 65534, -0.5F}));
    EXPECT_EQ(Written(*info), bytes);
  }
}

TEST(RasMMDrawInfo, ANameOfFiveCharactersAndOneRecordTake34Bytes) {
  CRasMMDrawInfo info;
  info.RasFileName = u"a.png";
  info.ScData.Reset(1);
  info.ScData[0] = {};
  const Bytes written = Written(info);
  EXPECT_EQ(info.GetHeader().DataSize, 34U);
  EXPECT_EQ(written.size(), 8U + 34);
  EXPECT_EQ(written.vector()[8], 12);
}

TEST(RasMMDrawInfo, TheEditTakesOverItsRecords) {
  CRasMMDrawInfoEdit edit;
  edit.ColorKey = 9;
  edit.ScData = {{1, 2, 3, 0.5F}};
  const auto chunk = ToChunk<CRasMMDrawInfo>(edit);
  EXPECT_EQ(Written(*chunk),
            Chunk(17, Bytes().U16(0).U32(9).U16(1).U32(1).U32(2).U16(3).F32(0.5F)));
  CRasMMDrawInfoEdit back;
  back.ChunkDataToEditData(chunk.get());
  EXPECT_EQ(back.ScData, edit.ScData);
}

TEST(RasMMDrawInfoText, WritesARecordInOrder) {
  CRasMMDrawInfo info;
  info.ScData.Reset(1);
  info.ScData[0] = {50000, 10, 65535, -0.5F};
  EXPECT_EQ(XmlElement("RasMMDrawInfo", &info),
            "<RasMMDrawInfo>\r\n"
            "\t<ComData>\r\n"
            "\t\t<RasFileName></RasFileName>\r\n"
            "\t\t<ColorKey A=\"0\" R=\"0\" G=\"0\" B=\"0\" />\r\n"
            "\t</ComData>\r\n"
            "\t<ScData>\r\n"
            "\t\t<DenomMax>50000</DenomMax>\r\n"
            "\t\t<DenomMin>10</DenomMin>\r\n"
            "\t\t<DenomMaxRasWidth>65535</DenomMaxRasWidth>\r\n"
            "\t\t<Sensitivity>-0.5000000000</Sensitivity>\r\n"
            "\t</ScData>\r\n"
            "</RasMMDrawInfo>\r\n");
}

/// The record that an element with this content gives.
RasMMDrawScale RecordFrom(const std::string& content) {
  return DrawInfoFrom<CRasMMDrawInfo>("<ScData>" + content + "</ScData>")->ScData.at(0);
}

TEST(RasMMDrawInfoText, AWidthIsKeptWithSixteenBits) {
  EXPECT_EQ(RecordFrom("<DenomMaxRasWidth>65538</DenomMaxRasWidth>").DenomMaxRasWidth, 2);
  EXPECT_EQ(RecordFrom("<DenomMaxRasWidth>-1</DenomMaxRasWidth>").DenomMaxRasWidth, 65535);
  EXPECT_EQ(RecordFrom("<Alpha>5</Alpha><DenomMaxRasWidth/>"), RasMMDrawScale{});
}

TEST(RasMMDrawInfoText, ASensitivityOfMoreThan63CharactersIsSkipped) {
  const std::string longest = "2." + std::string(61, '0');
  const auto sensitivity = [](const std::string& text) {
    return RecordFrom("<Sensitivity>1</Sensitivity><Sensitivity>" + text + "</Sensitivity>")
        .Sensitivity;
  };
  EXPECT_EQ(sensitivity(longest), 2.0F);
  EXPECT_EQ(sensitivity(longest + "0"), 1.0F);
  EXPECT_EQ(sensitivity(""), 1.0F);
}

}  // namespace
}  // namespace qenzor::testing
