// What the seven kinds of draw info have in common: fields that hold at every scale, then records.

#include <gtest/gtest.h>

#include "tests/support/chunk_io.h"
#include "tests/support/class_names.h"
#include "tests/support/faulty_file.h"
#include "tests/support/zor_draw_infos.h"
#include "tests/support/zor_xml.h"

namespace qenzor::testing {
namespace {

template <class T>
class DrawInfo : public ::testing::Test {
 protected:
  using Edit = typename T::EditClass;
  using Sample = DrawInfoSample<T>;

  static std::unique_ptr<T> Sampled(const std::vector<std::uint32_t>& denoms) {
    return FromMemory<T>(DrawInfoBytes<T>(denoms));
  }
  static void Fill(Edit& edit, const std::vector<std::uint32_t>& denoms) {
    edit.ChunkDataToEditData(Sampled(denoms).get());
  }
  static Bytes Converted(Edit& edit) { return Written(*ToChunk<T>(edit)); }
};

TYPED_TEST_SUITE(DrawInfo, EveryDrawInfo, ClassNames);

TYPED_TEST(DrawInfo, AFreshOneHasNoRecords) {
  TypeParam info;
  EXPECT_EQ(info.GetHeader().ChunkId, DrawInfoSample<TypeParam>::kId);
  EXPECT_EQ(info.GetHeader().DataSize, 0U);
  EXPECT_EQ(Written(info), DrawInfoBytes<TypeParam>({}, DrawInfoSample<TypeParam>::FreshCom()));
}

TYPED_TEST(DrawInfo, AFreshEditGivesAChunkOfItsOwnDefaults) {
  typename TypeParam::EditClass edit;
  EXPECT_EQ(this->Converted(edit),
            DrawInfoBytes<TypeParam>({}, DrawInfoSample<TypeParam>::FreshEditCom()));
}

TYPED_TEST(DrawInfo, ReadsAndWritesEveryByteInBothPaths) {
  for (const Bytes& bytes : {DrawInfoBytes<TypeParam>({}), DrawInfoBytes<TypeParam>({9}),
                             DrawInfoBytes<TypeParam>({4000000000, 0, 9})})
    for (const auto& info : {FromMemory<TypeParam>(bytes), FromFile<TypeParam>(bytes)}) {
      ASSERT_NE(info, nullptr);
      EXPECT_EQ(Written(*info, false), bytes);
      EXPECT_EQ(Written(*info, true), bytes);
    }
}

TYPED_TEST(DrawInfo, RecordsKeepTheirOrderWhateverTheirRanges) {
  const auto info = this->Sampled({3, 1, 3, 2});
  ASSERT_NE(info, nullptr);
  ASSERT_EQ(info->ScData.size(), 4);
  EXPECT_EQ(info->ScData[0].DenomMax, 3U);
  EXPECT_EQ(info->ScData[1].DenomMax, 1U);
  EXPECT_EQ(info->ScData[2].DenomMax, 3U);
  EXPECT_EQ(info->ScData[3].DenomMax, 2U);
  EXPECT_EQ(info->ScData[0].DenomMin, 7U);
}

TYPED_TEST(DrawInfo, ReadsTheGreatestNumberOfRecords) {
  const Bytes bytes = DrawInfoBytes<TypeParam>(std::vector<std::uint32_t>(65535, 5));
  for (const auto& info : {FromMemory<TypeParam>(bytes), FromFile<TypeParam>(bytes)}) {
    ASSERT_NE(info, nullptr);
    EXPECT_EQ(info->ScData.size(), 65535);
    EXPECT_TRUE(Written(*info) == bytes);
  }
}

TYPED_TEST(DrawInfo, EveryMissingByteFailsInBothPaths) {
  const Bytes whole = DrawInfoBytes<TypeParam>({1, 2});
  for (std::size_t size = 0; size < whole.size(); ++size) {
    EXPECT_EQ(FromMemory<TypeParam>(whole.Front(size)), nullptr) << size;
    EXPECT_EQ(FromFile<TypeParam>(whole.Front(size)), nullptr) << size;
  }
}

TYPED_TEST(DrawInfo, ADataSizeSmallerThanTheRecordsNeedFails) {
  Bytes bytes = DrawInfoBytes<TypeParam>({1, 2});
  bytes[4] = static_cast<std::uint8_t>(bytes[4] - DrawInfoSample<TypeParam>::kRecordSize);
  EXPECT_EQ(FromMemory<TypeParam>(bytes), nullptr);
  EXPECT_EQ(FromFile<TypeParam>(bytes), nullptr);
}

TYPED_TEST(DrawInfo, SubChunksAreDropped) {
  Bytes bytes = DrawInfoBytes<TypeParam>({1}).Add(LineInfoBytes(2));
  bytes[4] = static_cast<std::uint8_t>(bytes[4] + LineInfoBytes(2).size());
  for (const auto& info : {FromMemory<TypeParam>(bytes), FromFile<TypeParam>(bytes)}) {
    ASSERT_NE(info, nullptr);
    EXPECT_EQ(Written(*info), DrawInfoBytes<TypeParam>({1}));
  }
}

TYPED_TEST(DrawInfo, ReadingAgainReplacesTheRecords) {
  const auto info = this->Sampled({1, 2, 3});
  const Bytes later = DrawInfoBytes<TypeParam>({4});
  ASSERT_TRUE(info->Read(later.data(), later.size()));
  EXPECT_EQ(Written(*info), later);
}

TYPED_TEST(DrawInfo, OnlyRecalculationBringsTheDataSizeUpToDate) {
  const auto info = this->Sampled({1, 2});
  info->ScData.clear();
  Bytes stale = DrawInfoBytes<TypeParam>({});
  stale[4] = static_cast<std::uint8_t>(stale[4] + 2 * DrawInfoSample<TypeParam>::kRecordSize);
  EXPECT_EQ(Written(*info, false), stale);
  EXPECT_EQ(Written(*info, true), DrawInfoBytes<TypeParam>({}));
}

TYPED_TEST(DrawInfo, EveryFailingWriteGivesFalse) {
  const auto info = this->Sampled({1, 2});
  FaultyFile sound(FaultyFile::kNever);
  ASSERT_TRUE(info->Write(&sound, true));
  for (std::uint32_t call = 0; call < sound.GetCalls(); ++call) {
    FaultyFile file(call);
    EXPECT_FALSE(info->Write(&file, true)) << call;
  }
}

TYPED_TEST(DrawInfo, ACloneIsACopyOfItsOwn) {
  const auto info = this->Sampled({1, 2});
  const auto clone = ClonedFrom(*info);
  ASSERT_NE(clone, nullptr);
  info->ScData[0].DenomMax = 99;
  EXPECT_EQ(Written(*clone, false), DrawInfoBytes<TypeParam>({1, 2}));
}

TYPED_TEST(DrawInfo, DeepCopyReplacesAndOfAnotherClassOnlyReleases) {
  const auto info = this->Sampled({1, 2});
  info->DeepCopy(this->Sampled({3}).get());
  EXPECT_EQ(Written(*info, false), DrawInfoBytes<TypeParam>({3}));
  info->DeepCopy(info.get());
  EXPECT_EQ(Written(*info, false), DrawInfoBytes<TypeParam>({3}));
  CMarkData other;
  info->DeepCopy(&other);
  EXPECT_EQ(info->GetHeader().ChunkId, DrawInfoSample<TypeParam>::kId);
  EXPECT_EQ(Written(*info), DrawInfoBytes<TypeParam>({}));
}

// The edit form.

TYPED_TEST(DrawInfo, TheEditFormKeepsEveryByteAndComputesNoSize) {
  const Bytes bytes = DrawInfoBytes<TypeParam>({8, 6, 7});
  typename TypeParam::EditClass edit;
  this->Fill(edit, {8, 6, 7});
  const auto back = ToChunk<TypeParam>(edit);
  EXPECT_EQ(back->GetHeader().ChunkId, DrawInfoSample<TypeParam>::kId);
  EXPECT_EQ(back->GetHeader().DataSize, 0U);
  EXPECT_EQ(Written(*back), bytes);
}

TYPED_TEST(DrawInfo, ConversionReplacesTheRecordsAndNeverMerges) {
  typename TypeParam::EditClass edit;
  this->Fill(edit, {1, 2});
  this->Fill(edit, {3});
  EXPECT_EQ(this->Converted(edit), DrawInfoBytes<TypeParam>({3}));
}

TYPED_TEST(DrawInfo, AChunkOfAnotherClassEmptiesTheListAndKeepsTheFields) {
  typename TypeParam::EditClass edit;
  this->Fill(edit, {1, 2});
  CMarkData other;
  edit.ChunkDataToEditData(&other);
  EXPECT_EQ(this->Converted(edit), DrawInfoBytes<TypeParam>({}));
  this->Fill(edit, {1, 2});
  edit.ChunkDataToEditData(nullptr);
  EXPECT_EQ(this->Converted(edit), DrawInfoBytes<TypeParam>({}));
}

TYPED_TEST(DrawInfo, ReleaseOfTheEditEmptiesTheListAndKeepsTheFields) {
  typename TypeParam::EditClass edit;
  this->Fill(edit, {1, 2});
  edit.Release();
  EXPECT_TRUE(edit.ScData.empty());
  EXPECT_EQ(this->Converted(edit), DrawInfoBytes<TypeParam>({}));
}

TYPED_TEST(DrawInfo, RecordsAddedAndTakenAwayReachTheChunk) {
  typename TypeParam::EditClass edit;
  this->Fill(edit, {1, 2, 3});
  auto record = edit.ScData[0];
  record.DenomMax = 77;
  edit.ScData.push_back(record);
  edit.ScData.erase(edit.ScData.begin() + 1);
  EXPECT_EQ(this->Converted(edit), DrawInfoBytes<TypeParam>({1, 3, 77}));
}

TYPED_TEST(DrawInfo, AListBeyondSixteenBitsIsCutWithItsCount) {
  typename TypeParam::EditClass edit;
  this->Fill(edit, {1});
  edit.ScData.resize(65536 + 2, edit.ScData[0]);
  edit.ScData[1].DenomMax = 2;
  edit.ScData[2].DenomMax = 3;
  EXPECT_TRUE(this->Converted(edit) == DrawInfoBytes<TypeParam>({1, 2}));
  edit.ScData.resize(65536);
  EXPECT_TRUE(this->Converted(edit) == DrawInfoBytes<TypeParam>({}));
  edit.ScData.resize(65535);
  EXPECT_EQ(ToChunk<TypeParam>(edit)->ScData.size(), 65535);
}

TYPED_TEST(DrawInfo, CloneOfTheEditIsACopyOfItsOwn) {
  typename TypeParam::EditClass edit;
  this->Fill(edit, {1, 2});
  const std::unique_ptr<CAbstractChunkEdit> clone(edit.Clone());
  edit.ScData.clear();
  auto* copy = dynamic_cast<typename TypeParam::EditClass*>(clone.get());
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(this->Converted(*copy), DrawInfoBytes<TypeParam>({1, 2}));
}

TYPED_TEST(DrawInfo, DeepCopyOfTheEditReplacesAndOfAnotherClassOnlyReleases) {
  typename TypeParam::EditClass edit;
  typename TypeParam::EditClass source;
  this->Fill(edit, {1, 2});
  this->Fill(source, {3});
  edit.DeepCopy(&source);
  EXPECT_EQ(this->Converted(edit), DrawInfoBytes<TypeParam>({3}));
  edit.DeepCopy(&edit);
  EXPECT_EQ(this->Converted(edit), DrawInfoBytes<TypeParam>({3}));
  CMarkDataEdit other;
  edit.DeepCopy(&other);
  EXPECT_EQ(this->Converted(edit), DrawInfoBytes<TypeParam>({}));
}

TYPED_TEST(DrawInfo, TheEditTakesNoSubChunks) {
  typename TypeParam::EditClass edit;
  EXPECT_FALSE(edit.SetSubChunkEdit(new CMarkDataEdit));
  EXPECT_FALSE(edit.SetSubChunkEdit(nullptr));
  EXPECT_EQ(this->Converted(edit),
            DrawInfoBytes<TypeParam>({}, DrawInfoSample<TypeParam>::FreshEditCom()));
}

}  // namespace
}  // namespace qenzor::testing
