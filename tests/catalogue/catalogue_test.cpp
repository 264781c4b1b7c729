#include "qenzor/catalogue.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <typeinfo>

#include "qenzor/core/chunk_factory.h"
#include "qenzor/core/unknown_chunk.h"
#include "qenzor/edit/chunk_edit_factory.h"
#include "qenzor/text/chunk_text_converter_factory.h"

namespace {

using namespace qenzor;

const std::map<std::uint32_t, std::string> kQenTags{
    {1, "AddedObjInfoSet"}, {5, "CmbLblObj"},       {7, "LayerData"},   {8, "LayerSet"},
    {9, "LineObj"},         {13, "PolyObj"},        {16, "RasLLObj"},   {18, "RasMMObj"},
    {19, "UrlInfo"},        {20, "ZIdObjSet"},      {21, "ZIdObj"},     {22, "ObjSet"},
    {25, "QenMapData"},     {29, "MeshSegmentSet"}, {30, "MeshSegment"}};

const std::map<std::uint32_t, std::string> kZorTags{{2, "DrawAtterSet"},
                                                    {3, "DrawAtter"},
                                                    {4, "CmbLblDrawInfo"},
                                                    {6, "DrawInfoSet"},
                                                    {10, "LineDrawInfo"},
                                                    {11, "MarkData"},
                                                    {12, "PolySolidBrushDrawInfo"},
                                                    {14, "PolyShadowDrawInfo"},
                                                    {15, "RasLLDrawInfo"},
                                                    {17, "RasMMDrawInfo"},
                                                    {23, "DrawInfoIdxSet"},
                                                    {24, "MarkDataSet"},
                                                    {26, "ZorDrawData"},
                                                    {27, "PolyBmpBrushDrawInfo"}};

std::map<std::uint32_t, std::string> TagsOf(ClassFamily family) {
  std::map<std::uint32_t, std::string> tags;
  ForEachClass([&](auto row) {
    if (row.kFamily == family) tags[row.kChunkId] = row.kTag;
  });
  return tags;
}

TEST(Catalogue, ListsTheClassesOfEachDocumentByIdAndTag) {
  EXPECT_EQ(TagsOf(ClassFamily::kQen), kQenTags);
  EXPECT_EQ(TagsOf(ClassFamily::kZor), kZorTags);
  EXPECT_EQ(kClassCount, kQenTags.size() + kZorTags.size());
  EXPECT_EQ(kChunkIds, 31U);
}

TEST(Catalogue, KnowsSetsAndTheOneThatIsKeyed) {
  std::string sets;
  std::string keyed;
  ForEachClass([&](auto row) {
    if (row.kIsSet) sets += std::string(row.kTag) + ' ';
    if (row.kIsKeyed) keyed += row.kTag;
  });
  EXPECT_EQ(sets,
            "AddedObjInfoSet ObjSet ZIdObjSet LayerSet MeshSegmentSet MarkDataSet DrawInfoSet "
            "DrawAtterSet ");
  EXPECT_EQ(keyed, "DrawAtterSet");
}

TEST(Catalogue, StopsAtTheFirstClassThatIsWanted) {
  int asked = 0;
  EXPECT_TRUE(AnyClass([&](auto row) { return ++asked, row.kTag == "LineObj"; }));
  EXPECT_EQ(asked, 3);
  EXPECT_FALSE(AnyClass([](auto row) { return row.kTag == "lineobj"; }));
}

TEST(Catalogue, IsWhatEachFactoryMakesObjectsBy) {
  ForEachClass([]<class Row>(Row) {
    SCOPED_TRACE(Row::kTag);
    const std::unique_ptr<CAbstractChunk> chunk(CChunkFactory::CreateInstance({Row::kChunkId, 0}));
    ASSERT_NE(chunk, nullptr);
    const auto& chunk_object = *chunk;
    EXPECT_EQ(typeid(chunk_object), typeid(typename Row::Chunk));
    const std::unique_ptr<CAbstractChunkEdit> edit(CChunkEditFactory::CreateInstance(chunk.get()));
    ASSERT_NE(edit, nullptr);
    const auto& edit_object = *edit;
    EXPECT_EQ(typeid(edit_object), typeid(typename Row::Edit));
    const std::unique_ptr<CAbstractChunkTextConverter> converter(
        CChunkTextConverterFactory::CreateInstance(CString(Row::kTag)));
    ASSERT_NE(converter, nullptr);
    const auto& converter_object = *converter;
    EXPECT_EQ(typeid(converter_object), typeid(typename Row::Converter));
  });
}

TEST(Catalogue, LeavesIdsThatNoClassHasToUnknownChunks) {
  for (const std::uint32_t id : {0U, 28U, 31U, 0xFFFFFFFFU}) {
    const std::unique_ptr<CAbstractChunk> chunk(CChunkFactory::CreateInstance({id, 7}));
    ASSERT_NE(class_cast<CUnKnownChunk>(chunk.get()), nullptr) << id;
    EXPECT_EQ(chunk->GetHeader().ChunkId, id);
  }
}

}  // namespace
