// A document read by path comes out as the same bytes do from memory, though only a window of the
// file is there at a time.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

#include "qenzor/qen/poly_obj.h"
#include "tests/support/chunk_io.h"
#include "tests/support/document_kinds.h"
#include "tests/support/temp_file.h"

namespace qenzor::testing {
namespace {

/// Both results, and whatever the documents hold then.
template <class Doc>
void ExpectSame(const Bytes& bytes, bool valid) {
  const TempFile file(bytes);
  Doc memory;
  EXPECT_EQ(memory.Read(bytes.data(), bytes.size()), valid) << bytes.size();
  Doc path;
  EXPECT_EQ(path.Read(file.Path()), valid) << bytes.size();
  CMemFile from_memory;
  CMemFile from_path;
  EXPECT_EQ(memory.Write(&from_memory), path.Write(&from_path));
  EXPECT_EQ(from_path.GetBytes() == from_memory.GetBytes(), true) << bytes.size();
}

Points Zigzag(std::size_t count) {
  Points points;
  for (std::size_t i = 0; i < count; ++i)
    points.push_back({static_cast<std::int32_t>(i % 1000), static_cast<std::int32_t>(i % 777)});
  return points;
}

Bytes LargeMap(std::size_t objects) {
  std::vector<Bytes> elements;
  for (std::size_t i = 0; i < objects; ++i)
    elements.push_back(i % 3 == 0 ? LabelBytes(u"label", InfoSetBytes(u"url"))
                                  : LineBytes(Zigzag(i % 50)));
  return QenInfoBytes().Add(MapDataBytes(elements));
}

TEST(PathReading, AMapOfManyWindowsIsTheSame) { ExpectSame<CQen>(LargeMap(12000), true); }

TEST(PathReading, EveryEndAroundAWindowIsTheSame) {
  const Bytes whole = LargeMap(4000);
  ASSERT_GT(whole.size(), 300000U);
  constexpr std::uint32_t kStep = 64 * 1024;
  for (std::uint32_t edge = kStep; edge < whole.size(); edge += kStep)
    for (std::uint32_t size = edge - 9; size <= edge + 9; size += 3)
      ExpectSame<CQen>(whole.Front(size), false);
}

TEST(PathReading, AnObjectLongerThanAPieceOfTheWindowIsTheSame) {
  const Points points = Zigzag(65535);
  const Bytes line = LineBytes(points);
  ExpectSame<CQen>(QenInfoBytes().Add(MapDataBytes({line, line, line})), true);
  const Bytes cut = QenInfoBytes().Add(MapDataBytes({line, line}));
  ExpectSame<CQen>(cut.Front(cut.size() - 1), false);
}

TEST(PathReading, ARingIsBoundedAsFromMemory) {
  const Bytes bytes = QenInfoBytes().Add(MapDataBytes({PolyBytes(1, {{0, 0}, {5, 5}, {90, 90}})}));
  const TempFile file(bytes);
  CQen map;
  ASSERT_TRUE(map.Read(file.Path()));
  const auto* poly = class_cast<CPolyObj>(map.MapData->MeshSegmentSet->GetElem(0)
                                              ->LayerSet->GetElem(0)
                                              ->ZIdObjSet->GetElem(0)
                                              ->ObjSet->GetElem(0));
  ASSERT_NE(poly, nullptr);
  EXPECT_EQ(poly->GetBoundRect(), (CRect{0, 0, 5, 5}));
}

TEST(PathReading, UnknownChunksMustHoldChunks) {
  const Bytes no_chunks("these bytes are no chunks");
  ExpectSame<CQen>(QenInfoBytes().Add(MapDataBytes({Chunk(99, no_chunks)})), false);
  ExpectSame<CQen>(QenInfoBytes().Add(MapDataBytes({Chunk(99, LineBytes({})), LineBytes({})})),
                   true);
}

TEST(PathReading, IndicesOfManyWindowsAreTheSame) {
  std::vector<std::uint32_t> indices(300000);
  for (std::size_t i = 0; i < indices.size(); ++i) indices[i] = static_cast<std::uint32_t>(i * i);
  std::vector<Bytes> sets = ThreeSets();
  sets[0] = SetChunk(id::kDrawAtterSet, {AtterBytes(1, indices), AtterBytes(2, indices)});
  const Bytes bytes = ZorInfoBytes().Add(DrawDataBytes(sets));
  ExpectSame<CZor>(bytes, true);
  ExpectSame<CZor>(bytes.Front(1000000), false);
}

TEST(PathReading, MarksOfManyWindowsAreTheSame) {
  std::vector<Bytes> sets = ThreeSets();
  const Bytes mark =
      MarkBytes({1, 2, 3, 4}, std::vector<Bytes>(20000, MarkElemBytes(1, 2, 3, {{4, 5}})));
  sets[2] = SetChunk(id::kMarkDataSet, {mark, mark});
  ExpectSame<CZor>(ZorInfoBytes().Add(DrawDataBytes(sets)), true);
}

/// A raster draw info with a name of so many bytes, records, and a sub-chunk behind its fields as
/// they are counted: with 16 bits up to the records.
TEST(PathReading, FieldsBeyondSixteenBitsAreLeftAsInMemory) {
  constexpr std::uint32_t kNameBytes = 65530;
  for (const std::uint32_t records : {0U, 3U, 30000U}) {
    Bytes fields = Bytes().U16(kNameBytes).U16(0xFEFF);
    // The sub-chunks stand where the count says that the fields end: all empty unknown ones.
    fields.Add(Bytes(std::vector<std::uint8_t>(kNameBytes - 2, 0)));
    fields.U32(7).U16(records).Add(Bytes(std::vector<std::uint8_t>(records * 9, 0)));
    const std::uint32_t counted = kNameBytes + 8 - 65536 + records * 9;
    const Bytes info = Bytes().U32(15).U32(counted).Add(fields);
    std::vector<Bytes> sets = ThreeSets();
    // What lies over the rest of the fields are empty chunks, and the set ends with them.
    const Bytes set = Bytes().U32(6).U32(4 + 8 + counted + (65536 - counted % 8) / 8 * 8).U32(1);
    Bytes bytes = ZorInfoBytes();
    const Bytes body = Bytes(set).Add(info).Add(Bytes(std::vector<std::uint8_t>(70000, 0)));
    bytes.U32(id::kZorDrawData).U32(12 + 8 + counted + (65536 - counted % 8) / 8 * 8).Add(body);
    const TempFile file(bytes);
    CZor memory;
    const bool valid = memory.Read(bytes.data(), bytes.size());
    ExpectSame<CZor>(bytes, valid);
  }
}

TEST(PathReading, APipeIsReadAsItComes) {
  const Bytes bytes = LargeMap(12000).Add("what comes behind");
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  const pid_t writer = ::fork();
  if (writer == 0) {
    std::size_t done = 0;
    while (done < bytes.size()) {
      const ssize_t count =
          ::write(ends[1], bytes.data() + done, std::min<std::size_t>(bytes.size() - done, 10007));
      if (count <= 0) break;
      done += static_cast<std::size_t>(count);
    }
    ::_exit(0);
  }
  ::close(ends[1]);
  CQen memory;
  ASSERT_TRUE(memory.Read(bytes.data(), bytes.size()));
  CQen pipe;
  EXPECT_TRUE(pipe.Read("/dev/fd/" + std::to_string(ends[0])));
  char rest[4096];
  while (::read(ends[0], rest, sizeof rest) > 0) continue;
  EXPECT_EQ(::waitpid(writer, nullptr, 0), writer);
  ::close(ends[0]);
  EXPECT_EQ(Written(*pipe.MapData), Written(*memory.MapData));
}

TEST(PathReading, APipeThatEndsTooSoonFails) {
  const Bytes bytes = LargeMap(100);
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  ASSERT_EQ(::write(ends[1], bytes.data(), bytes.size() - 1),
            static_cast<ssize_t>(bytes.size() - 1));
  ::close(ends[1]);
  EXPECT_FALSE(CQen().Read("/dev/fd/" + std::to_string(ends[0])));
  ::close(ends[0]);
}

TEST(PathReading, DevicesAndFoldersAreNoDocuments) {
  for (const char* path : {"/dev/zero", "/dev/null", "/", "/nonexistent"}) {
    EXPECT_FALSE(CQen().Read(path)) << path;
    EXPECT_FALSE(CZor().Read(path)) << path;
  }
}

}  // namespace
}  // namespace qenzor::testing
