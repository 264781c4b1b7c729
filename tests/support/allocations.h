#pragma once

#include <cstddef>
#include <limits>

namespace qenzor::testing {

/// The allocations of a program whose operator new counts them and can be told to fail.
struct Allocations {
  static constexpr long kNever = std::numeric_limits<long>::max();

  /// Blocks that were made and not given back.
  long Live = 0;
  /// Blocks made so far.
  long Made = 0;
  /// Attempts until all fail, or until one does.
  long Left = kNever;
  bool FailsOnce = false;
  /// Attempts that were failed.
  long Failed = 0;
};

/// The counts of this program, which has one thread.
Allocations& ProgramAllocations();

/// While it lives no allocation fails, for what a test itself has to make.
class NoFaults {
 public:
  NoFaults() { ProgramAllocations().Left = Allocations::kNever; }
  ~NoFaults() { ProgramAllocations().Left = m_left; }
  NoFaults(const NoFaults&) = delete;
  NoFaults& operator=(const NoFaults&) = delete;

 private:
  long m_left = ProgramAllocations().Left;
};

}  // namespace qenzor::testing
