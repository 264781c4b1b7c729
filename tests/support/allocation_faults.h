#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <vector>

#include "qenzor/platform/slab.h"
#include "tests/support/allocations.h"

// The leak detector's, where there is one.
extern "C" void __lsan_disable() __attribute__((weak));
extern "C" void __lsan_enable() __attribute__((weak));

namespace qenzor::testing {

/// What an operation does when memory runs out.
enum class OnFault { kGivesNothing, kThrows };

/// What is left behind then: nothing, or what the XML parser loses of its own, which no caller can
/// get at. A leak detector is not told of the latter.
enum class Leaks { kNone, kOfParser };

// Small objects come from slabs, of which the library keeps a few when they are empty.

inline constexpr std::size_t kSlabBlock = 4096;

/// Takes blocks until so many slabs had to be made anew: those that were kept are then in use, and
/// the first of the blocks is the first of the open slab. No blocks where there are no slabs, as
/// under a sanitizer.
inline std::vector<void*> TakeSlabs(long count) {
  static bool s_hasSlabs = true;
  constexpr std::size_t kMostBlocks = 2 * 1024 * 1024 / kSlabBlock + 1;
  std::vector<void*> blocks;
  if (!s_hasSlabs) return blocks;
  blocks.reserve(kMostBlocks);
  const long slabs = ProgramAllocations().Slabs;
  while (blocks.size() < kMostBlocks && ProgramAllocations().Slabs < slabs + count)
    blocks.push_back(AllocateBlock(kSlabBlock));
  s_hasSlabs = ProgramAllocations().Slabs == slabs + count;
  return blocks;
}

inline void GiveBack(const std::vector<void*>& blocks) {
  for (void* block : blocks) FreeBlock(block, kSlabBlock);
}

/// Gives the open slab up and opens a new one, so that a slab lives on only if something in it
/// does; as many as can be are kept afterwards.
inline void RenewSlab() {
  constexpr long kMoreThanAreKept = 4;
  GiveBack(TakeSlabs(kMoreThanAreKept));
}

/// Fills the open slab but for so many units of 16 bytes, and keeps no other.
class FullSlab {
 public:
  explicit FullSlab(std::size_t units_left) {
    static const std::size_t s_units = CountUnits();
    m_blocks = TakeSlabs(1);
    m_blocks.reserve(m_blocks.size() + s_units);
    for (std::size_t i = 0; i + units_left < s_units; ++i) m_blocks.push_back(AllocateBlock(kUnit));
  }
  ~FullSlab() { GiveBack(m_blocks); }
  FullSlab(const FullSlab&) = delete;
  FullSlab& operator=(const FullSlab&) = delete;

 private:
  static constexpr std::size_t kUnit = 16;

  /// The units of a new slab behind its first block; 0 where there are no slabs.
  static std::size_t CountUnits() {
    constexpr std::size_t kMost = 2 * 1024 * 1024 / kUnit;
    std::vector<void*> units;
    units.reserve(kMost);
    const std::vector<void*> blocks = TakeSlabs(1);
    const long slabs = ProgramAllocations().Slabs;
    while (!blocks.empty() && units.size() < kMost && ProgramAllocations().Slabs == slabs)
      units.push_back(AllocateBlock(kUnit));
    const std::size_t count = units.empty() ? 0 : units.size() - 1;
    GiveBack(units);
    GiveBack(blocks);
    return count;
  }

  std::vector<void*> m_blocks;
};

/// Runs the operation once with the faults set; what it gives goes to check when it gives
/// anything. True when a fault was met.
template <class Run, class Check>
bool RunWithFault(OnFault on_fault, const Allocations& fault, const Run& run, const Check& check) {
  Allocations& counts = ProgramAllocations();
  bool threw = false;
  decltype(run()) result{};
  counts.Failed = 0;
  counts.Left = fault.Left;
  counts.FailsOnce = fault.FailsOnce;
  counts.SlabsOnly = fault.SlabsOnly;
  try {
    result = run();
  } catch (const std::bad_alloc&) {
    threw = true;
  }
  counts.Left = Allocations::kNever;
  counts.SlabsOnly = false;
  const bool met = counts.Failed > 0;
  if (on_fault == OnFault::kGivesNothing) {
    EXPECT_FALSE(threw);
  }
  // What could do without the memory must be as good as ever.
  if (result) {
    check(result);
  } else if (!threw) {
    EXPECT_TRUE(met && on_fault == OnFault::kGivesNothing);
  }
  return met;
}

/// Runs an operation again and again, with the k-th allocation failing for every k, alone or with
/// all after it, and with every amount of room for small objects: it must do what on_fault says,
/// and leave nothing behind. Run gives something that tells success as a bool; check tests it.
template <class Run, class Check>
void ExpectSurvivesFaults(OnFault on_fault, const Run& run, const Check& check,
                          Leaks leaks = Leaks::kNone) {
  {
    const auto warm = run();
    ASSERT_TRUE(static_cast<bool>(warm));
    check(warm);
  }
  RenewSlab();
  const bool hide = leaks == Leaks::kOfParser && __lsan_disable != nullptr;
  if (hide) __lsan_disable();
  const long live = ProgramAllocations().Live;
  const auto is_clean = [&] {
    RenewSlab();
    return leaks == Leaks::kOfParser || ProgramAllocations().Live == live;
  };
  bool met_any = false;
  for (const bool once : {false, true}) {
    Allocations fault;
    fault.FailsOnce = once;
    bool met = true;
    for (fault.Left = 0; met; ++fault.Left) {
      met = RunWithFault(on_fault, fault, run, check);
      met_any = met_any || met;
      ASSERT_TRUE(is_clean()) << "allocation " << fault.Left << " once " << once;
      ASSERT_FALSE(::testing::Test::HasFailure())
          << "allocation " << fault.Left << " once " << once;
    }
  }
  Allocations fault;
  fault.Left = 0;
  fault.SlabsOnly = true;
  bool met = true;
  for (std::size_t units = 0; met; ++units) {
    {
      const FullSlab full(units);
      met = RunWithFault(on_fault, fault, run, check);
      met_any = met_any || met;
    }
    ASSERT_TRUE(is_clean()) << "room for " << units;
    ASSERT_FALSE(::testing::Test::HasFailure()) << "room for " << units;
  }
  if (hide) __lsan_enable();
  EXPECT_TRUE(met_any) << "nothing was allocated";
}

}  // namespace qenzor::testing
