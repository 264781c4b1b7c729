#include "bench/measure.h"

#include <sys/resource.h>

#include <algorithm>
#include <ctime>
#include <fstream>
#include <string>

namespace qenzor::bench {

namespace {

/// Nanoseconds since some moment.
double Now(Clock clock) {
  std::timespec now{};
  ::clock_gettime(clock == Clock::kWall ? CLOCK_MONOTONIC : CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) * 1e9 + static_cast<double>(now.tv_nsec);
}

rusage Used() {
  rusage used{};
  ::getrusage(RUSAGE_SELF, &used);
  return used;
}

double Nanoseconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_usec) * 1e3;
}

/// A line of /proc/self/status, in KiB.
double MemoryStatus(const std::string& name) {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);)
    if (line.starts_with(name + ":")) return std::stod(line.substr(name.size() + 1));
  throw std::runtime_error("the system does not tell " + name);
}

/// Makes the highest memory use so far the present one. Where the system does not allow that, what
/// preparing took at its height is counted too.
void ForgetPeak() { std::ofstream("/proc/self/clear_refs") << "5"; }

}  // namespace

[[gnu::noinline]] double RunTimed(const Job& job, Clock clock) {
  const double start = Now(clock);
  job.Run();
  return Now(clock) - start;
}

Sample Measure(const Job& job, Clock clock, bool warm) {
  constexpr std::size_t kFewest = 2;
  constexpr std::size_t kMost = 2000;
  constexpr double kLongEnough = 5e8;

  ForgetPeak();
  const double before = MemoryStatus("VmRSS");
  Sample sample;
  const rusage used_before = Used();
  sample.First = RunTimed(job, clock);
  const rusage used = Used();
  sample.System = Nanoseconds(used.ru_stime) - Nanoseconds(used_before.ru_stime);
  sample.Faults = static_cast<double>(used.ru_minflt - used_before.ru_minflt);
  sample.Peak = MemoryStatus("VmHWM") - before;
  sample.End = MemoryStatus("VmRSS") - before;
  job.Undo();

  if (!warm) return sample;
  std::vector<double> times;
  const double start = Now(Clock::kWall);
  while (times.size() < kFewest ||
         (times.size() < kMost && Now(Clock::kWall) - start < kLongEnough)) {
    times.push_back(RunTimed(job, clock));
    job.Undo();
  }
  sample.Warm = Median(std::move(times));
  return sample;
}

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  const std::size_t middle = values.size() / 2;
  return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

}  // namespace qenzor::bench
