#include "qenzor/zor/poly_shadow_draw_info.h"

#include <gtest/gtest.h>

#include "tests/support/chunk_io.h"
#include "tests/support/zor_bytes.h"
#include "tests/support/zor_xml.h"

namespace qenzor::testing {
namespace {

Bytes ShadowBytes(std::int32_t x, std::int32_t y) {
  return Chunk(id::kPolyShadowDrawInfo,
               Bytes().U32(0x80FF0001).U16(1).U32(50000).U32(10).I16(x).I16(y).F32(0.5F));
}

TEST(PolyShadowDrawInfo, ReadsAndWritesEveryField) {
  const Bytes bytes = {14,   0,    0,    0,    22,   0,    0,    0,      // header
                       0x04, 0x03, 0x02, 0x01, 1,    0,                  // colour, count
                       0x40, 0x42, 0x0F, 0x00, 0x10, 0x27, 0x00, 0x00,   // 1000000, 10000
                       0xFD, 0xFF, 0x05, 0x00, 0x00, 0x00, 0x00, 0xBF};  // (-3, 5), -0.5
  for (const auto& info :
       {FromMemory<CPolyShadowDrawInfo>(bytes), FromFile<CPolyShadowDrawInfo>(bytes)}) {
    ASSERT_NE(info, nullptr);
    EXPECT_EQ(info->ShadowColor, 0x01020304U);
    ASSERT_EQ(info->ScData.size(), 1);
    EXPECT_EQ(info->ScData[0], (PolyShadowDrawScale{1000000, 10000, {-3, 5}, -0.5F}));
    EXPECT_EQ(Written(*info), bytes);
  }
}

TEST(PolyShadowDrawInfo, WithoutRecordsHasSixBytesAndSixteenMoreForEach) {
  CPolyShadowDrawInfo info;
  EXPECT_EQ(info.ShadowColor, 0U);
  info.RecursiveReCalcDataSize();
  EXPECT_EQ(info.GetHeader().DataSize, 6U);
  info.ScData.Reset(2);
  info.RecursiveReCalcDataSize();
  EXPECT_EQ(info.GetHeader().DataSize, 38U);
}

TEST(PolyShadowDrawInfo, OffsetsReachToTheEdgesOfSixteenBits) {
  const Bytes bytes = ShadowBytes(-32768, 32767);
  const auto info = FromFile<CPolyShadowDrawInfo>(bytes);
  ASSERT_NE(info, nullptr);
  EXPECT_EQ(info->ScData[0].DenomMaxOffset, (CPoint16{-32768, 32767}));
  EXPECT_EQ(Written(*info), bytes);
}

TEST(PolyShadowDrawInfo, TheEditTakesOverEveryField) {
  const auto info = FromMemory<CPolyShadowDrawInfo>(ShadowBytes(-3, 5));
  ASSERT_NE(info, nullptr);
  CPolyShadowDrawInfoEdit edit;
  EXPECT_EQ(edit.ShadowColor, 0U);
  edit.ChunkDataToEditData(info.get());
  EXPECT_EQ(edit.ShadowColor, 0x80FF0001U);
  EXPECT_EQ(edit.ScData, (CList<PolyShadowDrawScale>{{50000, 10, {-3, 5}, 0.5F}}));
  edit.ScData[0].DenomMaxOffset = {7, -8};
  EXPECT_EQ(Written(*ToChunk<CPolyShadowDrawInfo>(edit)), ShadowBytes(7, -8));
}

TEST(PolyShadowDrawInfoText, WritesItsFieldsInOrder) {
  const auto info = FromMemory<CPolyShadowDrawInfo>(ShadowBytes(-3, 5));
  EXPECT_EQ(XmlElement("PolyShadowDrawInfo", info.get()),
            "<PolyShadowDrawInfo>\r\n"
            "\t<ComData>\r\n"
            "\t\t<ShadowColor A=\"128\" R=\"255\" G=\"0\" B=\"1\" />\r\n"
            "\t</ComData>\r\n"
            "\t<ScData>\r\n"
            "\t\t<DenomMax>50000</DenomMax>\r\n"
            "\t\t<DenomMin>10</DenomMin>\r\n"
            "\t\t<DenomMaxOffset x=\"-3\" y=\"5\" />\r\n"
            "\t\t<Sensitivity>0.5000000000</Sensitivity>\r\n"
            "\t</ScData>\r\n"
            "</PolyShadowDrawInfo>\r\n");
}

TEST(PolyShadowDrawInfoText, OnlyItsOwnColourIsTaken) {
  const auto edit = DrawInfoFrom<CPolyShadowDrawInfo>(
      "<ComData><ShadowColor A='257' R='1' B='-1'/><Color A='9' R='9' G='9' B='9'/></ComData>");
  EXPECT_EQ(edit->ShadowColor, 0x010100FFU);
}

/// The record that an element with this content gives.
PolyShadowDrawScale RecordFrom(const std::string& content) {
  return DrawInfoFrom<CPolyShadowDrawInfo>("<ScData>" + content + "</ScData>")->ScData.at(0);
}

TEST(PolyShadowDrawInfoText, AMissingOffsetAttributeIsZero) {
  EXPECT_EQ(RecordFrom("<DenomMaxOffset x='3'/>").DenomMaxOffset, (CPoint16{3, 0}));
  EXPECT_EQ(RecordFrom("<DenomMaxOffset y='3'/>").DenomMaxOffset, (CPoint16{0, 3}));
  EXPECT_EQ(RecordFrom("<DenomMaxOffset x='3' y='4'/><DenomMaxOffset/>").DenomMaxOffset,
            (CPoint16{0, 0}));
  EXPECT_EQ(RecordFrom("<DenomMaxOffset X='3' Y='4'/>").DenomMaxOffset, (CPoint16{0, 0}));
}

TEST(PolyShadowDrawInfoText, OffsetsAreCutToSixteenBits) {
  EXPECT_EQ(RecordFrom("<DenomMaxOffset x='32768' y='-65537'/>").DenomMaxOffset,
            (CPoint16{-32768, -1}));
}

TEST(PolyShadowDrawInfoText, ASensitivityOfMoreThan63CharactersIsSkipped) {
  const std::string longest = "2." + std::string(61, '0');
  EXPECT_EQ(RecordFrom("<Sensitivity>" + longest + "</Sensitivity>").Sensitivity, 2.0F);
  EXPECT_EQ(RecordFrom("<Sensitivity>1</Sensitivity><Sensitivity>" + longest + "0</Sensitivity>")
                .Sensitivity,
            1.0F);
  EXPECT_EQ(RecordFrom("<Sensitivity>1</Sensitivity><Sensitivity/>").Sensitivity, 1.0F);
}

}  // namespace
}  // namespace qenzor::testing
