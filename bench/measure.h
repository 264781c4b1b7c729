#pragma once

#include <cstdint>
#include <vector>

#include "bench/suite.h"

namespace qenzor::bench {

/// What a job took in a fresh process. Times are in nanoseconds, memory in KiB of resident set.
struct Sample {
  double First = 0;  ///< the first run
  double Warm = 0;   ///< median of the runs after it
  double Peak = 0;   ///< at most above the start of the first run, during it
  double End = 0;    ///< above the start of the first run, after it
};

/// Runs a prepared job in this process: once and then, if warm is set, again for a while.
Sample Measure(const Job& job, bool warm);

/// Runs a job once; the nanoseconds that it took. A function of its own for tools that want to know
/// where what counts begins and ends.
double RunTimed(const Job& job);

/// The middle of the values, of which there is at least one; of two, the mean of both.
double Median(std::vector<double> values);

}  // namespace qenzor::bench
