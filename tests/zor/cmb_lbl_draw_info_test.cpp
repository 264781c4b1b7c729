#include "qenzor/zor/cmb_lbl_draw_info.h"

#include <gtest/gtest.h>

#include "tests/support/chunk_io.h"
#include "tests/support/zor_bytes.h"
#include "tests/support/zor_xml.h"

namespace qenzor::testing {
namespace {

/// A draw info with one record, of which only the shadow offset varies.
Bytes LabelInfoBytes(std::int32_t shadow_offset) {
  return Chunk(id::kCmbLblDrawInfo, Bytes()
                                        .U16(0x8003)
                                        .U32(4000000000)
                                        .U8(255)
                                        .U16(0xFFFE)
                                        .U8(6)
                                        .U32(0x01020304)
                                        .U32(0x05060708)
                                        .U32(0x80FF0000)
                                        .U16(1)
                                        .U32(50000)
                                        .U32(10)
                                        .F32(1.5F)
                                        .U16(11)
                                        .U16(12)
                                        .U16(65535)
                                        .I16(shadow_offset)
                                        .F32(-0.5F));
}

TEST(CmbLblDrawInfo, IsZeroThroughoutWhenConstructed) {
  CCmbLblDrawInfo info;
  EXPECT_EQ(Written(info), Chunk(id::kCmbLblDrawInfo, Bytes(std::vector<std::uint8_t>(24, 0x00))));
  CCmbLblDrawInfoEdit edit;
  EXPECT_EQ(Written(*ToChunk<CCmbLblDrawInfo>(edit)), Written(info));
}

TEST(CmbLblDrawInfo, ReadsAndWritesEveryField) {
  const Bytes bytes = LabelInfoBytes(-3);
  for (const auto& info : {FromMemory<CCmbLblDrawInfo>(bytes), FromFile<CCmbLblDrawInfo>(bytes)}) {
    ASSERT_NE(info, nullptr);
    EXPECT_EQ(info->CtrlFlgs, 0x8003);
    EXPECT_EQ(info->MarkDataIdx, 4000000000U);
    EXPECT_EQ(info->FontId, 255);
    EXPECT_EQ(info->FontCtrl, 0xFFFE);
    EXPECT_EQ(info->FrameCtrl, 6);
    EXPECT_EQ(info->FontColor, 0x01020304U);
    EXPECT_EQ(info->FrameColor, 0x05060708U);
    EXPECT_EQ(info->ShadowColor, 0x80FF0000U);
    ASSERT_EQ(info->ScData.size(), 1);
    EXPECT_EQ(info->ScData[0], (CmbLblDrawScale{50000, 10, 1.5F, 11, 12, 65535, -3, -0.5F}));
    EXPECT_EQ(Written(*info), bytes);
  }
}

TEST(CmbLblDrawInfo, WithoutRecordsHas24BytesAnd24MoreForEach) {
  CCmbLblDrawInfo info;
  info.RecursiveReCalcDataSize();
  EXPECT_EQ(info.GetHeader().DataSize, 24U);
  info.ScData.Reset(2);
  info.RecursiveReCalcDataSize();
  EXPECT_EQ(info.GetHeader().DataSize, 72U);
}

TEST(CmbLblDrawInfo, ControlFlagsTellWhatIsShown) {
  CCmbLblDrawInfo info;
  EXPECT_FALSE(info.IsShowLabel());
  EXPECT_FALSE(info.IsShowMark());
  info.CtrlFlgs = 1;
  EXPECT_TRUE(info.IsShowLabel());
  EXPECT_FALSE(info.IsShowMark());
  info.CtrlFlgs = 2;
  EXPECT_FALSE(info.IsShowLabel());
  EXPECT_TRUE(info.IsShowMark());
  info.CtrlFlgs = 3;
  EXPECT_TRUE(info.IsShowLabel());
  EXPECT_TRUE(info.IsShowMark());
  info.CtrlFlgs = 0xFFFC;
  EXPECT_FALSE(info.IsShowLabel());
  EXPECT_FALSE(info.IsShowMark());
}

TEST(CmbLblDrawInfo, TheLowestFontBitTellsShading) {
  CCmbLblDrawInfo info;
  info.FontCtrl = 0xFFFE;
  EXPECT_FALSE(info.IsLabelShaded());
  info.FontCtrl = 1;
  EXPECT_TRUE(info.IsLabelShaded());
}

TEST(CmbLblDrawInfo, TheFrameKindIsTheWholeByte) {
  CCmbLblDrawInfo info;
  for (const int kind : {0, 1, 128, 255}) {
    info.FrameCtrl = static_cast<std::uint8_t>(kind);
    EXPECT_EQ(static_cast<int>(info.GetFrameKind()), kind);
  }
}

TEST(CmbLblDrawInfo, AShadowOffsetOfMinusOneIsTwoBytesOfOnes) {
  const auto info = FromMemory<CCmbLblDrawInfo>(LabelInfoBytes(-1));
  ASSERT_NE(info, nullptr);
  EXPECT_EQ(info->ScData[0].DenomMaxShadowOffset, -1);
  const Bytes written = Written(*info);
  EXPECT_EQ(written.vector()[8 + 24 + 18], 0xFF);
  EXPECT_EQ(written.vector()[8 + 24 + 19], 0xFF);
}

TEST(CmbLblDrawInfo, TheEditTakesOverEveryField) {
  const auto info = FromMemory<CCmbLblDrawInfo>(LabelInfoBytes(-3));
  CCmbLblDrawInfoEdit edit;
  edit.ChunkDataToEditData(info.get());
  EXPECT_EQ(edit.CtrlFlgs, 0x8003);
  EXPECT_EQ(edit.MarkDataIdx, 4000000000U);
  EXPECT_EQ(edit.FontId, 255);
  EXPECT_EQ(edit.FontCtrl, 0xFFFE);
  EXPECT_EQ(edit.FrameCtrl, 6);
  EXPECT_EQ(edit.FontColor, 0x01020304U);
  EXPECT_EQ(edit.FrameColor, 0x05060708U);
  EXPECT_EQ(edit.ShadowColor, 0x80FF0000U);
  EXPECT_EQ(edit.ScData, (CList<CmbLblDrawScale>{{50000, 10, 1.5F, 11, 12, 65535, -3, -0.5F}}));
  edit.ScData[0].DenomMaxShadowOffset = 4;
  EXPECT_EQ(Written(*ToChunk<CCmbLblDrawInfo>(edit)), LabelInfoBytes(4));
}

TEST(CmbLblDrawInfoText, WritesItsFieldsInOrder) {
  const auto info = FromMemory<CCmbLblDrawInfo>(LabelInfoBytes(-1));
  EXPECT_EQ(XmlElement("CmbLblDrawInfo", info.get()),
            "<CmbLblDrawInfo>\r\n"
            "\t<ComData>\r\n"
            "\t\t<CtrlFlgs>32771</CtrlFlgs>\r\n"
            "\t\t<MarkDataIdx>4000000000</MarkDataIdx>\r\n"
            "\t\t<FontId>255</FontId>\r\n"
            "\t\t<FontCtrl>65534</FontCtrl>\r\n"
            "\t\t<FrameCtrl>6</FrameCtrl>\r\n"
            "\t\t<FontColor A=\"1\" R=\"2\" G=\"3\" B=\"4\" />\r\n"
            "\t\t<FrameColor A=\"5\" R=\"6\" G=\"7\" B=\"8\" />\r\n"
            "\t\t<ShadowColor A=\"128\" R=\"255\" G=\"0\" B=\"0\" />\r\n"
            "\t</ComData>\r\n"
            "\t<ScData>\r\n"
            "\t\t<DenomMax>50000</DenomMax>\r\n"
            "\t\t<DenomMin>10</DenomMin>\r\n"
            "\t\t<DenomMaxMarkScale>1.5000000000</DenomMaxMarkScale>\r\n"
            "\t\t<DenomMaxFontSize>11</DenomMaxFontSize>\r\n"
            "\t\t<DenomMaxFrameMgn>12</DenomMaxFrameMgn>\r\n"
            "\t\t<DenomMaxFrameWidth>65535</DenomMaxFrameWidth>\r\n"
            "\t\t<DenomMaxShadowOffset>-1</DenomMaxShadowOffset>\r\n"
            "\t\t<Sensitivity>-0.5000000000</Sensitivity>\r\n"
            "\t</ScData>\r\n"
            "</CmbLblDrawInfo>\r\n");
}

/// The draw info that common fields give.
std::unique_ptr<CCmbLblDrawInfoEdit> FromCom(const std::string& content) {
  return DrawInfoFrom<CCmbLblDrawInfo>("<ComData>" + content + "</ComData>");
}

/// The record that an element with this content gives.
CmbLblDrawScale RecordFrom(const std::string& content) {
  return DrawInfoFrom<CCmbLblDrawInfo>("<ScData>" + content + "</ScData>")->ScData.at(0);
}

TEST(CmbLblDrawInfoText, ReadsEveryFieldInAnyOrder) {
  const auto edit = DrawInfoFrom<CCmbLblDrawInfo>(
      "<ScData><Sensitivity>-0.5</Sensitivity><DenomMaxShadowOffset>-3</DenomMaxShadowOffset>"
      "<DenomMaxFrameWidth>65535</DenomMaxFrameWidth><DenomMaxFrameMgn>12</DenomMaxFrameMgn>"
      "<DenomMaxFontSize>11</DenomMaxFontSize><DenomMaxMarkScale>1.5</DenomMaxMarkScale>"
      "<DenomMin>10</DenomMin><DenomMax>50000</DenomMax></ScData>"
      "<ComData><ShadowColor A='128' R='255'/><FrameColor B='8' G='7' R='6' A='5'/>"
      "<FontColor A='1' R='2' G='3' B='4'/><FrameCtrl>6</FrameCtrl><FontCtrl>65534</FontCtrl>"
      "<FontId>255</FontId><MarkDataIdx>4000000000</MarkDataIdx><CtrlFlgs>32771</CtrlFlgs>"
      "</ComData>");
  EXPECT_EQ(Written(*ToChunk<CCmbLblDrawInfo>(*edit)), LabelInfoBytes(-3));
}

TEST(CmbLblDrawInfoText, NumbersAreCutToTheirField) {
  EXPECT_EQ(FromCom("<CtrlFlgs>65539</CtrlFlgs>")->CtrlFlgs, 3);
  EXPECT_EQ(FromCom("<FontId>257</FontId>")->FontId, 1);
  EXPECT_EQ(FromCom("<FontCtrl>-2</FontCtrl>")->FontCtrl, 0xFFFE);
  EXPECT_EQ(FromCom("<FrameCtrl>-1</FrameCtrl>")->FrameCtrl, 255);
  EXPECT_EQ(RecordFrom("<DenomMaxFontSize>65537</DenomMaxFontSize>").DenomMaxFontSize, 1);
  EXPECT_EQ(RecordFrom("<DenomMaxFrameMgn>-1</DenomMaxFrameMgn>").DenomMaxFrameMgn, 65535);
  EXPECT_EQ(RecordFrom("<DenomMaxFrameWidth>65538</DenomMaxFrameWidth>").DenomMaxFrameWidth, 2);
  EXPECT_EQ(RecordFrom("<DenomMaxShadowOffset>-2</DenomMaxShadowOffset>").DenomMaxShadowOffset, -2);
  EXPECT_EQ(RecordFrom("<DenomMaxShadowOffset>40000</DenomMaxShadowOffset>").DenomMaxShadowOffset,
            -25536);
}

TEST(CmbLblDrawInfoText, TheMarkIndexIsUnsignedAndSaturates) {
  EXPECT_EQ(FromCom("<MarkDataIdx>4294967295</MarkDataIdx>")->MarkDataIdx, 4294967295U);
  EXPECT_EQ(FromCom("<MarkDataIdx>4294967296</MarkDataIdx>")->MarkDataIdx, 4294967295U);
  EXPECT_EQ(FromCom("<MarkDataIdx>7</MarkDataIdx><MarkDataIdx/>")->MarkDataIdx, 0U);
}

TEST(CmbLblDrawInfoText, MissingColourAttributesAreZero) {
  const auto edit = FromCom("<FontColor R='1'/><FrameColor A='258' R='259'/><ShadowColor/>");
  EXPECT_EQ(edit->FontColor, 0x00010000U);
  EXPECT_EQ(edit->FrameColor, 0x02030000U);
  EXPECT_EQ(edit->ShadowColor, 0U);
}

TEST(CmbLblDrawInfoText, FloatTextsOfMoreThan63CharactersAreSkipped) {
  const std::string longest = "2." + std::string(61, '0');
  const auto scale = [](const std::string& text) {
    return RecordFrom("<DenomMaxMarkScale>" + text + "</DenomMaxMarkScale>").DenomMaxMarkScale;
  };
  EXPECT_EQ(scale(longest), 2.0F);
  EXPECT_EQ(scale(longest + "0"), 0.0F);
  const auto sensitivity = [](const std::string& text) {
    return RecordFrom("<Sensitivity>1</Sensitivity><Sensitivity>" + text + "</Sensitivity>")
        .Sensitivity;
  };
  EXPECT_EQ(sensitivity(longest), 2.0F);
  EXPECT_EQ(sensitivity(longest + "0"), 1.0F);
  EXPECT_EQ(sensitivity(""), 1.0F);
}

TEST(CmbLblDrawInfoText, ARecordWithOneFieldIsZeroElsewhere) {
  EXPECT_EQ(RecordFrom("<DenomMax>9</DenomMax>"), (CmbLblDrawScale{9, 0, 0, 0, 0, 0, 0, 0}));
}

}  // namespace
}  // namespace qenzor::testing
