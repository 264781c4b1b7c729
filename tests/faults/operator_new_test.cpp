// The operator new of this program: it counts, and fails on demand. The library allocates through
// it as well.

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <new>

#include "qenzor/qen/line_obj.h"
#include "tests/support/allocation_faults.h"

namespace qenzor::testing {

Allocations& ProgramAllocations() {
  static constinit Allocations s_allocations;
  return s_allocations;
}

namespace {

bool MustFail() {
  Allocations& counts = ProgramAllocations();
  if (counts.Left == Allocations::kNever) return false;
  if (counts.Left > 0) {
    --counts.Left;
    return false;
  }
  if (counts.FailsOnce) counts.Left = Allocations::kNever;
  ++counts.Failed;
  return true;
}

void* Make(std::size_t size) noexcept {
  if (MustFail()) return nullptr;
  void* block = std::malloc(size == 0 ? 1 : size);
  if (block != nullptr) {
    ++ProgramAllocations().Live;
    ++ProgramAllocations().Made;
  }
  return block;
}

void* MakeAligned(std::size_t size, std::align_val_t alignment) noexcept {
  if (MustFail()) return nullptr;
  void* block = nullptr;
  if (::posix_memalign(&block, static_cast<std::size_t>(alignment), size) != 0) return nullptr;
  ++ProgramAllocations().Live;
  ++ProgramAllocations().Made;
  return block;
}

void* OrThrow(void* block) {
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

void Drop(void* block) noexcept {
  if (block == nullptr) return;
  --ProgramAllocations().Live;
  std::free(block);
}

}  // namespace
}  // namespace qenzor::testing

using qenzor::testing::Drop;
using qenzor::testing::Make;
using qenzor::testing::MakeAligned;
using qenzor::testing::OrThrow;

void* operator new(std::size_t size) { return OrThrow(Make(size)); }
void* operator new[](std::size_t size) { return OrThrow(Make(size)); }
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept { return Make(size); }
void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return Make(size);
}
void* operator new(std::size_t size, std::align_val_t alignment) {
  return OrThrow(MakeAligned(size, alignment));
}
void* operator new(std::size_t size, std::align_val_t alignment,
                   const std::nothrow_t& /*tag*/) noexcept {
  return MakeAligned(size, alignment);
}
void operator delete(void* block) noexcept { Drop(block); }
void operator delete[](void* block) noexcept { Drop(block); }
void operator delete(void* block, std::size_t /*size*/) noexcept { Drop(block); }
void operator delete[](void* block, std::size_t /*size*/) noexcept { Drop(block); }
void operator delete(void* block, const std::nothrow_t& /*tag*/) noexcept { Drop(block); }
void operator delete[](void* block, const std::nothrow_t& /*tag*/) noexcept { Drop(block); }
void operator delete(void* block, std::align_val_t /*alignment*/) noexcept { Drop(block); }
void operator delete(void* block, std::size_t /*size*/, std::align_val_t /*alignment*/) noexcept {
  Drop(block);
}

namespace qenzor::testing {
namespace {

TEST(OperatorNew, CountsWhatTheLibraryAllocates) {
  const long before = ProgramAllocations().Made;
  CLineObjEdit edit;
  edit.Pt.resize(30000);
  const std::unique_ptr<CAbstractChunk> line(edit.EditDataToChunkData());
  EXPECT_GE(ProgramAllocations().Made - before, 2);
}

TEST(OperatorNew, AnObjectThatLivesIsSeen) {
  const long live = ProgramAllocations().Live;
  auto object = std::make_unique<CLineObj>();
  EXPECT_EQ(ProgramAllocations().Live, live + 1);
  object.reset();
  EXPECT_EQ(ProgramAllocations().Live, live);
}

TEST(OperatorNew, FailsTheLibraryOnDemand) {
  CLineObjEdit edit;
  edit.Pt.resize(30000);
  const long failed = ProgramAllocations().Failed;
  ProgramAllocations().Left = 0;
  EXPECT_THROW(
      {
        try {
          static_cast<void>(edit.EditDataToChunkData());
        } catch (...) {
          ProgramAllocations().Left = Allocations::kNever;
          throw;
        }
      },
      std::bad_alloc);
  EXPECT_GT(ProgramAllocations().Failed, failed);
}

}  // namespace
}  // namespace qenzor::testing
