#include <gtest/gtest.h>

#include <memory>

#include "qenzor/core/unknown_chunk.h"
#include "qenzor/edit/chunk_set_edit.h"
#include "qenzor/qen/layer_set.h"
#include "qenzor/qen/line_obj.h"
#include "qenzor/qen/obj_set.h"
#include "qenzor/qen/ras_mm_obj.h"
#include "qenzor/qen/z_id_obj_set.h"
#include "tests/support/chunk_io.h"
#include "tests/support/counted.h"
#include "tests/support/qen_bytes.h"

namespace qenzor::testing {
namespace {

using CountedEdit = Counted<CLayerDataEdit>;

CLayerDataEdit* NewLayer(std::uint16_t number) {
  auto* layer = new CountedEdit;
  layer->LayerNo = number;
  return layer;
}

void Fill(CLayerSetEdit& set, std::initializer_list<std::uint16_t> numbers) {
  for (const std::uint16_t number : numbers) set.AddElem(set.GetElemCount(), NewLayer(number));
}

std::vector<int> Numbers(const CLayerSetEdit& set) {
  std::vector<int> numbers;
  for (const auto& layer : *set.GetElemPtr()) numbers.push_back(layer ? layer->LayerNo : -1);
  return numbers;
}
using Ints = std::vector<int>;

TEST(ChunkSetArrayEdit, AddElemBehindTheEndAppends) {
  CLayerSetEdit set;
  Fill(set, {1, 2, 3});
  set.AddElem(5, NewLayer(9));
  set.AddElem(4, NewLayer(8));
  EXPECT_EQ(Numbers(set), (Ints{1, 2, 3, 9, 8}));
}

TEST(ChunkSetArrayEdit, AddElemInsertsInFrontOfTheIndex) {
  CLayerSetEdit set;
  Fill(set, {1, 2, 3});
  set.AddElem(0, NewLayer(9));
  set.AddElem(2, NewLayer(8));
  EXPECT_EQ(Numbers(set), (Ints{9, 1, 8, 2, 3}));
}

TEST(ChunkSetArrayEdit, GetElemGivesNullFromTheCountOn) {
  CLayerSetEdit set;
  Fill(set, {1, 2});
  EXPECT_EQ(set.GetElem(1)->LayerNo, 2);
  EXPECT_EQ(set.GetElem(2), nullptr);
  EXPECT_EQ(set.GetElemCount(), 2U);
}

TEST(ChunkSetArrayEdit, DelElemDestroysTheElement) {
  CLayerSetEdit set;
  Fill(set, {1, 2, 3});
  set.DelElem(1);
  EXPECT_EQ(Numbers(set), (Ints{1, 3}));
  EXPECT_EQ(CountedEdit::Alive(), 2);
  set.DelElem(2);
  EXPECT_EQ(Numbers(set), (Ints{1, 3}));
}

TEST(ChunkSetArrayEdit, ANullElementIsStoredLikeAnyOther) {
  CLayerSetEdit set;
  Fill(set, {1, 2});
  set.AddElem(1, nullptr);
  EXPECT_EQ(Numbers(set), (Ints{1, -1, 2}));
  EXPECT_EQ(set.GetElemCount(), 3U);
}

TEST(ChunkSetArrayEdit, NullElementsLeaveTrailingSlotsEmptyInTheChunk) {
  CLayerSetEdit set;
  Fill(set, {1, 2});
  set.AddElem(1, nullptr);
  const auto chunk = ToChunk<CLayerSet>(set);
  ASSERT_EQ(chunk->GetElemCount(), 3U);
  EXPECT_EQ(chunk->GetElem(0)->LayerNo, 1);
  EXPECT_EQ(chunk->GetElem(1)->LayerNo, 2);
  EXPECT_EQ(chunk->GetElem(2), nullptr);
}

TEST(ChunkSetArrayEdit, EmptySlotsOfAChunkMakeAShorterList) {
  CLayerSet chunk;
  chunk.GetNewArray(3);
  auto* layer = new CLayerData;
  layer->LayerNo = 7;
  chunk.SetElem(2, layer);
  CLayerSetEdit set;
  set.ChunkDataToEditData(&chunk);
  EXPECT_EQ(Numbers(set), Ints{7});
  const auto back = ToChunk<CLayerSet>(set);
  ASSERT_EQ(back->GetElemCount(), 1U);
  EXPECT_NE(back->GetElem(0), nullptr);
}

TEST(ChunkSetArrayEdit, ElementsWithoutAnEditFormAreLost) {
  /// A map object of a kind that only this program knows.
  class COtherObj : public CAbstractObj {
    CAbstractChunk* Clone() override { return new COtherObj; }
    void RecursiveReCalcDataSize() override { m_header.DataSize = 0; }
    bool ReadPrimitiveBlock(const void* /*data*/, const std::uint32_t& /*size*/,
                            std::uint32_t& consumed) override {
      consumed = 0;
      return true;
    }
    bool ReadPrimitiveBlock(CFile* /*file*/, std::uint32_t& consumed) override {
      consumed = 0;
      return true;
    }
    bool WriteData(CFile* /*file*/, bool /*recalc*/) override { return true; }
  };
  CObjSet chunk;
  chunk.SubChunkSet(0, new COtherObj);
  chunk.SubChunkSet(1, new CLineObj);
  ASSERT_EQ(chunk.GetElemCount(), 2U);
  CObjSetEdit set;
  set.ChunkDataToEditData(&chunk);
  ASSERT_EQ(set.GetElemCount(), 1U);
  EXPECT_NE(dynamic_cast<CLineObjEdit*>(set.GetElem(0)), nullptr);
}

TEST(ChunkSetArrayEdit, ConversionReplacesAndNeverMerges) {
  const auto chunk = FromMemory<CLayerSet>(SetChunk(id::kLayerSet, {LayerBytes(5)}));
  ASSERT_NE(chunk, nullptr);
  CLayerSetEdit set;
  Fill(set, {1, 2});
  set.ChunkDataToEditData(chunk.get());
  EXPECT_EQ(CountedEdit::Alive(), 0);
  EXPECT_EQ(Numbers(set), Ints{5});
}

TEST(ChunkSetArrayEdit, AChunkOfAnotherClassLeavesTheSetEmpty) {
  CLayerSetEdit set;
  Fill(set, {1});
  CZIdObjSet other;
  set.ChunkDataToEditData(&other);
  EXPECT_EQ(set.GetElemCount(), 0U);
  EXPECT_EQ(CountedEdit::Alive(), 0);
  Fill(set, {1});
  set.ChunkDataToEditData(nullptr);
  EXPECT_EQ(set.GetElemCount(), 0U);
}

TEST(ChunkSetArrayEdit, RoundTripKeepsEveryByteAndComputesNoSize) {
  const Bytes bytes = SetChunk(
      id::kObjSet, {LineBytes({{1, 2}, {3, 4}}, InfoSetBytes(u"url")), RasMMBytes({5, 6})});
  const auto chunk = FromMemory<CObjSet>(bytes);
  ASSERT_NE(chunk, nullptr);
  CObjSetEdit set;
  set.ChunkDataToEditData(chunk.get());
  const auto back = ToChunk<CObjSet>(set);
  EXPECT_EQ(back->GetHeader().DataSize, 0U);
  EXPECT_EQ(back->GetElem(0)->GetHeader().DataSize, 0U);
  EXPECT_EQ(back->GetElem(0)->AddedObjInfoSet->GetHeader().DataSize, 0U);
  // Written without recalculation the sizes stand there as 0.
  EXPECT_EQ(Written(*back, false).Front(20),
            Bytes().U32(22).U32(0).U32(2).U32(id::kLineObj).U32(0));
  EXPECT_EQ(Written(*back), bytes);
}

TEST(ChunkSetArrayEdit, SetSubChunkEditAppendsItsElementClassOnly) {
  CLayerSetEdit set;
  Fill(set, {1});
  EXPECT_TRUE(set.SetSubChunkEdit(NewLayer(2)));
  EXPECT_EQ(Numbers(set), (Ints{1, 2}));
  EXPECT_FALSE(set.SetSubChunkEdit(new Counted<CRasMMObjEdit>));
  EXPECT_EQ(Counted<CRasMMObjEdit>::Alive(), 0);
  EXPECT_FALSE(set.SetSubChunkEdit(nullptr));
  EXPECT_EQ(set.GetElemCount(), 2U);
}

TEST(ChunkSetArrayEdit, ReleaseDestroysTheElementsAndLeavesTheSetReusable) {
  CLayerSetEdit set;
  Fill(set, {1, 2});
  set.Release();
  EXPECT_EQ(CountedEdit::Alive(), 0);
  EXPECT_EQ(set.GetElemCount(), 0U);
  Fill(set, {3});
  EXPECT_EQ(Numbers(set), Ints{3});
}

TEST(ChunkSetArrayEdit, DestructionDestroysTheElements) {
  {
    CLayerSetEdit set;
    Fill(set, {1, 2});
  }
  EXPECT_EQ(CountedEdit::Alive(), 0);
}

TEST(ChunkSetArrayEdit, CloneAndDeepCopyCopyAllButNulls) {
  CLayerSetEdit set;
  Fill(set, {1, 2});
  set.AddElem(1, nullptr);
  const std::unique_ptr<CAbstractChunkEdit> clone(set.Clone());
  auto* copy = dynamic_cast<CLayerSetEdit*>(clone.get());
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(Numbers(*copy), (Ints{1, 2}));
  EXPECT_NE(copy->GetElem(0), set.GetElem(0));
  CLayerSetEdit target;
  Fill(target, {8});
  target.DeepCopy(copy);
  EXPECT_EQ(Numbers(target), (Ints{1, 2}));
}

TEST(ChunkSetArrayEdit, DeepCopyOfAnotherClassReleases) {
  CLayerSetEdit target;
  Fill(target, {8});
  CObjSetEdit other;
  target.DeepCopy(&other);
  EXPECT_EQ(target.GetElemCount(), 0U);
  EXPECT_EQ(CountedEdit::Alive(), 0);
}

TEST(ChunkSetArrayEdit, InstancesAreOfTheConcreteClassAndEmpty) {
  CLayerSetEdit set;
  Fill(set, {1});
  const std::unique_ptr<CAbstractChunk> chunk(set.GetChunkInstance());
  ASSERT_NE(class_cast<CLayerSet>(chunk.get()), nullptr);
  EXPECT_EQ(chunk->GetHeader().ChunkId, 8U);
  EXPECT_EQ(chunk->GetHeader().DataSize, 0U);
  const std::unique_ptr<CAbstractChunkEdit> edit(set.GetChunkEditInstance());
  auto* empty = dynamic_cast<CLayerSetEdit*>(edit.get());
  ASSERT_NE(empty, nullptr);
  EXPECT_EQ(empty->GetElemCount(), 0U);
}

TEST(ChunkSetArrayEdit, TheListItselfMayBeChanged) {
  CLayerSetEdit set;
  Fill(set, {1, 2});
  std::swap(set.GetElemPtr()->front(), set.GetElemPtr()->back());
  EXPECT_EQ(Numbers(set), (Ints{2, 1}));
}

}  // namespace
}  // namespace qenzor::testing
