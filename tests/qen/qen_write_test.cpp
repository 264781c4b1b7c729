// Writing and copying map projects.

#include <gtest/gtest.h>

#include "qenzor/qen/layer_data.h"
#include "qenzor/qen/line_obj.h"
#include "qenzor/qen/qen.h"
#include "tests/support/chunk_io.h"
#include "tests/support/counted.h"
#include "tests/support/faulty_file.h"
#include "tests/support/qen_bytes.h"
#include "tests/support/temp_file.h"

namespace qenzor::testing {
namespace {

std::unique_ptr<CQen> DocumentOf(const Bytes& bytes) {
  auto doc = std::make_unique<CQen>();
  return doc->Read(bytes.data(), bytes.size()) ? std::move(doc) : nullptr;
}

TEST(QenWrite, WritesWhatItRead) {
  const auto doc = DocumentOf(QenDocumentBytes());
  ASSERT_NE(doc, nullptr);
  const TempFile file;
  EXPECT_TRUE(doc->Write(file.Path()));
  EXPECT_EQ(file.Content(), QenDocumentBytes());
}

TEST(QenWrite, ReplacesALongerFile) {
  const auto doc = DocumentOf(QenInfoBytes().Add(Chunk(25, {})));
  ASSERT_NE(doc, nullptr);
  const TempFile file(QenDocumentBytes());
  EXPECT_TRUE(doc->Write(file.Path()));
  EXPECT_EQ(file.Content(), QenInfoBytes().Add(Chunk(25, {})));
}

TEST(QenWrite, WithoutMapDataWritesTheInfoAndFails) {
  const auto doc = DocumentOf(QenDocumentBytes());
  ASSERT_NE(doc, nullptr);
  doc->MapData.reset();
  const TempFile file;
  EXPECT_FALSE(doc->Write(file.Path()));
  EXPECT_EQ(file.Content(), QenInfoBytes());
}

TEST(QenWrite, RecomputesSizesAfterAChange) {
  const auto doc = DocumentOf(QenInfoBytes().Add(MapDataBytes({LineBytes({{1, 2}})})));
  ASSERT_NE(doc, nullptr);
  CLayerData* layer = doc->MapData->MeshSegmentSet->GetElem(0)->LayerSet->GetElem(0);
  CObjSet* objects = layer->ZIdObjSet->GetElem(0)->ObjSet.get();
  objects->SubChunkSet(0, new CLineObj);
  const TempFile file;
  EXPECT_TRUE(doc->Write(file.Path()));
  EXPECT_EQ(file.Content(), QenInfoBytes().Add(MapDataBytes({LineBytes({{1, 2}}), LineBytes({})})));
}

TEST(QenWrite, APathThatCannotBeCreatedFails) {
  const auto doc = DocumentOf(QenDocumentBytes());
  ASSERT_NE(doc, nullptr);
  EXPECT_FALSE(doc->Write("/nonexistent/map.qen"));
  EXPECT_FALSE(doc->Write(::testing::TempDir()));
}

TEST(QenWrite, AFullDiskFails) {
  const auto doc = DocumentOf(QenDocumentBytes());
  ASSERT_NE(doc, nullptr);
  EXPECT_FALSE(doc->Write("/dev/full"));
}

TEST(QenWrite, AFileThatRefusesTheInfoGetsNoMapData) {
  const auto doc = DocumentOf(QenDocumentBytes());
  FaultyFile file(0);
  EXPECT_FALSE(doc->Write(&file));
  EXPECT_TRUE(file.GetBytes().empty());
}

TEST(QenCopy, CloneCopiesInfoAndMapData) {
  const auto doc = DocumentOf(QenDocumentBytes());
  ASSERT_NE(doc, nullptr);
  const std::unique_ptr<CQen> clone(doc->Clone());
  ASSERT_NE(clone, nullptr);
  EXPECT_NE(clone->MapData, doc->MapData);
  CMemFile file;
  ASSERT_TRUE(clone->Write(&file));
  EXPECT_EQ(Bytes(file.GetBytes()), QenDocumentBytes());
}

TEST(QenCopy, DeepCopyReplacesTheMapDataAndDestroysTheOld) {
  CQen target;
  target.MapData = std::make_unique<Counted<CQenMapData>>();
  CQen source;
  source.Revision = 9;
  target.DeepCopy(&source);
  EXPECT_EQ(Counted<CQenMapData>::Alive(), 0);
  EXPECT_EQ(target.MapData, nullptr);
  EXPECT_EQ(target.Revision, 9U);
}

}  // namespace
}  // namespace qenzor::testing
