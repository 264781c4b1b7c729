#include "qenzor/edit/chunk_edit_factory.h"

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>
#include <typeinfo>

#include "qenzor/core/chunk_factory.h"
#include "qenzor/core/unknown_chunk.h"
#include "qenzor/qen/line_obj.h"
#include "qenzor/qen/poly_obj.h"
#include "tests/support/chunk_io.h"
#include "tests/support/counted.h"
#include "tests/support/every_class.h"
#include "tests/support/qen_bytes.h"

namespace qenzor::testing {
namespace {

/// The run-time type of what the pointer leads to.
template <class T>
const std::type_info& TypeOf(const T* object) {
  return typeid(*object);
}

using OwnedEdit = std::unique_ptr<CAbstractChunkEdit>;

template <class Chunk>
class ChunkEditFactoryRow : public ::testing::Test {};

TYPED_TEST_SUITE(ChunkEditFactoryRow, EveryClass, ClassNames);

TYPED_TEST(ChunkEditFactoryRow, AChunkGetsTheEditObjectOfItsClass) {
  TypeParam chunk;
  const OwnedEdit edit(CChunkEditFactory::CreateInstance(&chunk));
  ASSERT_NE(edit, nullptr);
  EXPECT_TRUE(TypeOf(edit.get()) == typeid(typename TypeParam::EditClass));
}

TYPED_TEST(ChunkEditFactoryRow, AConverterGetsAnEmptyEditObjectOfItsClass) {
  typename TypeParam::ConverterClass converter;
  const OwnedEdit edit(CChunkEditFactory::CreateInitInstance(&converter));
  ASSERT_NE(edit, nullptr);
  EXPECT_TRUE(TypeOf(edit.get()) == typeid(typename TypeParam::EditClass));
}

TYPED_TEST(ChunkEditFactoryRow, AnEmptyEditObjectGivesAnEmptyChunkOfTheClassWithDataSizeZero) {
  typename TypeParam::EditClass edit;
  const auto chunk = ToChunk<CAbstractChunk>(edit);
  ASSERT_NE(chunk, nullptr);
  EXPECT_EQ(chunk->GetRuntimeClass().Name, TypeParam::kTag);
  EXPECT_EQ(chunk->GetHeader().ChunkId, TypeParam::kChunkId);
  EXPECT_EQ(chunk->GetHeader().DataSize, 0U);
  TypeParam fresh;
  // The one default in which the forms differ.
  if constexpr (std::is_same_v<TypeParam, CLineDrawInfo>) fresh.Aspect = 0;
  EXPECT_EQ(Written(*chunk), Written(fresh));
}

TYPED_TEST(ChunkEditFactoryRow, CloneIsOfTheSameClass) {
  typename TypeParam::EditClass edit;
  const OwnedEdit clone(edit.Clone());
  ASSERT_NE(clone, nullptr);
  EXPECT_TRUE(TypeOf(clone.get()) == typeid(edit));
}

TYPED_TEST(ChunkEditFactoryRow, AnUnwantedChildIsDestroyedAndRefused) {
  class Stranger : public CAbstractChunkEdit {
   public:
    CAbstractChunk* EditDataToChunkData() override { return nullptr; }
    void ChunkDataToEditData(CAbstractChunk* /*chunk*/) override {}
    CAbstractChunkEdit* Clone() override { return nullptr; }
    void DeepCopy(CAbstractChunkEdit* /*source*/) override {}
    void Release() override {}
  };
  typename TypeParam::EditClass edit;
  EXPECT_FALSE(edit.SetSubChunkEdit(new Counted<Stranger>));
  EXPECT_EQ(Counted<Stranger>::Alive(), 0);
  EXPECT_FALSE(edit.SetSubChunkEdit(nullptr));
}

TEST(ChunkEditFactory, NullGivesNull) {
  EXPECT_EQ(OwnedEdit(CChunkEditFactory::CreateInstance(nullptr)), nullptr);
  EXPECT_EQ(OwnedEdit(CChunkEditFactory::CreateInitInstance(nullptr)), nullptr);
}

TEST(ChunkEditFactory, AnUnknownChunkHasNoEditForm) {
  CUnKnownChunk chunk;
  EXPECT_EQ(OwnedEdit(CChunkEditFactory::CreateInstance(&chunk)), nullptr);
}

TEST(ChunkEditFactory, TheClassDecidesNotTheChunkId) {
  CLineObj line;
  line.SetHeader({id::kPolyObj, 0});
  const OwnedEdit edit(CChunkEditFactory::CreateInstance(&line));
  EXPECT_NE(dynamic_cast<CLineObjEdit*>(edit.get()), nullptr);
}

TEST(ChunkEditFactory, ADerivedChunkGetsTheEditObjectOfItsBase) {
  Counted<CLineObj> line;
  const OwnedEdit edit(CChunkEditFactory::CreateInstance(&line));
  EXPECT_NE(dynamic_cast<CLineObjEdit*>(edit.get()), nullptr);
}

TEST(ChunkEditFactory, ADerivedConverterGetsTheEditObjectOfItsBase) {
  class CDerived : public CLineObjTextConverter {};
  CDerived converter;
  const OwnedEdit edit(CChunkEditFactory::CreateInitInstance(&converter));
  EXPECT_NE(dynamic_cast<CLineObjEdit*>(edit.get()), nullptr);
}

TEST(ChunkEditFactory, AConverterOutsideTheTableGetsNull) {
  class CStranger : public CAbstractChunkTextConverter {
    void ConvertDataToString(CStdioFile& /*file*/, CAbstractChunk* /*chunk*/,
                             std::uint32_t /*level*/) override {}
    void SetChunkEditParam(CAbstractChunkEdit* /*edit*/, TiXmlElement* /*elem*/) override {}
  };
  CStranger converter;
  EXPECT_EQ(OwnedEdit(CChunkEditFactory::CreateInitInstance(&converter)), nullptr);
}

TEST(ChunkEditFactory, TheEditObjectIsFilledAndTheChunkOnlyRead) {
  const Bytes bytes = PolyBytes(5, {{1, 2}, {3, 4}}, InfoSetBytes(u"u"));
  const auto poly = FromMemory<CPolyObj>(bytes);
  ASSERT_NE(poly, nullptr);
  const OwnedEdit edit(CChunkEditFactory::CreateInstance(poly.get()));
  ASSERT_NE(edit, nullptr);
  EXPECT_EQ(Written(*poly, false), bytes);
  const auto chunk = ToChunk<CPolyObj>(*edit);
  EXPECT_EQ(Written(*chunk), bytes);
}

}  // namespace
}  // namespace qenzor::testing
