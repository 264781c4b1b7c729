#include "qenzor/core/chunk_factory.h"

#include <gtest/gtest.h>

#include <memory>

#include "qenzor/core/unknown_chunk.h"
#include "qenzor/qen/layer_data.h"
#include "qenzor/qen/line_obj.h"
#include "tests/support/chunk_io.h"
#include "tests/support/qen_bytes.h"

namespace qenzor::testing {
namespace {

using Owned = std::unique_ptr<CAbstractChunk>;

struct Row {
  std::uint32_t Id;
  CAbstractChunk* (*Create)();
  std::string_view Class;
};

const Row kRows[] = {
    {1, &CChunkFactory::CreateAddedObjInfoSetInst, "AddedObjInfoSet"},
    {2, &CChunkFactory::CreateDrawAtterSetInst, "DrawAtterSet"},
    {3, &CChunkFactory::CreateDrawAtterInst, "DrawAtter"},
    {4, &CChunkFactory::CreateCmbLblDrawInfoInst, "CmbLblDrawInfo"},
    {5, &CChunkFactory::CreateCmbLblObjInst, "CmbLblObj"},
    {6, &CChunkFactory::CreateDrawInfoSetInst, "DrawInfoSet"},
    {7, &CChunkFactory::CreateLayerDataInst, "LayerData"},
    {8, &CChunkFactory::CreateLayerSetInst, "LayerSet"},
    {9, &CChunkFactory::CreateLineObjInst, "LineObj"},
    {10, &CChunkFactory::CreateLineDrawInfoInst, "LineDrawInfo"},
    {11, &CChunkFactory::CreateMarkDataInst, "MarkData"},
    {12, &CChunkFactory::CreatePolySolidBrushDrawInfoInst, "PolySolidBrushDrawInfo"},
    {13, &CChunkFactory::CreatePolyObjInst, "PolyObj"},
    {14, &CChunkFactory::CreatePolyShadowDrawInfoInst, "PolyShadowDrawInfo"},
    {15, &CChunkFactory::CreateRasLLDrawInfoInst, "RasLLDrawInfo"},
    {16, &CChunkFactory::CreateRasLLObjInst, "RasLLObj"},
    {17, &CChunkFactory::CreateRasMMDrawInfoInst, "RasMMDrawInfo"},
    {18, &CChunkFactory::CreateRasMMObjInst, "RasMMObj"},
    {19, &CChunkFactory::CreateUrlInfoInst, "UrlInfo"},
    {20, &CChunkFactory::CreateZIdObjSetInst, "ZIdObjSet"},
    {21, &CChunkFactory::CreateZIdObjInst, "ZIdObj"},
    {22, &CChunkFactory::CreateObjSetInst, "ObjSet"},
    {23, &CChunkFactory::CreateDrawInfoIdxSetInst, "DrawInfoIdxSet"},
    {24, &CChunkFactory::CreateMarkDataSetInst, "MarkDataSet"},
    {25, &CChunkFactory::CreateQenMapDataInst, "QenMapData"},
    {26, &CChunkFactory::CreateZorDrawDataInst, "ZorDrawData"},
    {27, &CChunkFactory::CreatePolyBmpBrushDrawInfoInst, "PolyBmpBrushDrawInfo"},
    {29, &CChunkFactory::CreateMeshSegmentSetInst, "MeshSegmentSet"},
    {30, &CChunkFactory::CreateMeshSegmentInst, "MeshSegment"},
};

TEST(ChunkFactory, EveryCreatorMakesAnEmptyChunkOfItsClass) {
  for (const Row& row : kRows) {
    const Owned chunk(row.Create());
    ASSERT_NE(chunk, nullptr) << row.Id;
    EXPECT_EQ(chunk->GetRuntimeClass().Name, row.Class);
    EXPECT_EQ(chunk->GetHeader().ChunkId, row.Id);
    EXPECT_EQ(chunk->GetHeader().DataSize, 0U) << row.Id;
  }
}

TEST(ChunkFactory, EveryIdMakesTheClassOfItsRow) {
  for (const Row& row : kRows) {
    const Owned chunk(CChunkFactory::CreateInstance({row.Id, 5}));
    ASSERT_NE(chunk, nullptr) << row.Id;
    EXPECT_EQ(chunk->GetRuntimeClass().Name, row.Class);
  }
}

TEST(ChunkFactory, TheUnknownCreatorLeavesIdZero) {
  const Owned chunk(CChunkFactory::CreateUnKnownChunkInst());
  ASSERT_NE(class_cast<CUnKnownChunk>(chunk.get()), nullptr);
  EXPECT_EQ(chunk->GetHeader().ChunkId, 0U);
}

TEST(ChunkFactory, IdsWithoutACreatorMakeUnknownChunksThatKeepTheirId) {
  for (const std::uint32_t chunk_id : {0U, 28U, 31U, 32U, 4711U, 0xFFFFFFFFU}) {
    const Owned chunk(CChunkFactory::CreateInstance({chunk_id, 12}));
    ASSERT_NE(class_cast<CUnKnownChunk>(chunk.get()), nullptr) << chunk_id;
    EXPECT_EQ(chunk->GetHeader().ChunkId, chunk_id);
    EXPECT_EQ(chunk->GetHeader().DataSize, 12U);
  }
}

TEST(ChunkFactory, CreateInstanceKeepsTheGivenDataSizeAndReadsNothing) {
  const Owned chunk(CChunkFactory::CreateInstance({7, 1000}));
  auto* layer = class_cast<CLayerData>(chunk.get());
  ASSERT_NE(layer, nullptr);
  EXPECT_EQ(layer->GetHeader().DataSize, 1000U);
  EXPECT_EQ(layer->LayerNo, 0);
  EXPECT_EQ(layer->ZIdObjSet, nullptr);
}

TEST(ChunkFactory, CreatesAWholeChunkFromBothSources) {
  const Bytes bytes = LineBytes({{1, -2}, {30000, -30000}});
  const Owned memory(CChunkFactory::Create(bytes.data(), bytes.size()));
  ASSERT_NE(class_cast<CLineObj>(memory.get()), nullptr);
  EXPECT_EQ(Written(*memory), bytes);
  CMemFile source(Bytes("xx").Add(bytes).Add("behind").vector());
  source.Seek(2, CFile::begin);
  const Owned file(CChunkFactory::Create(&source));
  ASSERT_NE(class_cast<CLineObj>(file.get()), nullptr);
  EXPECT_EQ(Written(*file), bytes);
  EXPECT_EQ(source.GetPosition(), 2U + bytes.size());
}

TEST(ChunkFactory, FewerThanEightBytesGiveNull) {
  const Bytes bytes = LayerBytes(1);
  for (std::uint32_t size = 0; size < 8; ++size) {
    EXPECT_EQ(Owned(CChunkFactory::Create(bytes.data(), size)), nullptr) << size;
    CMemFile file(bytes.Front(size).vector());
    EXPECT_EQ(Owned(CChunkFactory::Create(&file)), nullptr) << size;
  }
}

TEST(ChunkFactory, DataThatCannotBeReadGivesNull) {
  const Bytes bytes = Bytes().U32(id::kLayerData).U32(2).U8(1);
  EXPECT_EQ(Owned(CChunkFactory::Create(bytes.data(), bytes.size())), nullptr);
  CMemFile file(bytes.vector());
  EXPECT_EQ(Owned(CChunkFactory::Create(&file)), nullptr);
}

}  // namespace
}  // namespace qenzor::testing
