// How much memory reading takes, whatever a file claims. This program counts every allocation.

#include <gtest/gtest.h>
#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <new>
#include <random>
#include <string>
#include <vector>

#include "qenzor/qen_xml.h"
#include "qenzor/zor_xml.h"

namespace {

std::atomic<std::size_t> g_in_use{0};
std::atomic<std::size_t> g_peak{0};

void* Count(void* block) {
  if (block == nullptr) return nullptr;
  const std::size_t in_use = g_in_use += malloc_usable_size(block);
  if (in_use > g_peak) g_peak = in_use;
  return block;
}

void Release(void* block) {
  if (block != nullptr) g_in_use -= malloc_usable_size(block);
  std::free(block);
}

void* Require(void* block) {
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

std::size_t Align(std::align_val_t alignment) { return static_cast<std::size_t>(alignment); }

}  // namespace

void* operator new(std::size_t size) { return Require(Count(std::malloc(size))); }
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return Count(std::malloc(size));
}
void* operator new(std::size_t size, std::align_val_t alignment) {
  return Require(Count(std::aligned_alloc(Align(alignment), size)));
}
void* operator new(std::size_t size, std::align_val_t alignment,
                   const std::nothrow_t& /*tag*/) noexcept {
  return Count(std::aligned_alloc(Align(alignment), size));
}
void operator delete(void* block) noexcept { Release(block); }
void operator delete(void* block, std::size_t /*size*/) noexcept { Release(block); }
void operator delete(void* block, std::align_val_t /*alignment*/) noexcept { Release(block); }
void operator delete(void* block, std::size_t /*size*/, std::align_val_t /*alignment*/) noexcept {
  Release(block);
}

/// Without memory for slabs each object is an allocation that can be counted.
extern "C" void* mmap(void* /*place*/, size_t /*size*/, int /*protection*/, int /*flags*/,
                      int /*file*/, off_t /*offset*/) noexcept {
  return MAP_FAILED;
}

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t kAllowance = 1024 * 1024;
constexpr std::size_t kPerByte = 24;

void Put(Bytes& bytes, std::uint64_t value, int width) {
  for (int i = 0; i < width; ++i) bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
}

Bytes Chunk(std::uint32_t id, const Bytes& data) {
  Bytes chunk;
  Put(chunk, id, 4);
  Put(chunk, data.size(), 4);
  chunk.insert(chunk.end(), data.begin(), data.end());
  return chunk;
}

Bytes Repeat(std::size_t count, const Bytes& prefix, const Bytes& element) {
  Bytes bytes = prefix;
  for (std::size_t i = 0; i < count; ++i) bytes.insert(bytes.end(), element.begin(), element.end());
  return bytes;
}

Bytes Number(std::uint64_t value, int width) {
  Bytes bytes;
  Put(bytes, value, width);
  return bytes;
}

template <class Document>
std::size_t PeakOfReading(const Bytes& bytes) {
  const std::size_t before = g_in_use;
  g_peak = before;
  Document document;
  static_cast<void>(document.Read(bytes.data(), static_cast<std::uint32_t>(bytes.size())));
  // Reading from a path holds the file's bytes beside the tree.
  return g_peak - before + bytes.size();
}

template <class Document>
std::size_t PeakOfFileReading(const Bytes& bytes) {
  qenzor::CMemFile file(bytes);
  const std::size_t before = g_in_use;
  g_peak = before;
  Document document;
  static_cast<void>(document.Read(&file));
  return g_peak - before;
}

void ExpectWithinBounds(const Bytes& bytes) {
  const std::size_t most = kAllowance + kPerByte * bytes.size();
  EXPECT_LE(PeakOfReading<qenzor::CQen>(bytes), most);
  EXPECT_LE(PeakOfReading<qenzor::CZor>(bytes), most);
  EXPECT_LE(PeakOfFileReading<qenzor::CQen>(bytes), most);
  EXPECT_LE(PeakOfFileReading<qenzor::CZor>(bytes), most);
}

Bytes MapOf(const Bytes& layer_set_data) {
  Bytes segment = Number(0, 2);
  const Bytes set = Chunk(8, layer_set_data);
  segment.insert(segment.end(), set.begin(), set.end());
  Bytes file(42, 0);
  const Bytes root = Chunk(25, Chunk(29, Repeat(1, Number(1, 4), Chunk(30, segment))));
  file.insert(file.end(), root.begin(), root.end());
  return file;
}

Bytes DrawingOf(const Bytes& set) {
  Bytes file(19, 0);
  const Bytes root = Chunk(26, set);
  file.insert(file.end(), root.begin(), root.end());
  return file;
}

constexpr std::size_t kMany = 100000;

TEST(ReadingMemory, SmallestElementsStayWithinTheirShare) {
  ExpectWithinBounds(MapOf(Repeat(kMany, Number(kMany, 4), Chunk(7, Number(0, 2)))));
  const Bytes line = Chunk(9, Number(0, 2));
  const Bytes object_set = Chunk(22, Repeat(1, Number(0xFFFFFFFF, 4), line));
  Bytes z_id_obj = Number(1, 8);
  z_id_obj.insert(z_id_obj.end(), object_set.begin(), object_set.end());
  const Bytes z_id_set = Chunk(20, Repeat(kMany, Number(kMany, 4), Chunk(21, z_id_obj)));
  Bytes layer = Number(0, 2);
  layer.insert(layer.end(), z_id_set.begin(), z_id_set.end());
  ExpectWithinBounds(MapOf(Repeat(1, Number(1, 4), Chunk(7, layer))));
}

TEST(ReadingMemory, DrawAttributesStayWithinTheirShare) {
  Bytes set = Number(kMany, 4);
  for (std::size_t i = 0; i < kMany; ++i) {
    const Bytes atter = Chunk(3, Number(i * 7919, 8));
    set.insert(set.end(), atter.begin(), atter.end());
  }
  ExpectWithinBounds(DrawingOf(Chunk(2, set)));
}

TEST(ReadingMemory, MarkElementsWithoutPointsStayWithinTheirShare) {
  Bytes mark = Number(0, 8);
  Put(mark, 65535, 2);
  mark = Repeat(65535, mark, Bytes(10, 0));
  ExpectWithinBounds(DrawingOf(Chunk(24, Repeat(2, Number(2, 4), Chunk(11, mark)))));
}

/// Raster draw infos whose names lie over the chunks behind them, and end at once.
TEST(ReadingMemory, OverlappingTextsTakeTheMemoryOfTheirContent) {
  Bytes element = Number(15, 4);
  Put(element, 0, 4);
  Put(element, 0xFEFFFFF8, 8);
  const std::size_t count = 65536;
  Bytes set = Repeat(count, Number(count, 4), element);
  set.resize(set.size() + 65536);
  const Bytes document = DrawingOf(Chunk(6, set));
  ExpectWithinBounds(document);
  EXPECT_TRUE(qenzor::CZor().Read(document.data(), static_cast<std::uint32_t>(document.size())));
}

TEST(ReadingMemory, KeyedElementsDeclaredInExcessStayWithinTheirShare) {
  Bytes set = Repeat(kMany, Number(0xFFFFFFFF, 4), Chunk(3, Number(1, 8)));
  ExpectWithinBounds(DrawingOf(Chunk(2, set)));
  set.resize(4);
  set.resize(kMany * 16);
  ExpectWithinBounds(DrawingOf(Chunk(2, set)));
}

TEST(ReadingMemory, DeclaredCountsTakeNothing) {
  ExpectWithinBounds(DrawingOf(Chunk(23, Number(0xFFFFFFFF, 4))));
  ExpectWithinBounds(DrawingOf(Chunk(6, Number(0xFFFFFFFF, 4))));
  ExpectWithinBounds(DrawingOf(Chunk(2, Number(0xFFFFFFFF, 4))));
  Bytes line_info(9, 0);
  Put(line_info, 0xFFFF, 2);
  ExpectWithinBounds(DrawingOf(Chunk(6, Repeat(1, Number(1, 4), Chunk(10, line_info)))));
  Bytes mark(8, 0);
  Put(mark, 0xFFFF, 2);
  ExpectWithinBounds(DrawingOf(Chunk(24, Repeat(1, Number(1, 4), Chunk(11, mark)))));
}

TEST(ReadingMemory, DamagedDocumentsStayWithinBounds) {
  std::mt19937 random(20240229);
  for (const char* name : {"world.qen", "world.zor"}) {
    std::ifstream file(std::filesystem::path(QENZOR_SAMPLES) / name, std::ios::binary);
    const Bytes whole{std::istreambuf_iterator<char>(file), {}};
    ASSERT_FALSE(whole.empty());
    for (int i = 0; i < 200; ++i) {
      Bytes damaged = whole;
      for (int j = 0; j < 3; ++j) {
        const auto value = static_cast<std::uint32_t>(random() % 2 == 0 ? 0xFFFFFFFF : random());
        std::memcpy(damaged.data() + random() % (damaged.size() - 4), &value, 4);
      }
      damaged.resize(damaged.size() - random() % 64);
      ExpectWithinBounds(damaged);
    }
  }
}

/// A file of this test's own.
class File {
 public:
  explicit File(const Bytes& bytes)
      : m_path(std::filesystem::path(::testing::TempDir()) /
               ("qenzor-memory-" + std::to_string(::getpid()))) {
    std::ofstream(m_path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
  }
  ~File() {
    std::error_code ignored;
    std::filesystem::remove(m_path, ignored);
  }
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  const std::filesystem::path& Path() const { return m_path; }

 private:
  std::filesystem::path m_path;
};

template <class Document>
std::size_t PeakOfPathReading(const File& file) {
  const std::size_t before = g_in_use;
  g_peak = before;
  Document document;
  EXPECT_TRUE(document.Read(file.Path().string()));
  return g_peak - before;
}

/// By path, a document takes what it takes from memory, and little for its bytes.
template <class Document>
void ExpectNoCopy(const Bytes& bytes) {
  const std::size_t tree = PeakOfReading<Document>(bytes) - bytes.size();
  EXPECT_LE(PeakOfPathReading<Document>(File(bytes)), tree + kAllowance);
}

TEST(ReadingMemory, AFileIsNeverThereAsAWhole) {
  ExpectNoCopy<qenzor::CQen>(
      MapOf(Repeat(kMany * 10, Number(kMany * 10, 4), Chunk(7, Number(0, 2)))));
  Bytes mark = Number(0, 8);
  Put(mark, 65535, 2);
  mark = Repeat(65535, mark, Bytes(10, 0));
  ExpectNoCopy<qenzor::CZor>(DrawingOf(Chunk(24, Repeat(10, Number(10, 4), Chunk(11, mark)))));
  Bytes indices = Number(10000000, 4);
  indices.resize(indices.size() + std::size_t{40000000});
  Bytes atter = Number(1, 8);
  const Bytes index_set = Chunk(23, indices);
  atter.insert(atter.end(), index_set.begin(), index_set.end());
  ExpectNoCopy<qenzor::CZor>(DrawingOf(Chunk(2, Repeat(1, Number(1, 4), Chunk(3, atter)))));
}

TEST(ReadingMemory, AnEmptyRootInFourGigabytesOfZerosCostsAWindow) {
  const File file{Bytes()};
  std::error_code error;
  std::filesystem::resize_file(file.Path(), 0xFFFFFFFF, error);
  if (error) GTEST_SKIP() << "no room for a sparse file: " << error.message();
  EXPECT_LE(PeakOfPathReading<qenzor::CQen>(file), kAllowance);
  EXPECT_LE(PeakOfPathReading<qenzor::CZor>(file), kAllowance);
  std::filesystem::resize_file(file.Path(), 0x100000000);
  EXPECT_FALSE(qenzor::CQen().Read(file.Path().string()));
}

TEST(ReadingMemory, AllOfItComesBack) {
  const Bytes bytes = MapOf(Repeat(1000, Number(1000, 4), Chunk(7, Number(0, 2))));
  const std::size_t before = g_in_use;
  for (int i = 0; i < 100; ++i) ASSERT_GT(PeakOfReading<qenzor::CQen>(bytes), 2 * bytes.size());
  EXPECT_EQ(g_in_use, before);
}

struct XmlMemory {
  std::size_t Peak = 0;
  std::size_t Edit = 0;
};

template <class Parse>
XmlMemory MemoryOf(Parse&& parse) {
  const std::size_t before = g_in_use;
  g_peak = before;
  const auto edit = parse();
  return {g_peak - before, g_in_use - before};
}

std::string RepeatText(std::size_t bytes, const std::string& text) {
  std::string repeated;
  while (repeated.size() < bytes) repeated += text;
  return repeated;
}

constexpr std::size_t kXmlSize = 4 * 1024 * 1024;

std::string ObjectsXml(const std::string& objects) {
  return "<Qen><QenMapData><MeshSegmentSet><MeshSegment><LayerSet><LayerData><ZIdObjSet><ZIdObj>"
         "<ObjSet>" +
         objects +
         "</ObjSet></ZIdObj></ZIdObjSet></LayerData></LayerSet></MeshSegment></MeshSegmentSet>"
         "</QenMapData></Qen>";
}

TEST(XmlMemory, BesideTheEditFormFourMebibytesAreEnough) {
  constexpr std::size_t kMost = 4 * 1024 * 1024;
  const std::string points = RepeatText(2000, "<Pt x=\"12\" y=\"-34\" />\r\n\t");
  const std::string long_line =
      "<LineObj>" + RepeatText(1000000, "<Pt x=\"12\" y=\"-34\" />\r\n") + "</LineObj>";
  const std::string long_label =
      "<CmbLblObj><Text>" + RepeatText(1000000, "word &amp;") + "</Text></CmbLblObj>";
  const std::string comment = "<!--" + RepeatText(kXmlSize, "no more ") + "-->";
  for (const std::string& objects :
       {RepeatText(kXmlSize, "<LineObj>" + points + "</LineObj>"), RepeatText(kXmlSize, long_line),
        comment + "<LineObj>" + comment + "</LineObj>", RepeatText(kXmlSize, "stray text "),
        RepeatText(kXmlSize, "<a/>"), "<a>" + RepeatText(kXmlSize, "<b><c/></b>") + "</a>"}) {
    const std::string xml = ObjectsXml(objects);
    const XmlMemory memory = MemoryOf([&] { return qenzor::ParseQenXml(xml); });
    EXPECT_LE(memory.Peak, memory.Edit + kMost) << xml.substr(100, 40);
  }
  const std::string xml = ObjectsXml(long_label);
  const XmlMemory memory = MemoryOf([&] { return qenzor::ParseQenXml(xml); });
  EXPECT_LE(memory.Peak, 12 * xml.size());
}

TEST(XmlMemory, NoTextTakesMoreThanTwelveTimesItsSize) {
  const std::string tags = RepeatText(kXmlSize, "<a/>");
  for (const std::string& objects :
       {RepeatText(kXmlSize, "<LineObj/>"), RepeatText(kXmlSize, "<PolyObj/>"),
        RepeatText(kXmlSize, "<RasMMObj/>"), RepeatText(kXmlSize, "<CmbLblObj/>"),
        "<LineObj>" + RepeatText(kXmlSize, "<Pt/>") + "</LineObj>",
        "<PolyObj><Height>" + tags + "</Height></PolyObj>",
        "<LineObj><AddedObjInfoSet><UrlInfo>" + tags + "</UrlInfo></AddedObjInfoSet></LineObj>",
        "<LineObj><AddedObjInfoSet>" + RepeatText(kXmlSize, "<UrlInfo/>") +
            "</AddedObjInfoSet></LineObj>",
        "<CmbLblObj><Text>" + RepeatText(kXmlSize, "x") + "</Text></CmbLblObj>",
        "<a b='" + RepeatText(kXmlSize, "x") + "'/>"}) {
    const std::string xml = ObjectsXml(objects);
    const XmlMemory memory = MemoryOf([&] { return qenzor::ParseQenXml(xml); });
    EXPECT_LE(memory.Peak, 12 * xml.size() + kAllowance) << objects.substr(0, 60);
  }
  for (const std::string& sets :
       {"<DrawInfoSet>" + RepeatText(kXmlSize, "<LineDrawInfo/>") + "</DrawInfoSet>",
        "<DrawInfoSet><LineDrawInfo>" + RepeatText(kXmlSize, "<ScData/>") +
            "</LineDrawInfo></DrawInfoSet>",
        "<DrawAtterSet>" + RepeatText(kXmlSize, "<DrawAtter/>") + "</DrawAtterSet>",
        "<MarkDataSet>" + RepeatText(kXmlSize, "<MarkData/>") + "</MarkDataSet>"}) {
    const std::string xml = "<Zor><ZorDrawData>" + sets + "</ZorDrawData></Zor>";
    const XmlMemory memory = MemoryOf([&] { return qenzor::ParseZorXml(xml); });
    EXPECT_LE(memory.Peak, 12 * xml.size() + kAllowance) << sets.substr(0, 60);
  }
}

TEST(XmlMemory, AnEditFormThatIsGivenUpMakesRoomForTheChunks) {
  const std::string line =
      "<LineObj>" + RepeatText(2000, "<Pt x=\"12\" y=\"-34\" />") + "</LineObj>";
  const auto edit = qenzor::ParseQenXml(ObjectsXml(RepeatText(kXmlSize, line)));
  ASSERT_TRUE(edit);
  const std::size_t with_edit = g_in_use;
  g_peak = with_edit;
  const std::unique_ptr<qenzor::CQen> document(edit->TakeQenData());
  ASSERT_NE(document, nullptr);
  EXPECT_LE(g_peak, with_edit + kAllowance);
}

}  // namespace
