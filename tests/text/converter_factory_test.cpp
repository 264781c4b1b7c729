#include <gtest/gtest.h>

#include <memory>
#include <typeinfo>

#include "qenzor/core/unknown_chunk.h"
#include "qenzor/qen/line_obj.h"
#include "qenzor/text/chunk_text_converter_factory.h"
#include "tests/support/chunk_io.h"
#include "tests/support/counted.h"
#include "tests/support/every_class.h"

namespace qenzor::testing {
namespace {

/// The run-time type of what the pointer leads to.
template <class T>
const std::type_info& TypeOf(const T* object) {
  return typeid(*object);
}

using Factory = CChunkTextConverterFactory;
using Owned = std::unique_ptr<CAbstractChunkTextConverter>;

template <class Chunk>
class ConverterFactoryRow : public ::testing::Test {};

TYPED_TEST_SUITE(ConverterFactoryRow, EveryClass, ClassNames);

TYPED_TEST(ConverterFactoryRow, AChunkGetsTheConverterOfItsClass) {
  TypeParam chunk;
  const Owned converter(Factory::CreateInstance(&chunk));
  ASSERT_NE(converter, nullptr);
  EXPECT_TRUE(TypeOf(converter.get()) == typeid(typename TypeParam::ConverterClass));
}

TYPED_TEST(ConverterFactoryRow, ATagGetsTheConverterOfItsClassInBothWidths) {
  const CString tag(TypeParam::kTag);
  const Owned narrow(Factory::CreateInstance(tag));
  ASSERT_NE(narrow, nullptr);
  EXPECT_TRUE(TypeOf(narrow.get()) == typeid(typename TypeParam::ConverterClass));
  const Owned wide(Factory::CreateInstance(CStringW(tag.begin(), tag.end())));
  ASSERT_NE(wide, nullptr);
  EXPECT_TRUE(TypeOf(wide.get()) == typeid(typename TypeParam::ConverterClass));
}

TYPED_TEST(ConverterFactoryRow, ANullElementGivesNoEditObject) {
  typename TypeParam::ConverterClass converter;
  EXPECT_EQ(converter.ConvertStringToChunkEdit(nullptr), nullptr);
}

TYPED_TEST(ConverterFactoryRow, ANullElementChangesNothing) {
  typename TypeParam::ConverterClass converter;
  typename TypeParam::EditClass edit;
  converter.SetChunkEditParam(&edit, nullptr);
  converter.SetChunkEditParam(nullptr, nullptr);
  typename TypeParam::EditClass fresh;
  EXPECT_EQ(Written(*ToChunk<CAbstractChunk>(edit)), Written(*ToChunk<CAbstractChunk>(fresh)));
}

TYPED_TEST(ConverterFactoryRow, AChunkOfAnotherClassWritesNothing) {
  typename TypeParam::ConverterClass converter;
  CUnKnownChunk other;
  CMemFile sink;
  {
    CStdioFile file(sink);
    converter.ConvertDataToString(file, &other, 0);
    converter.ConvertDataToString(file, nullptr, 0);
  }
  EXPECT_TRUE(sink.GetBytes().empty());
}

TEST(ConverterFactory, TagsAreTheClassNames) {
  for (const char* tag : {"UrlInfo",
                          "AddedObjInfoSet",
                          "LineObj",
                          "PolyObj",
                          "CmbLblObj",
                          "RasLLObj",
                          "RasMMObj",
                          "ObjSet",
                          "ZIdObj",
                          "ZIdObjSet",
                          "LayerData",
                          "LayerSet",
                          "QenMapData",
                          "MarkData",
                          "MarkDataSet",
                          "RasMMDrawInfo",
                          "RasLLDrawInfo",
                          "CmbLblDrawInfo",
                          "PolyShadowDrawInfo",
                          "PolyBmpBrushDrawInfo",
                          "PolySolidBrushDrawInfo",
                          "LineDrawInfo",
                          "DrawInfoSet",
                          "DrawInfoIdxSet",
                          "DrawAtter",
                          "DrawAtterSet",
                          "ZorDrawData",
                          "MeshSegmentSet",
                          "MeshSegment"})
    EXPECT_NE(Owned(Factory::CreateInstance(CString(tag))), nullptr) << tag;
}

TEST(ConverterFactory, OtherTagsGiveNull) {
  for (const char* tag : {"", "SetElem", "CLineObj", "lineobj", "LineObj ", " LineObj", "LineObjX",
                          "LineOb", "UnKnownChunk", "Qen", "\x92\x6E"})
    EXPECT_EQ(Owned(Factory::CreateInstance(CString(tag))), nullptr) << tag;
  EXPECT_EQ(Owned(Factory::CreateInstance(CStringW(u"\uFF2CineObj"))), nullptr);
  EXPECT_EQ(Owned(Factory::CreateInstance(CString("LineObj\0X", 9))), nullptr);
}

TEST(ConverterFactory, ChunksWithoutAConverterGiveNull) {
  CUnKnownChunk unknown;
  EXPECT_EQ(Owned(Factory::CreateInstance(&unknown)), nullptr);
  EXPECT_EQ(Owned(Factory::CreateInstance(static_cast<CAbstractChunk*>(nullptr))), nullptr);
}

TEST(ConverterFactory, ADerivedChunkGetsTheConverterOfItsBase) {
  Counted<CLineObj> line;
  const Owned converter(Factory::CreateInstance(&line));
  EXPECT_NE(dynamic_cast<CLineObjTextConverter*>(converter.get()), nullptr);
}

}  // namespace
}  // namespace qenzor::testing
