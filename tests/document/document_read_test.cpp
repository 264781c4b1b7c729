// Documents read with a reason for every failure.

#include <gtest/gtest.h>
#include <unistd.h>

#include "qenzor/qen_document.h"
#include "qenzor/zor_document.h"
#include "tests/support/chunk_io.h"
#include "tests/support/document_kinds.h"
#include "tests/support/faulty_file.h"
#include "tests/support/temp_file.h"

namespace qenzor::testing {
namespace {

std::span<const std::uint8_t> SpanOf(const Bytes& bytes) { return {bytes.data(), bytes.size()}; }

/// The failure of reading the bytes, the same from a path, memory and pipe.
Failure FailureOfMap(const Bytes& bytes) {
  const auto memory = ReadQen(SpanOf(bytes));
  EXPECT_FALSE(memory);
  const TempFile file(bytes);
  const auto path = ReadQen(file.Path());
  EXPECT_FALSE(path);
  EXPECT_EQ(path.GetFailure().Path, file.Path());
  EXPECT_EQ(path.GetFailure().Offset, memory.GetFailure().Offset);
  EXPECT_EQ(path.GetFailure().ChunkPath, memory.GetFailure().ChunkPath);
  EXPECT_EQ(path.GetFailure().Reason, memory.GetFailure().Reason);
  return memory.GetFailure();
}

constexpr const char* kObjSetPath =
    "MeshSegmentSet/MeshSegment[0]/LayerSet/LayerData[0]/ZIdObjSet/ZIdObj[0]/ObjSet";

TEST(DocumentRead, GivesWhatReadingGives) {
  const Bytes map = QenKind::DocumentBytes();
  const TempFile map_file(map);
  CMemFile map_memory(map.vector());
  for (const auto& result : {ReadQen(SpanOf(map)), ReadQen(map_file.Path()), ReadQen(map_memory)}) {
    ASSERT_TRUE(result) << result.GetFailure().Describe();
    CMemFile out;
    ASSERT_TRUE(result->Write(&out));
    EXPECT_EQ(Bytes(out.GetBytes()), map);
  }
  const Bytes zor = ZorKind::DocumentBytes();
  const TempFile zor_file(zor);
  const auto edit = ReadZorEdit(zor_file.Path());
  ASSERT_TRUE(edit);
  const std::unique_ptr<CZor> back(edit->EditDataToZorData());
  EXPECT_NE(back->DrawData.DrawInfoSet, nullptr);
}

TEST(DocumentRead, AFileThatIsNotThereCannotBeOpened) {
  const auto result = ReadQen("/nonexistent/a.qen");
  ASSERT_FALSE(result);
  EXPECT_EQ(result.GetFailure().Kind, FailureKind::kCannotOpen);
  EXPECT_EQ(result.GetFailure().Describe(), "/nonexistent/a.qen: No such file or directory");
  EXPECT_EQ(ReadZor("/dev/zero").GetFailure().Describe(), "/dev/zero: neither a file nor a pipe");
}

TEST(DocumentRead, AFrontThatIsCutIsToldAsSuch) {
  const Bytes map = QenKind::DocumentBytes();
  EXPECT_EQ(FailureOfMap(map.Front(41)).Describe(),
            "byte 41: QenMapData: truncated: the file info takes 42 bytes");
  EXPECT_EQ(FailureOfMap(map.Front(49)).Describe(),
            "byte 49: QenMapData: truncated: the root chunk's header is missing");
  EXPECT_EQ(FailureOfMap({}).Offset, 0U);
}

TEST(DocumentRead, ACutIsFoundWhereTheSizesPromiseMore) {
  const Bytes map = QenInfoBytes().Add(MapDataBytes({LineBytes({{1, 2}})}));
  const Failure failure = FailureOfMap(map.Front(map.size() - 1));
  EXPECT_EQ(failure.Kind, FailureKind::kDamaged);
  EXPECT_EQ(failure.Describe(), "byte 42: QenMapData: truncated: the data size is " +
                                    std::to_string(map.size() - 50) + ", but only " +
                                    std::to_string(map.size() - 51) + " bytes follow");
}

TEST(DocumentRead, AFieldThatIsCutTellsItsNameAndItsChunks) {
  const Bytes line = Chunk(id::kLineObj, Bytes().U16(5).I16(1).I16(2));
  const Bytes map = QenInfoBytes().Add(MapDataBytes({LineBytes({}), line}));
  const Failure failure = FailureOfMap(map);
  EXPECT_EQ(failure.Offset, map.size() - 4U);
  EXPECT_EQ(failure.ChunkPath, std::string(kObjSetPath) + "/LineObj[1]");
  EXPECT_EQ(failure.Reason, "Pt takes 20 bytes, but only 4 are there");
}

TEST(DocumentRead, FieldsLongerThanTheDataAreTold) {
  const Bytes line = Bytes().U32(id::kLineObj).U32(2).U16(1).I16(1).I16(2);
  const Bytes map = QenInfoBytes().Add(MapDataBytes({line}));
  const Failure failure = FailureOfMap(map);
  EXPECT_EQ(failure.Offset, map.size() - line.size());
  EXPECT_EQ(failure.ChunkPath, std::string(kObjSetPath) + "/LineObj[0]");
  EXPECT_EQ(failure.Reason, "the fields take 6 bytes, the data size is 2");
}

TEST(DocumentRead, ASubChunkThatRunsPastItsParentIsTold) {
  const Bytes line = LineBytes({{1, 2}});
  // The object set says that it ends four bytes before its line does.
  const Bytes set = Bytes().U32(id::kObjSet).U32(4 + line.size() - 4).U32(1).Add(line);
  const Bytes group = Bytes().U32(id::kZIdObj).U32(8 + set.size()).U64(1).Add(set);
  const Bytes layer = LayerBytes(1, SetChunk(id::kZIdObjSet, {group}));
  const Bytes segment = SegmentBytes(1, SetChunk(id::kLayerSet, {layer}));
  const Bytes map =
      QenInfoBytes().Add(Chunk(id::kQenMapData, SetChunk(id::kMeshSegmentSet, {segment})));
  const Failure failure = FailureOfMap(map);
  EXPECT_EQ(failure.Offset, map.size() - line.size());
  EXPECT_EQ(failure.ChunkPath, std::string(kObjSetPath) + "/LineObj[0]");
  EXPECT_EQ(failure.Reason,
            "runs past the end of its parent: the data size is 6, but only 2 bytes follow");
}

TEST(DocumentRead, AnotherDocumentIsToldFromADamagedOne) {
  const Bytes zor = ZorKind::DocumentBytes();
  const auto result = ReadQen(SpanOf(zor));
  ASSERT_FALSE(result);
  EXPECT_EQ(result.GetFailure().Kind, FailureKind::kNotSuchDocument);
  EXPECT_EQ(result.GetFailure().Offset, 42U);
  // A root chunk that could be read as well as the right one.
  const Bytes other = QenInfoBytes().Add(Chunk(id::kZorDrawData, {}));
  ASSERT_TRUE(CQen().Read(other.data(), other.size()));
  EXPECT_EQ(ReadQen(SpanOf(other)).GetFailure().Describe(),
            "byte 42: QenMapData: the root chunk has id 26, not 25");
}

TEST(DocumentRead, EveryCutHasAPlaceAndAReasonFromEverySource) {
  const Bytes whole = ZorKind::DocumentBytes();
  for (std::uint32_t size = 0; size < whole.size(); ++size) {
    const Bytes cut = whole.Front(size);
    CMemFile file(cut.vector());
    for (const auto& result : {ReadZor(SpanOf(cut)), ReadZor(file)}) {
      ASSERT_FALSE(result) << size;
      EXPECT_EQ(result.GetFailure().Kind, FailureKind::kDamaged) << size;
      EXPECT_FALSE(result.GetFailure().Reason.empty()) << size;
      EXPECT_FALSE(result.GetFailure().ChunkPath.empty()) << size;
      EXPECT_LE(result.GetFailure().Offset, std::optional<std::uint64_t>(size)) << size;
    }
  }
}

TEST(DocumentRead, OffsetsInAFileCountFromTheDocument) {
  const Bytes line = Chunk(id::kLineObj, Bytes().U16(5).I16(1).I16(2));
  const Bytes map = QenInfoBytes().Add(MapDataBytes({line}));
  CMemFile file(Bytes("in front").Add(map).vector());
  file.Seek(8, CFile::begin);
  const auto result = ReadQen(file);
  ASSERT_FALSE(result);
  EXPECT_EQ(result.GetFailure().Offset, map.size() - 4U);
  EXPECT_EQ(result.GetFailure().ChunkPath, std::string(kObjSetPath) + "/LineObj[0]");
}

TEST(DocumentRead, WhatTheCallersFileThrowsReachesHim) {
  ThrowingFile file(QenKind::DocumentBytes(), 5);
  EXPECT_THROW(static_cast<void>(ReadQen(file)), ThrowingFile::Thrown);
}

TEST(DocumentRead, StopsWhenItIsAskedTo) {
  const Bytes map = QenKind::DocumentBytes();
  const TempFile path(map);
  CMemFile file(map.vector());
  std::stop_source source;
  ReadOptions options;
  options.Stop = source.get_token();
  EXPECT_TRUE(ReadQen(path.Path(), options));
  source.request_stop();
  for (const auto& result :
       {ReadQen(path.Path(), options), ReadQen(SpanOf(map), options), ReadQen(file, options)}) {
    ASSERT_FALSE(result);
    EXPECT_EQ(result.GetFailure().Kind, FailureKind::kCancelled);
  }
}

TEST(DocumentRead, TellsHowFarItHasCome) {
  std::vector<Bytes> objects(20000, LineBytes({{1, 2}, {3, 4}}));
  const Bytes map = QenInfoBytes().Add(MapDataBytes(objects));
  const TempFile path(map);
  std::vector<std::uint64_t> told;
  ReadOptions options;
  options.Progress = [&](std::uint64_t done, std::uint64_t all) {
    EXPECT_EQ(all, map.size());
    told.push_back(done);
  };
  ASSERT_TRUE(ReadQen(path.Path(), options));
  ASSERT_GT(told.size(), 1U);
  EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
  EXPECT_EQ(told.back(), map.size());
}

TEST(DocumentRead, ALongerFileThanIsAllowedIsRefused) {
  const Bytes map = QenKind::DocumentBytes();
  const TempFile path(map);
  ReadOptions options;
  options.MostBytes = map.size();
  EXPECT_TRUE(ReadQen(path.Path(), options));
  options.MostBytes = map.size() - 1;
  EXPECT_EQ(ReadQen(path.Path(), options).GetFailure().Kind, FailureKind::kTooLarge);
  EXPECT_EQ(ReadQen(SpanOf(map), options).GetFailure().Kind, FailureKind::kTooLarge);
  CMemFile file(map.vector());
  EXPECT_EQ(ReadQen(file, options).GetFailure().Kind, FailureKind::kTooLarge);
}

}  // namespace
}  // namespace qenzor::testing
