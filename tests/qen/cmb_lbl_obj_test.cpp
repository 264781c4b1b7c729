#include "qenzor/qen/cmb_lbl_obj.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tests/support/chunk_io.h"
#include "tests/support/qen_bytes.h"
#include "tests/support/qen_xml.h"

namespace qenzor::testing {
namespace {

/// The 18 bytes in front of the text.
Bytes Front() { return Bytes().U16(0x8019).F32(1.5F).I16(3).I16(-4).F32(0.25F).F32(-2); }

Bytes LabelWith(const Bytes& text) { return Chunk(5, Front().Add(text)); }

TEST(CmbLblObj, IsEmptyWhenConstructed) {
  CCmbLblObj label;
  EXPECT_EQ(Written(label), Bytes().U32(5).U32(20).U64(0).U64(0).U32(0));
}

TEST(CmbLblObj, ReadsAndWritesEveryField) {
  const Bytes bytes = LabelWith(Bytes().Text(u"A\n\u5730"));
  for (const auto& label : {FromMemory<CCmbLblObj>(bytes), FromFile<CCmbLblObj>(bytes)}) {
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(label->CtrlFlgs, 0x8019);
    EXPECT_EQ(label->Angle, 1.5F);
    EXPECT_EQ(label->Pt, (CPoint{3, -4}));
    EXPECT_EQ(label->LblOffsetFontRate, 0.25F);
    EXPECT_EQ(label->LblOffsetAngle, -2.0F);
    EXPECT_EQ(label->Text, u"A\n\u5730");
    EXPECT_EQ(Written(*label), bytes);
    EXPECT_EQ(label->GetHeader().DataSize, 3U * 2 + 22);
  }
}

TEST(CmbLblObj, AnEmptyTextIsAZeroCount) {
  const Bytes bytes = LabelWith(Bytes().U16(0));
  for (const auto& label : {FromMemory<CCmbLblObj>(bytes), FromFile<CCmbLblObj>(bytes)}) {
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(label->Text, u"");
    EXPECT_EQ(Written(*label), bytes);
    EXPECT_EQ(label->GetHeader().DataSize, 20U);
  }
}

TEST(CmbLblObj, ATextOfOneByteIsEmptyAndConsumesIt) {
  const Bytes bytes = LabelWith(Bytes().U16(1).U8(0xFF));
  EXPECT_EQ(bytes.size(), 8U + 21);
  for (const auto& label : {FromMemory<CCmbLblObj>(bytes), FromFile<CCmbLblObj>(bytes)}) {
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(label->Text, u"");
    EXPECT_EQ(Written(*label), LabelWith(Bytes().U16(0)));
  }
}

TEST(CmbLblObj, ABigEndianTextIsWrittenBackLittleEndian) {
  const Bytes bytes = LabelWith(Bytes().SwappedText(u"A\u5730"));
  for (const auto& label : {FromMemory<CCmbLblObj>(bytes), FromFile<CCmbLblObj>(bytes)}) {
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(label->Text, u"A\u5730");
    EXPECT_EQ(Written(*label), LabelWith(Bytes().Text(u"A\u5730")));
  }
}

TEST(CmbLblObj, AnotherMarkGivesAnEmptyTextNotAnError) {
  const Bytes bytes = LabelWith(Bytes().U16(4).U16(0x1234).U16('A'));
  for (const auto& label : {FromMemory<CCmbLblObj>(bytes), FromFile<CCmbLblObj>(bytes)}) {
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(label->Text, u"");
  }
}

TEST(CmbLblObj, ReadsTheLongestTextThatItsCountTells) {
  const CStringW text(32766, u'x');
  const Bytes bytes = LabelWith(Bytes().Text(text));
  for (const auto& label : {FromMemory<CCmbLblObj>(bytes), FromFile<CCmbLblObj>(bytes)}) {
    ASSERT_NE(label, nullptr);
    EXPECT_TRUE(label->Text == text);
    EXPECT_TRUE(Written(*label) == bytes);
  }
}

TEST(CmbLblObj, TheByteCountOfALongerTextWraps) {
  CCmbLblObj label;
  label.Text.assign(32767, u'x');
  const Bytes written = Written(label);
  EXPECT_EQ(written.size(), 8U + 32767 * 2 + 22);
  EXPECT_EQ(label.GetHeader().DataSize, 32767U * 2 + 22);
  EXPECT_EQ(written.vector()[8 + 18], 0);
  EXPECT_EQ(written.vector()[8 + 19], 0);
}

TEST(CmbLblObj, EveryMissingByteFails) {
  const Bytes whole = LabelWith(Bytes().Text(u"AB"));
  for (std::size_t size = 8; size < whole.size(); ++size) {
    EXPECT_EQ(FromMemory<CCmbLblObj>(whole.Front(size)), nullptr) << size;
    EXPECT_EQ(FromFile<CCmbLblObj>(whole.Front(size)), nullptr) << size;
  }
}

TEST(CmbLblObj, ItsDataSizeWithAnInfoSet) {
  const Bytes bytes = LabelBytes(u"ab", SetChunk(id::kAddedObjInfoSet, {}));
  const auto label = FromMemory<CCmbLblObj>(bytes);
  ASSERT_NE(label, nullptr);
  EXPECT_EQ(Written(*label), bytes);
  EXPECT_EQ(label->GetHeader().DataSize, 2U * 2 + 22 + 8 + 4);
}

TEST(CmbLblObj, PositionsAreCutToSixteenBitsOnWriting) {
  CCmbLblObj label;
  label.Pt = {32768, -32769};
  EXPECT_EQ(FromMemory<CCmbLblObj>(Written(label))->Pt, (CPoint{-32768, 32767}));
}

TEST(CmbLblObj, FlagsTellKindAlignAndSwitches) {
  CCmbLblObj label;
  label.CtrlFlgs = 0x0019;
  EXPECT_EQ(static_cast<int>(label.GetLabelOrgPosKind()), 9);
  EXPECT_EQ(static_cast<int>(label.GetLabelAlign()), 1);
  EXPECT_TRUE(label.IsFontVirtical());
  EXPECT_FALSE(label.IsRestrainShowLabel());
  EXPECT_FALSE(label.IsRestrainShowMark());
  label.CtrlFlgs = 0x0020;
  EXPECT_FALSE(label.IsFontVirtical());
  EXPECT_TRUE(label.IsRestrainShowLabel());
  label.CtrlFlgs = 0x0040;
  EXPECT_FALSE(label.IsRestrainShowLabel());
  EXPECT_TRUE(label.IsRestrainShowMark());
}

TEST(CmbLblObj, AlignFollowsFromTheKindAlone) {
  const int align[16] = {0, 0, 1, 2, 2, 2, 1, 0, 0, 1, 0, 0, 0, 0, 0, 0};
  for (int kind = 0; kind < 16; ++kind)
    for (const int rest : {0x0000, 0xFFF0}) {
      CCmbLblObj label;
      label.CtrlFlgs = static_cast<std::uint16_t>(rest | kind);
      EXPECT_EQ(static_cast<int>(label.GetLabelOrgPosKind()), kind);
      EXPECT_EQ(static_cast<int>(label.GetLabelAlign()), align[kind]) << kind;
    }
}

TEST(CmbLblObj, CloneAndEditRoundTripKeepEveryByte) {
  const Bytes bytes = LabelBytes(u"a b\nc", InfoSetBytes(u"url"));
  const auto label = FromMemory<CCmbLblObj>(bytes);
  EXPECT_EQ(Written(*ClonedFrom(*label), false), bytes);
  CCmbLblObjEdit edit;
  edit.ChunkDataToEditData(label.get());
  EXPECT_EQ(edit.Text, u"a b\nc");
  const std::unique_ptr<CAbstractChunkEdit> copy(edit.Clone());
  EXPECT_EQ(Written(*ToChunk<CCmbLblObj>(*copy)), bytes);
}

TEST(CmbLblObj, NotANumberKeepsItsBits) {
  Bytes bytes = LabelWith(Bytes().U16(0));
  bytes[8 + 2] = 0x01;
  bytes[8 + 5] = 0x7F;
  bytes[8 + 4] = 0xC0;
  const auto label = FromMemory<CCmbLblObj>(bytes);
  ASSERT_TRUE(std::isnan(label->Angle));
  EXPECT_EQ(Written(*label), bytes);
}

}  // namespace
}  // namespace qenzor::testing
