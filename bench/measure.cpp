#include "bench/measure.h"

#include <algorithm>
#include <chrono>
#include <fstream>
#include <string>

namespace qenzor::bench {

namespace {

using Clock = std::chrono::steady_clock;

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

[[gnu::noinline]] double RunTimed(const Job& job) {
  const Clock::time_point start = Clock::now();
  job.Run();
  return std::chrono::duration<double, std::nano>(Clock::now() - start).count();
}

Sample Measure(const Job& job, bool warm) {
  constexpr std::size_t kFewest = 2;
  constexpr std::size_t kMost = 2000;
  constexpr std::chrono::milliseconds kLongEnough(500);

  ForgetPeak();
  const double before = MemoryStatus("VmRSS");
  Sample sample;
  sample.First = RunTimed(job);
  sample.Peak = MemoryStatus("VmHWM") - before;
  sample.End = MemoryStatus("VmRSS") - before;
  job.Undo();

  if (!warm) return sample;
  std::vector<double> times;
  const Clock::time_point start = Clock::now();
  while (times.size() < kFewest || (times.size() < kMost && Clock::now() - start < kLongEnough)) {
    times.push_back(RunTimed(job));
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
