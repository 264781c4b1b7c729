#include <gtest/gtest.h>

#include <memory>

#include "qenzor/qen/layer_set.h"
#include "qenzor/zor/draw_atter_set.h"
#include "tests/support/chunk_io.h"
#include "tests/support/counted.h"
#include "tests/support/qen_bytes.h"

namespace qenzor::testing {
namespace {

using CountedEdit = Counted<CDrawAtterEdit>;

CountedEdit* NewEdit(std::uint64_t key) {
  auto* edit = new CountedEdit;
  edit->ZId = key;
  return edit;
}

/// A draw attribute with an empty index set, as its edit form gives it back.
Bytes AtterBytes(std::uint64_t key) {
  return Chunk(id::kDrawAtter, Bytes().U64(key).Add(Chunk(23, Bytes().U32(0))));
}

TEST(ChunkSetMapEdit, FilesElementsUnderTheirOwnKey) {
  CDrawAtterSetEdit set;
  auto* edit = NewEdit(0xFFFFFFFFFFFFFFFF);
  set.AddElem(edit);
  EXPECT_EQ(set.GetElem(0xFFFFFFFFFFFFFFFF), edit);
  EXPECT_EQ(set.GetElem(0xFFFFFFFF), nullptr);
  EXPECT_EQ(set.GetElemCount(), 1U);
}

TEST(ChunkSetMapEdit, TheSecondElementUnderAKeyWinsAndTheFirstIsDestroyed) {
  CDrawAtterSetEdit set;
  set.AddElem(NewEdit(3));
  auto* second = NewEdit(3);
  set.AddElem(second);
  EXPECT_EQ(set.GetElemCount(), 1U);
  EXPECT_EQ(set.GetElem(3), second);
  EXPECT_EQ(CountedEdit::Alive(), 1);
}

TEST(ChunkSetMapEdit, DelElemHandsTheElementBackAlive) {
  CDrawAtterSetEdit set;
  auto* edit = NewEdit(3);
  set.AddElem(edit);
  const std::unique_ptr<CDrawAtterEdit> removed(set.DelElem(3));
  EXPECT_EQ(removed.get(), edit);
  EXPECT_EQ(CountedEdit::Alive(), 1);
  EXPECT_EQ(set.GetElemCount(), 0U);
  EXPECT_EQ(set.GetElem(3), nullptr);
  EXPECT_EQ(set.DelElem(3), nullptr);
}

TEST(ChunkSetMapEdit, SetSubChunkEditTakesItsElementClassOnly) {
  CDrawAtterSetEdit set;
  EXPECT_TRUE(set.SetSubChunkEdit(NewEdit(1)));
  EXPECT_FALSE(set.SetSubChunkEdit(new Counted<CLayerDataEdit>));
  EXPECT_EQ(Counted<CLayerDataEdit>::Alive(), 0);
  EXPECT_FALSE(set.SetSubChunkEdit(nullptr));
  EXPECT_EQ(set.GetElemCount(), 1U);
}

TEST(ChunkSetMapEdit, RoundTripKeepsEveryByteAndComputesNoSize) {
  // In the order of the chunk's buckets: 0, 425, 850.
  const Bytes bytes = SetChunk(id::kDrawAtterSet, {AtterBytes(0), AtterBytes(1), AtterBytes(2)});
  const auto chunk = FromMemory<CDrawAtterSet>(bytes);
  ASSERT_NE(chunk, nullptr);
  CDrawAtterSetEdit set;
  set.ChunkDataToEditData(chunk.get());
  EXPECT_EQ(set.GetElemCount(), 3U);
  const auto back = ToChunk<CDrawAtterSet>(set);
  EXPECT_EQ(back->GetHeader().DataSize, 0U);
  EXPECT_EQ(back->GetElem(1)->GetHeader().DataSize, 0U);
  EXPECT_EQ(Written(*back), bytes);
}

TEST(ChunkSetMapEdit, ConversionReplacesAndNeverMerges) {
  CDrawAtterSetEdit set;
  set.AddElem(NewEdit(77));
  const auto chunk = FromMemory<CDrawAtterSet>(SetChunk(id::kDrawAtterSet, {AtterBytes(1)}));
  ASSERT_NE(chunk, nullptr);
  set.ChunkDataToEditData(chunk.get());
  EXPECT_EQ(CountedEdit::Alive(), 0);
  EXPECT_EQ(set.GetElem(77), nullptr);
  EXPECT_NE(set.GetElem(1), nullptr);
}

TEST(ChunkSetMapEdit, AChunkOfAnotherClassLeavesTheSetEmpty) {
  CDrawAtterSetEdit set;
  set.AddElem(NewEdit(77));
  CLayerSet other;
  set.ChunkDataToEditData(&other);
  EXPECT_EQ(set.GetElemCount(), 0U);
  EXPECT_EQ(CountedEdit::Alive(), 0);
}

TEST(ChunkSetMapEdit, CloneAndDeepCopyCopyTheElements) {
  CDrawAtterSetEdit set;
  set.AddElem(NewEdit(1));
  set.AddElem(NewEdit(2));
  const std::unique_ptr<CAbstractChunkEdit> clone(set.Clone());
  auto* copy = dynamic_cast<CDrawAtterSetEdit*>(clone.get());
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->GetElemCount(), 2U);
  EXPECT_NE(copy->GetElem(1), set.GetElem(1));
  set.DeepCopy(copy);
  EXPECT_EQ(CountedEdit::Alive(), 0);
  EXPECT_EQ(set.GetElemCount(), 2U);
  CLayerSetEdit other;
  set.DeepCopy(&other);
  EXPECT_EQ(set.GetElemCount(), 0U);
}

TEST(ChunkSetMapEdit, ReleaseAndDestructionDestroyTheElements) {
  {
    CDrawAtterSetEdit set;
    set.AddElem(NewEdit(1));
    set.Release();
    EXPECT_EQ(CountedEdit::Alive(), 0);
    EXPECT_EQ(set.GetElemCount(), 0U);
    set.AddElem(NewEdit(2));
  }
  EXPECT_EQ(CountedEdit::Alive(), 0);
}

TEST(ChunkSetMapEdit, ItsOwnOrderHasSeventeenBuckets) {
  // 16807 is 11 modulo 17, so the keys 0, 1, 2, 3 have the buckets 0, 11, 5, 16.
  CDrawAtterSetEdit set;
  for (const std::uint64_t key : {0U, 1U, 2U, 3U}) set.AddElem(NewEdit(key));
  std::vector<std::uint64_t> keys;
  for (const CDrawAtterEdit* edit : set.GetElems()) keys.push_back(edit->ZId);
  EXPECT_EQ(keys, (std::vector<std::uint64_t>{0, 2, 1, 3}));
}

TEST(ChunkSetMapEdit, InstancesAreOfTheConcreteClass) {
  CDrawAtterSetEdit set;
  const std::unique_ptr<CAbstractChunk> chunk(set.GetChunkInstance());
  EXPECT_NE(class_cast<CDrawAtterSet>(chunk.get()), nullptr);
  const std::unique_ptr<CAbstractChunkEdit> edit(set.GetChunkEditInstance());
  EXPECT_NE(dynamic_cast<CDrawAtterSetEdit*>(edit.get()), nullptr);
}

}  // namespace
}  // namespace qenzor::testing
