#pragma once

#include <map>
#include <string>
#include <vector>

#include "bench/measure.h"

namespace qenzor::bench {

/// The median of what a job took in all rounds, by the name of the job.
using Results = std::map<std::string, Sample>;

/// Makes the files that the jobs need, and checks that the floors read and write what the library
/// does. From here on SIGINT and SIGTERM end the rounds by an exception.
void MakeCorpus(const Suite& suite, const Corpus& corpus);

/// Runs every job once in each round, in turn, each time in a fresh process: command is this
/// program and its arguments but for the job's name. Progress goes to standard error. Throws
/// std::runtime_error when a job fails.
Results RunRounds(const std::vector<std::string>& jobs, int rounds,
                  const std::vector<std::string>& command);

}  // namespace qenzor::bench
