// Sets that keep their elements in order.

#include "qenzor/core/chunk_set.h"

#include <gtest/gtest.h>

#include "qenzor/qen/layer_set.h"
#include "qenzor/qen/line_obj.h"
#include "qenzor/qen/obj_set.h"
#include "qenzor/qen/z_id_obj_set.h"
#include "tests/support/chunk_io.h"
#include "tests/support/counted.h"
#include "tests/support/faulty_file.h"
#include "tests/support/qen_bytes.h"

namespace qenzor::testing {
namespace {

using CountedLayer = Counted<CLayerData>;

Bytes LayerSetWithCount(std::uint32_t count, const std::vector<Bytes>& elements) {
  Bytes data;
  data.U32(count);
  for (const Bytes& element : elements) data.Add(element);
  return Chunk(id::kLayerSet, data);
}

TEST(ChunkSetArray, WithoutElementsIsAZeroCount) {
  CLayerSet set;
  EXPECT_EQ(Written(set), Bytes().U32(8).U32(4).U32(0));
  EXPECT_EQ(set.GetHeader().DataSize, 4U);
  EXPECT_EQ(set.GetElemCount(), 0U);
}

TEST(ChunkSetArray, ReadsAndWritesElementsInFileOrder) {
  const Bytes bytes = SetChunk(id::kLayerSet, {LayerBytes(3), LayerBytes(1), LayerBytes(2)});
  for (const auto& set : {FromMemory<CLayerSet>(bytes), FromFile<CLayerSet>(bytes)}) {
    ASSERT_NE(set, nullptr);
    ASSERT_EQ(set->GetElemCount(), 3U);
    EXPECT_EQ(set->GetElem(0)->LayerNo, 3);
    EXPECT_EQ(set->GetElem(1)->LayerNo, 1);
    EXPECT_EQ(set->GetElem(2)->LayerNo, 2);
    EXPECT_EQ(Written(*set), bytes);
  }
}

TEST(ChunkSetArray, ADeclaredCountTooLargeIsWrittenAsTheRealOne) {
  const Bytes declared = LayerSetWithCount(1000000, {LayerBytes(1), LayerBytes(2)});
  for (const auto& set : {FromMemory<CLayerSet>(declared), FromFile<CLayerSet>(declared)}) {
    ASSERT_NE(set, nullptr);
    EXPECT_EQ(set->GetElemCount(), 2U);
    EXPECT_EQ(Written(*set), SetChunk(id::kLayerSet, {LayerBytes(1), LayerBytes(2)}));
  }
}

TEST(ChunkSetArray, ADeclaredCountTooSmallMakesTheSetGrow) {
  const std::vector<Bytes> layers(40, LayerBytes(5));
  for (const std::uint32_t count : {0U, 1U, 39U}) {
    const auto set = FromMemory<CLayerSet>(LayerSetWithCount(count, layers));
    ASSERT_NE(set, nullptr) << count;
    EXPECT_EQ(set->GetElemCount(), 40U);
    EXPECT_EQ(Written(*set), SetChunk(id::kLayerSet, layers));
  }
}

TEST(ChunkSetArray, AHugeDeclaredCountTakesNoMemory) {
  const auto set = FromMemory<CLayerSet>(LayerSetWithCount(0xFFFFFFFF, {LayerBytes(1)}));
  ASSERT_NE(set, nullptr);
  EXPECT_EQ(set->GetElemCount(), 1U);
}

TEST(ChunkSetArray, ElementsOfAnotherClassAreDropped) {
  const Bytes mixed = SetChunk(
      id::kObjSet, {LineBytes({{1, 1}}), LayerBytes(1), RasMMBytes({2, 2}), Chunk(77, {})});
  for (const auto& set : {FromMemory<CObjSet>(mixed), FromFile<CObjSet>(mixed)}) {
    ASSERT_NE(set, nullptr);
    EXPECT_EQ(set->GetElemCount(), 2U);
    EXPECT_EQ(Written(*set), SetChunk(id::kObjSet, {LineBytes({{1, 1}}), RasMMBytes({2, 2})}));
  }
}

TEST(ChunkSetArray, FewerThanFourBytesFail) {
  for (std::uint32_t size = 0; size < 4; ++size) {
    const Bytes bytes = Chunk(id::kLayerSet, Bytes(std::vector<std::uint8_t>(size)));
    EXPECT_EQ(FromMemory<CLayerSet>(bytes), nullptr) << size;
    EXPECT_EQ(FromFile<CLayerSet>(bytes), nullptr) << size;
  }
}

TEST(ChunkSetArray, SubChunksOfTheClassAreKeptAndOthersDestroyed) {
  CLayerSet set;
  set.SubChunkSet(9, new CountedLayer);  // the index does not matter
  EXPECT_EQ(CountedLayer::Alive(), 1);
  EXPECT_EQ(set.GetElemCount(), 1U);
  set.SubChunkSet(0, new Counted<CLineObj>);
  EXPECT_EQ(Counted<CLineObj>::Alive(), 0);
  EXPECT_EQ(set.GetElemCount(), 1U);
  set.GetNewArray(0);
  EXPECT_EQ(CountedLayer::Alive(), 0);
}

TEST(ChunkSetArray, SetElemReplacesAndDestroys) {
  CLayerSet set;
  set.GetNewArray(2);
  auto* first = new CountedLayer;
  EXPECT_TRUE(set.SetElem(1, first));
  EXPECT_EQ(set.GetElem(1), first);
  EXPECT_EQ(set.GetElem(0), nullptr);
  EXPECT_TRUE(set.SetElem(1, new CountedLayer));
  EXPECT_EQ(CountedLayer::Alive(), 1);
}

TEST(ChunkSetArray, TheIndexEqualToTheCountFails) {
  CLayerSet set;
  set.GetNewArray(2);
  EXPECT_EQ(set.GetElem(2), nullptr);
  EXPECT_FALSE(set.SetElem(2, new CountedLayer));
  EXPECT_EQ(CountedLayer::Alive(), 0);
  EXPECT_EQ(set.GetElemCount(), 2U);
}

TEST(ChunkSetArray, GetNewArrayReleasesAndGivesEmptySlots) {
  CLayerSet set;
  set.SubChunkSet(0, new CountedLayer);
  set.GetNewArray(3);
  EXPECT_EQ(CountedLayer::Alive(), 0);
  EXPECT_EQ(set.GetElemCount(), 3U);
  EXPECT_EQ(set.GetElem(0), nullptr);
}

TEST(ChunkSetArray, CloneAndDeepCopyCopyHeaderAndElements) {
  const Bytes bytes = SetChunk(id::kObjSet, {LineBytes({{1, 2}}), RasMMBytes({3, 4})});
  const auto set = FromMemory<CObjSet>(bytes);
  ASSERT_NE(set, nullptr);
  set->SetHeader({123, 456});
  const auto clone = ClonedFrom(*set);
  ASSERT_NE(clone, nullptr);
  EXPECT_EQ(clone->GetHeader().ChunkId, 123U);
  EXPECT_EQ(clone->GetHeader().DataSize, 456U);
  EXPECT_NE(clone->GetElem(0), set->GetElem(0));
  EXPECT_EQ(Written(*clone), Written(*set));
}

TEST(ChunkSetArray, DeepCopyReplacesAndOfAnotherClassReleases) {
  CLayerSet target;
  target.SubChunkSet(0, new CountedLayer);
  const auto source = FromMemory<CLayerSet>(SetChunk(id::kLayerSet, {LayerBytes(8)}));
  ASSERT_NE(source, nullptr);
  target.DeepCopy(source.get());
  EXPECT_EQ(CountedLayer::Alive(), 0);
  EXPECT_EQ(Written(target), SetChunk(id::kLayerSet, {LayerBytes(8)}));
  CZIdObjSet other;
  target.DeepCopy(&other);
  EXPECT_EQ(target.GetElemCount(), 0U);
  EXPECT_EQ(target.GetHeader().ChunkId, 8U);
}

TEST(ChunkSetArray, ItsElementsResultsAreNotItsOwn) {
  // Header and count take the first calls of the file; what fails behind them is an element.
  const auto set = FromMemory<CLayerSet>(SetChunk(id::kLayerSet, {LayerBytes(1), LayerBytes(2)}));
  ASSERT_NE(set, nullptr);
  FaultyFile empty_file(FaultyFile::kNever);
  ASSERT_TRUE(CLayerSet().Write(&empty_file, true));
  const std::uint32_t own_calls = empty_file.GetCalls();
  for (std::uint32_t call = 0; call < own_calls; ++call) {
    FaultyFile file(call);
    EXPECT_FALSE(set->Write(&file, true)) << call;
  }
  for (std::uint32_t call = own_calls; call < own_calls + 4; ++call) {
    FaultyFile file(call);
    EXPECT_TRUE(set->Write(&file, true)) << call;
  }
}

}  // namespace
}  // namespace qenzor::testing
