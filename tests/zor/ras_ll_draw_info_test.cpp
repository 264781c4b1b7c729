#include "qenzor/zor/ras_ll_draw_info.h"

#include <gtest/gtest.h>

#include "tests/support/chunk_io.h"
#include "tests/support/zor_bytes.h"
#include "tests/support/zor_xml.h"

namespace qenzor::testing {
namespace {

// Its names and colours are tested with those of the other raster draw info.

TEST(RasLLDrawInfo, ReadsAndWritesEveryField) {
  const Bytes bytes = {15,   0,    0,    0,    30,   0,    0,    0,            // header
                       4,    0,    0xFF, 0xFE, 'a',  0,                        // name
                       0x04, 0x03, 0x02, 0x01, 2,    0,                        // colour, count
                       0x40, 0x42, 0x0F, 0x00, 0x10, 0x27, 0x00, 0x00, 255,    // 1000000, 10000
                       0xFF, 0xFF, 0xFF, 0xFF, 0x05, 0x00, 0x00, 0x00, 0x80};  // the greatest, 5
  for (const auto& info : {FromMemory<CRasLLDrawInfo>(bytes), FromFile<CRasLLDrawInfo>(bytes)}) {
    ASSERT_NE(info, nullptr);
    EXPECT_EQ(info->RasFileName, u"a");
    EXPECT_EQ(info->ColorKey, 0x01020304U);
    ASSERT_EQ(info->ScData.size(), 2);
    EXPECT_EQ(info->ScData[0], (RasLLDrawScale{1000000, 10000, 255}));
    EXPECT_EQ(info->ScData[1], (RasLLDrawScale{4294967295U, 5, 128}));
    EXPECT_EQ(Written(*info), bytes);
  }
}

TEST(RasLLDrawInfo, WithoutNameAndWithTwoRecordsHas26BytesWhateverItsColour) {
  for (const std::uint32_t color : {0U, 0x01020304U, 0xFFFFFFFFU}) {
    CRasLLDrawInfo info;
    info.ColorKey = color;
    info.ScData.Reset(2);
    info.RecursiveReCalcDataSize();
    EXPECT_EQ(info.GetHeader().DataSize, 26U);
  }
}

TEST(RasLLDrawInfo, TheEditTakesOverItsRecords) {
  CRasLLDrawInfoEdit edit;
  edit.RasFileName = "a";
  edit.ScData = {{1, 2, 3}, {4, 5, 6}};
  const auto chunk = ToChunk<CRasLLDrawInfo>(edit);
  EXPECT_EQ(Written(*chunk),
            Chunk(15, Bytes().Text(u"a").U32(0).U16(2).U32(1).U32(2).U8(3).U32(4).U32(5).U8(6)));
  CRasLLDrawInfoEdit back;
  back.ChunkDataToEditData(chunk.get());
  EXPECT_EQ(back.ScData, edit.ScData);
}

TEST(RasLLDrawInfoText, WritesARecordInOrder) {
  CRasLLDrawInfo info;
  info.ScData.Reset(1);
  info.ScData[0] = {50000, 10, 200};
  EXPECT_EQ(XmlElement("RasLLDrawInfo", &info),
            "<RasLLDrawInfo>\r\n"
            "\t<ComData>\r\n"
            "\t\t<RasFileName></RasFileName>\r\n"
            "\t\t<ColorKey A=\"0\" R=\"0\" G=\"0\" B=\"0\" />\r\n"
            "\t</ComData>\r\n"
            "\t<ScData>\r\n"
            "\t\t<DenomMax>50000</DenomMax>\r\n"
            "\t\t<DenomMin>10</DenomMin>\r\n"
            "\t\t<Alpha>200</Alpha>\r\n"
            "\t</ScData>\r\n"
            "</RasLLDrawInfo>\r\n");
}

TEST(RasLLDrawInfoText, AnAlphaIsKeptWithEightBits) {
  const auto alpha_of = [](const std::string& content) {
    return DrawInfoFrom<CRasLLDrawInfo>("<ScData>" + content + "</ScData>")->ScData.at(0).Alpha;
  };
  EXPECT_EQ(alpha_of("<Alpha>200</Alpha>"), 200);
  EXPECT_EQ(alpha_of("<Alpha>300</Alpha>"), 44);
  EXPECT_EQ(alpha_of("<Alpha>-1</Alpha>"), 255);
  EXPECT_EQ(alpha_of("<Alpha>5</Alpha><Alpha/>"), 0);
  EXPECT_EQ(alpha_of("<DenomMaxRasWidth>5</DenomMaxRasWidth><alpha>5</alpha>"), 0);
}

}  // namespace
}  // namespace qenzor::testing
