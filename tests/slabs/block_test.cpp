// Blocks by themselves: sizes, alignment, who gives them back.

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdint>
#include <memory>
#include <new>
#include <thread>

#include "qenzor/platform/memory.h"
#include "qenzor/platform/slab.h"
#include "qenzor/qen/line_obj.h"
#include "tests/support/large_map.h"

namespace {

// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): the fault that a test sets
bool g_no_mappings = false;

}  // namespace

/// The program's own mmap, through which the library's calls go as well.
extern "C" void* mmap(void* place, size_t size, int protection, int flags, int file,
                      off_t offset) noexcept {
  if (g_no_mappings) return MAP_FAILED;
  return reinterpret_cast<void*>(::syscall(SYS_mmap, place, size, protection, flags, file, offset));
}

namespace qenzor::testing {
namespace {

bool IsAligned(const void* object, std::size_t alignment) {
  return reinterpret_cast<std::uintptr_t>(object) % alignment == 0;
}

TEST(Block, ABlockOfNoBytesIsABlock) {
  void* first = AllocateBlock(0);
  void* second = TryAllocateBlock(0);
  void* third = AllocateArrayBlock(0);
  EXPECT_NE(first, nullptr);
  EXPECT_NE(second, nullptr);
  EXPECT_NE(first, second);
  FreeBlock(first);
  FreeBlock(second);
  FreeBlock(third);
  FreeBlock(nullptr);
}

struct alignas(64) AlignedLine : CLineObj {
  double Value = 0;
};

TEST(Block, ClassesOfLargerAlignmentThanUsualStandAligned) {
  for (int i = 0; i < 20; ++i) {
    const auto before = std::make_unique<CLineObj>();
    const std::unique_ptr<CAbstractChunk> object = std::make_unique<AlignedLine>();
    EXPECT_TRUE(IsAligned(object.get(), 64));
    const std::unique_ptr<CAbstractChunk> other(new (std::nothrow) AlignedLine);
    EXPECT_TRUE(IsAligned(other.get(), 64));
  }
}

TEST(Block, EveryObjectAndArrayOfADocumentIsAlignedForAnyOrdinaryType) {
  const Bytes bytes = LargeMapBytes(2000, 5);
  CQen map;
  ASSERT_TRUE(map.Read(bytes.data(), bytes.size()));
  CObjSet& lines = LinesOf(map);
  for (std::uint32_t i = 0; i < lines.GetElemCount(); ++i) {
    const auto& line = static_cast<CLineObj&>(*lines.GetElem(i));
    ASSERT_TRUE(IsAligned(&line, alignof(std::max_align_t)));
    ASSERT_TRUE(IsAligned(line.Pt.data(), alignof(std::max_align_t)));
  }
}

struct Throwing : CLineObj {
  Throwing() { throw 1; }
};

TEST(Block, AConstructorThatThrowsLeavesNothingBehind) {
  EXPECT_THROW(static_cast<void>(new Throwing), int);
  EXPECT_THROW(static_cast<void>(new (std::nothrow) Throwing), int);
  alignas(Throwing) std::byte place[sizeof(Throwing)];
  EXPECT_THROW(static_cast<void>(new (place) Throwing), int);
}

TEST(Block, ADocumentMayDieOnAnotherThread) {
  const Bytes bytes = LargeMapBytes(5000, 20);
  for (int i = 0; i < 20; ++i) {
    auto map = std::make_unique<CQen>();
    ASSERT_TRUE(map->Read(bytes.data(), bytes.size()));
    std::thread([&map] { map.reset(); }).join();
  }
}

TEST(Block, WithoutMemoryForSlabsDocumentsAreReadAllTheSame) {
  const Bytes bytes = LargeMapBytes(5000, 20);
  ReleaseKeptMemory();
  CQen map;
  g_no_mappings = true;
  const bool read = map.Read(bytes.data(), bytes.size());
  const std::unique_ptr<CQen> clone(map.Clone());
  g_no_mappings = false;
  EXPECT_TRUE(read);
  ASSERT_NE(clone, nullptr);
  CMemFile file;
  EXPECT_TRUE(clone->Write(&file));
  EXPECT_EQ(Bytes(file.GetBytes()), bytes);
}

}  // namespace
}  // namespace qenzor::testing
