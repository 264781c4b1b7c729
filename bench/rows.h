#pragma once

#include <string>
#include <vector>

#include "bench/suite.h"

namespace qenzor::bench {

/// A comparison: the time of one of the library's jobs divided by that of another job.
struct Row {
  std::string Work;
  std::string Against;
  std::string Ours;  ///< a name in Suite::Jobs, like the next
  std::string Other;
  double Target = 0;  ///< the ratio is to be at most this; 0 if there is no target
  double Parts = 1;   ///< how many times more elements ours handles; times are per element
  bool WarmOnly = false;
};

/// Memory that a job uses above what the process used before it.
struct MemoryRow {
  std::string Work;
  std::string Job;
  std::string File;  ///< what it is told per byte of
  std::string Target;
};

std::vector<Row> MakeRows(const Sizes& sizes);
std::vector<MemoryRow> MakeMemoryRows(const Corpus& corpus);

}  // namespace qenzor::bench
