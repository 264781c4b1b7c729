#include "qenzor/zor/line_draw_info.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tests/support/chunk_io.h"
#include "tests/support/zor_bytes.h"
#include "tests/support/zor_xml.h"

namespace qenzor::testing {
namespace {

TEST(LineDrawInfo, ANewChunkHasAspectOneAndANewEditZero) {
  CLineDrawInfo info;
  EXPECT_EQ(info.LineCode, 0);
  EXPECT_EQ(info.Color, 0U);
  EXPECT_EQ(info.Aspect, 1.0F);
  EXPECT_TRUE(info.ScData.empty());
  CLineDrawInfoEdit edit;
  EXPECT_EQ(edit.LineCode, 0);
  EXPECT_EQ(edit.Color, 0U);
  EXPECT_EQ(edit.Aspect, 0.0F);
  EXPECT_EQ(ToChunk<CLineDrawInfo>(edit)->Aspect, 0.0F);
}

TEST(LineDrawInfo, ReadsAndWritesEveryField) {
  const Bytes bytes = {10,   0,    0,    0,    27,   0,    0,    0,      // header
                       200,  0x00, 0x00, 0xFF, 0x80,                     // code, colour
                       0x00, 0x00, 0xC0, 0x3F, 1,    0,                  // aspect 1.5, count
                       0x40, 0x42, 0x0F, 0x00, 0x10, 0x27, 0x00, 0x00,   // 1000000, 10000
                       0xFF, 0xFF, 0x00, 0x00, 0x00, 0xBF, 0x34, 0x12};  // width, -0.5, ext.
  for (const auto& info : {FromMemory<CLineDrawInfo>(bytes), FromFile<CLineDrawInfo>(bytes)}) {
    ASSERT_NE(info, nullptr);
    EXPECT_EQ(info->LineCode, 200);
    EXPECT_EQ(info->Color, 0x80FF0000);
    EXPECT_EQ(info->Aspect, 1.5F);
    ASSERT_EQ(info->ScData.size(), 1);
    EXPECT_EQ(info->ScData[0], (LineDrawScale{1000000, 10000, 65535, -0.5F, 0x1234}));
    EXPECT_EQ(Written(*info), bytes);
  }
}

TEST(LineDrawInfo, WithoutRecordsHasElevenBytesAndSixteenMoreForEach) {
  CLineDrawInfo info;
  for (const std::uint16_t count : std::initializer_list<std::uint16_t>{0, 1, 2, 65535}) {
    info.ScData.Reset(count);
    info.RecursiveReCalcDataSize();
    EXPECT_EQ(info.GetHeader().DataSize, 11U + 16U * count);
  }
}

TEST(LineDrawInfo, TwoRecordsNeedFortyThreeBytes) {
  const Bytes fixed = Bytes().U8(1).U32(2).F32(3).U16(2);
  const Bytes records(std::vector<std::uint8_t>(32, 0x11));
  const Bytes without = Chunk(10, fixed);
  const Bytes with = Chunk(10, Bytes(fixed).Add(records));
  ASSERT_EQ(without.size(), 8U + 11);
  ASSERT_EQ(with.size(), 8U + 43);
  EXPECT_EQ(FromMemory<CLineDrawInfo>(without), nullptr);
  EXPECT_EQ(FromFile<CLineDrawInfo>(without), nullptr);
  EXPECT_NE(FromMemory<CLineDrawInfo>(with), nullptr);
  EXPECT_NE(FromFile<CLineDrawInfo>(with), nullptr);
  // A data size of 11 fails even when the bytes of the records follow.
  EXPECT_EQ(FromMemory<CLineDrawInfo>(Bytes(without).Add(records)), nullptr);
  EXPECT_EQ(FromFile<CLineDrawInfo>(Bytes(without).Add(records)), nullptr);
}

TEST(LineDrawInfo, TheColourStandsInTheFileAsBlueGreenRedAlpha) {
  CLineDrawInfo info;
  info.Color = 0x80FF0000;
  const Bytes written = Written(info);
  EXPECT_EQ(std::vector<std::uint8_t>(written.data() + 9, written.data() + 13),
            (std::vector<std::uint8_t>{0x00, 0x00, 0xFF, 0x80}));
}

TEST(LineDrawInfo, NotANumberKeepsItsBits) {
  const Bytes bytes = Chunk(10, Bytes().U8(1).U32(2).U32(0x7FC00001).U16(0));
  const auto info = FromMemory<CLineDrawInfo>(bytes);
  ASSERT_NE(info, nullptr);
  ASSERT_TRUE(std::isnan(info->Aspect));
  EXPECT_EQ(Written(*info), bytes);
}

TEST(LineDrawInfo, TheEditTakesOverEveryField) {
  const auto info = FromMemory<CLineDrawInfo>(
      Chunk(10, Bytes().U8(1).U32(2).F32(3).U16(1).U32(4).U32(5).U16(6).F32(7).U16(8)));
  ASSERT_NE(info, nullptr);
  CLineDrawInfoEdit edit;
  edit.ChunkDataToEditData(info.get());
  EXPECT_EQ(edit.LineCode, 1);
  EXPECT_EQ(edit.Color, 2U);
  EXPECT_EQ(edit.Aspect, 3.0F);
  EXPECT_EQ(edit.ScData, (CList<LineDrawScale>{{4, 5, 6, 7, 8}}));
  edit.LineCode = 9;
  edit.Color = 10;
  edit.Aspect = 11;
  edit.ScData = {{1, 2, 3, 4, 5}, {6, 7, 8, 9, 10}};
  EXPECT_EQ(Written(*ToChunk<CLineDrawInfo>(edit)), Chunk(10, Bytes()
                                                                  .U8(9)
                                                                  .U32(10)
                                                                  .F32(11)
                                                                  .U16(2)
                                                                  .U32(1)
                                                                  .U32(2)
                                                                  .U16(3)
                                                                  .F32(4)
                                                                  .U16(5)
                                                                  .U32(6)
                                                                  .U32(7)
                                                                  .U16(8)
                                                                  .F32(9)
                                                                  .U16(10)));
}

TEST(LineDrawInfoText, WritesItsFieldsInOrder) {
  const auto info = FromMemory<CLineDrawInfo>(Chunk(
      10, Bytes().U8(200).U32(0x80FF0000).F32(0.1F).U16(1).U32(4).U32(5).U16(6).F32(-7.5F).U16(8)));
  ASSERT_NE(info, nullptr);
  EXPECT_EQ(XmlElement("LineDrawInfo", info.get(), 1),
            "\t<LineDrawInfo>\r\n"
            "\t\t<ComData>\r\n"
            "\t\t\t<LineCode>200</LineCode>\r\n"
            "\t\t\t<Color A=\"128\" R=\"255\" G=\"0\" B=\"0\" />\r\n"
            "\t\t\t<Aspect>0.1000000015</Aspect>\r\n"
            "\t\t</ComData>\r\n"
            "\t\t<ScData>\r\n"
            "\t\t\t<DenomMax>4</DenomMax>\r\n"
            "\t\t\t<DenomMin>5</DenomMin>\r\n"
            "\t\t\t<DenomMaxWidth>6</DenomMaxWidth>\r\n"
            "\t\t\t<Sensitivity>-7.5000000000</Sensitivity>\r\n"
            "\t\t\t<Extension>8</Extension>\r\n"
            "\t\t</ScData>\r\n"
            "\t</LineDrawInfo>\r\n");
}

/// The line draw info that common fields give.
std::unique_ptr<CLineDrawInfoEdit> FromCom(const std::string& content) {
  return DrawInfoFrom<CLineDrawInfo>("<ComData>" + content + "</ComData>");
}

/// The record that an element with this content gives.
LineDrawScale RecordFrom(const std::string& content) {
  const auto edit = DrawInfoFrom<CLineDrawInfo>("<ScData>" + content + "</ScData>");
  return edit->ScData.size() == 1 ? edit->ScData[0] : LineDrawScale{99, 99, 99, 99, 99};
}

TEST(LineDrawInfoText, ReadsEveryFieldInAnyOrder) {
  const auto edit =
      FromCom("<Aspect>1.5</Aspect><Color B='4' G='3' R='2' A='1'/><LineCode>7</LineCode>");
  EXPECT_EQ(edit->LineCode, 7);
  EXPECT_EQ(edit->Color, 0x01020304U);
  EXPECT_EQ(edit->Aspect, 1.5F);
  EXPECT_EQ(RecordFrom("<Extension>5</Extension><Sensitivity>4.5</Sensitivity>"
                       "<DenomMaxWidth>3</DenomMaxWidth><DenomMin>2</DenomMin>"
                       "<DenomMax>1</DenomMax>"),
            (LineDrawScale{1, 2, 3, 4.5F, 5}));
}

TEST(LineDrawInfoText, TheLaterCommonElementWinsFieldByField) {
  const auto edit = DrawInfoFrom<CLineDrawInfo>(
      "<ComData><LineCode>1</LineCode><Aspect>2</Aspect></ComData><ScData/>"
      "<ComData><LineCode>3</LineCode></ComData>");
  EXPECT_EQ(edit->LineCode, 3);
  EXPECT_EQ(edit->Aspect, 2.0F);
  EXPECT_EQ(edit->ScData.size(), 1U);
}

TEST(LineDrawInfoText, NumbersAreCutToTheirField) {
  EXPECT_EQ(FromCom("<LineCode>300</LineCode>")->LineCode, 44);
  EXPECT_EQ(FromCom("<LineCode>-1</LineCode>")->LineCode, 255);
  EXPECT_EQ(RecordFrom("<DenomMaxWidth>65537</DenomMaxWidth>").DenomMaxWidth, 1);
  EXPECT_EQ(RecordFrom("<DenomMaxWidth>-1</DenomMaxWidth>").DenomMaxWidth, 65535);
  EXPECT_EQ(RecordFrom("<Extension>70000</Extension>").Extension, 4464);
}

TEST(LineDrawInfoText, TextWithoutDigitsIsZero) {
  EXPECT_EQ(FromCom("<LineCode>5</LineCode><LineCode>words</LineCode>")->LineCode, 0);
  EXPECT_EQ(FromCom("<LineCode>5</LineCode><LineCode/>")->LineCode, 0);
  EXPECT_EQ(FromCom("<LineCode>5</LineCode><LineCode>0x10</LineCode>")->LineCode, 0);
  EXPECT_EQ(RecordFrom("<DenomMaxWidth/><Extension></Extension>"), LineDrawScale{});
}

TEST(LineDrawInfoText, MissingColourAttributesAreZeroAndAllAreCutToAByte) {
  EXPECT_EQ(FromCom("<Color A='1' R='2' G='3' B='4'/><Color G='5'/>")->Color, 0x00000500U);
  EXPECT_EQ(FromCom("<Color A='257' R='258' G='-1' B='300'/>")->Color, 0x0102FF2CU);
  EXPECT_EQ(FromCom("<Color a='1' r='2' g='3' b='4'/>")->Color, 0U);
  EXPECT_EQ(FromCom("<Color A='x' R='0x7' G=' 7' B='7x'/>")->Color, 0x00000707U);
  EXPECT_EQ(FromCom("<Color A='128' R='255' G='0' B='0'/>")->Color, 0x80FF0000U);
}

TEST(LineDrawInfoText, AFloatTextOfMoreThan63CharactersIsSkipped) {
  const std::string longest = "2." + std::string(61, '0');
  ASSERT_EQ(longest.size(), 63U);
  const auto aspect_of = [](const std::string& text) {
    return FromCom("<Aspect>1.5</Aspect><Aspect>" + text + "</Aspect>")->Aspect;
  };
  EXPECT_EQ(aspect_of("2"), 2.0F);
  EXPECT_EQ(aspect_of(longest), 2.0F);
  EXPECT_EQ(aspect_of(longest + "0"), 1.5F);
  EXPECT_EQ(aspect_of(std::string(1000, '1')), 1.5F);
  EXPECT_EQ(RecordFrom("<Sensitivity>" + longest + "</Sensitivity>").Sensitivity, 2.0F);
  EXPECT_EQ(RecordFrom("<Sensitivity>" + longest + "0</Sensitivity>").Sensitivity, 0.0F);
}

TEST(LineDrawInfoText, AnEmptyFloatTextIsSkippedAndOneWithoutDigitsIsZero) {
  EXPECT_EQ(FromCom("<Aspect>1.5</Aspect><Aspect/>")->Aspect, 1.5F);
  EXPECT_EQ(FromCom("<Aspect>1.5</Aspect><Aspect></Aspect>")->Aspect, 1.5F);
  EXPECT_EQ(FromCom("<Aspect>1.5</Aspect><Aspect><b>2</b></Aspect>")->Aspect, 1.5F);
  EXPECT_EQ(FromCom("<Aspect>1.5</Aspect><Aspect>words</Aspect>")->Aspect, 0.0F);
}

TEST(LineDrawInfoText, FieldsInTheOtherElementAreSkipped) {
  const auto edit = DrawInfoFrom<CLineDrawInfo>(
      "<ComData><DenomMax>1</DenomMax></ComData><ScData><LineCode>2</LineCode></ScData>");
  EXPECT_EQ(edit->LineCode, 0);
  EXPECT_EQ(edit->ScData, CList<LineDrawScale>{LineDrawScale{}});
}

}  // namespace
}  // namespace qenzor::testing
