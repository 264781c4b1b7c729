#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <new>

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
  try {
    result = run();
  } catch (const std::bad_alloc&) {
    threw = true;
  }
  counts.Left = Allocations::kNever;
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
/// all after it: it must do what on_fault says, and leave nothing behind. Run gives something that
/// tells success as a bool; check tests it. It is small enough to take no slabs, so that each of
/// its objects is an allocation.
template <class Run, class Check>
void ExpectSurvivesFaults(OnFault on_fault, const Run& run, const Check& check,
                          Leaks leaks = Leaks::kNone) {
  {
    const auto warm = run();
    ASSERT_TRUE(static_cast<bool>(warm));
    check(warm);
  }
  const bool hide = leaks == Leaks::kOfParser && __lsan_disable != nullptr;
  if (hide) __lsan_disable();
  const long live = ProgramAllocations().Live;
  bool met_any = false;
  for (const bool once : {false, true}) {
    Allocations fault;
    fault.FailsOnce = once;
    bool met = true;
    for (fault.Left = 0; met; ++fault.Left) {
      met = RunWithFault(on_fault, fault, run, check);
      met_any = met_any || met;
      ASSERT_TRUE(leaks == Leaks::kOfParser || ProgramAllocations().Live == live)
          << "allocation " << fault.Left << " once " << once;
      ASSERT_FALSE(::testing::Test::HasFailure())
          << "allocation " << fault.Left << " once " << once;
    }
  }
  if (hide) __lsan_enable();
  EXPECT_TRUE(met_any) << "nothing was allocated";
}

}  // namespace qenzor::testing
