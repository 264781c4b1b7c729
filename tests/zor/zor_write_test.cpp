// Writing and copying draw data.

#include <gtest/gtest.h>

#include "qenzor/zor/line_draw_info.h"
#include "tests/support/chunk_io.h"
#include "tests/support/counted.h"
#include "tests/support/faulty_file.h"
#include "tests/support/zor_bytes.h"
#include "tests/support/zor_xml.h"

namespace qenzor::testing {
namespace {

const Bytes kBare = ZorInfoBytes().Add(DrawDataBytes({}));

TEST(ZorWrite, WritesWhatItRead) {
  const auto doc = ZorFromMemory(ZorDocumentBytes());
  const TempFile file;
  EXPECT_TRUE(doc->Write(file.Path()));
  EXPECT_EQ(file.Content(), ZorDocumentBytes());
}

TEST(ZorWrite, ReplacesALongerFile) {
  const auto doc = ZorFromMemory(kBare);
  const TempFile file(ZorDocumentBytes());
  EXPECT_TRUE(doc->Write(file.Path()));
  EXPECT_EQ(file.Content(), kBare);
}

TEST(ZorWrite, AFreshDocumentIsZeroesAndABareRootChunk) {
  CZor doc;
  EXPECT_EQ(WrittenZor(doc), Bytes(std::vector<std::uint8_t>(19, 0x00)).Add(DrawDataBytes({})));
}

TEST(ZorWrite, RecomputesSizesAfterAChange) {
  const auto doc = ZorFromMemory(
      ZorInfoBytes().Add(DrawDataBytes({SetChunk(id::kDrawInfoSet, {LineInfoBytes(1)})})));
  ASSERT_NE(doc, nullptr);
  doc->DrawData.DrawInfoSet->SubChunkSet(0, FromMemory<CLineDrawInfo>(LineInfoBytes(2)).release());
  EXPECT_EQ(WrittenZor(*doc), ZorInfoBytes().Add(DrawDataBytes({SetChunk(
                                  id::kDrawInfoSet, {LineInfoBytes(1), LineInfoBytes(2)})})));
}

TEST(ZorWrite, APathThatCannotBeCreatedFails) {
  const auto doc = ZorFromMemory(ZorDocumentBytes());
  EXPECT_FALSE(doc->Write("/nonexistent/map.zor"));
  EXPECT_FALSE(doc->Write(::testing::TempDir()));
}

TEST(ZorWrite, AFullDiskFails) {
  const auto doc = ZorFromMemory(ZorDocumentBytes());
  EXPECT_FALSE(doc->Write("/dev/full"));
}

TEST(ZorWrite, AFileThatRefusesTheInfoGetsNoDrawData) {
  const auto doc = ZorFromMemory(ZorDocumentBytes());
  FaultyFile file(0);
  EXPECT_FALSE(doc->Write(&file));
  EXPECT_TRUE(file.GetBytes().empty());
}

TEST(ZorWrite, AWriteThatFailsIsNeverThrownAndLeavesTheFileCut) {
  const Bytes bytes = ZorDocumentBytes();
  const auto doc = ZorFromMemory(bytes);
  FaultyFile whole(FaultyFile::kNever);
  ASSERT_TRUE(doc->Write(&whole));
  for (std::uint32_t call = 0; call < whole.GetCalls(); ++call) {
    FaultyFile file(call);
    EXPECT_NO_THROW(static_cast<void>(doc->Write(&file))) << call;
    EXPECT_LT(file.GetBytes().size(), bytes.size()) << call;
    EXPECT_EQ(Bytes(file.GetBytes()), bytes.Front(file.GetBytes().size())) << call;
  }
}

TEST(ZorCopy, CloneCopiesInfoAndDrawData) {
  const auto doc = ZorFromMemory(ZorDocumentBytes());
  const std::unique_ptr<CZor> clone(doc->Clone());
  ASSERT_NE(clone, nullptr);
  EXPECT_NE(clone->DrawData.DrawInfoSet, doc->DrawData.DrawInfoSet);
  EXPECT_EQ(WrittenZor(*clone), ZorDocumentBytes());
  EXPECT_EQ(WrittenZor(*doc), ZorDocumentBytes());
}

TEST(ZorCopy, DeepCopyReplacesTheDrawDataAndDestroysTheOld) {
  CZor target;
  target.DrawData.SubChunkSet(0, new Counted<CMarkDataSet>);
  const auto source = ZorFromMemory(kBare);
  target.DeepCopy(source.get());
  EXPECT_EQ(Counted<CMarkDataSet>::Alive(), 0);
  EXPECT_EQ(WrittenZor(target), kBare);
}

TEST(ZorCopy, DeepCopyOfItselfChangesNothing) {
  const auto doc = ZorFromMemory(ZorDocumentBytes());
  doc->DeepCopy(doc.get());
  EXPECT_EQ(WrittenZor(*doc), ZorDocumentBytes());
}

}  // namespace
}  // namespace qenzor::testing
