#pragma once

#include <cstdint>
#include <vector>

#include "bench/suite.h"

namespace qenzor::bench {

/// What a job took in a fresh process. Times are in nanoseconds, memory in KiB of resident set.
struct Sample {
  double First = 0;   ///< the first run
  double System = 0;  ///< what of it the processor spent in the system
  double Faults = 0;  ///< pages that the system supplied during it one by one
  double Warm = 0;    ///< median of the runs after it
  double Peak = 0;    ///< at most above the start of the first run, during it
  double End = 0;     ///< above the start of the first run, after it
};

/// What a job's time is: that on the wall, or what this process had of a processor, the system's
/// part included, which on a busy machine says more.
enum class Clock { kWall, kProcessor };

/// Runs a prepared job in this process: once and then, if warm is set, again for a while.
Sample Measure(const Job& job, Clock clock, bool warm);

/// Runs a job once; the nanoseconds that it took. A function of its own for tools that want to know
/// where what counts begins and ends.
double RunTimed(const Job& job, Clock clock);

/// The middle of the values, of which there is at least one; of two, the mean of both.
double Median(std::vector<double> values);

}  // namespace qenzor::bench
