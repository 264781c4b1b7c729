#include "bench/table.h"

#include <algorithm>
#include <filesystem>
#include <iomanip>
#include <ostream>
#include <sstream>

namespace qenzor::bench {

namespace {

std::string Fixed(double value, int decimals) {
  std::ostringstream text;
  text << std::fixed << std::setprecision(decimals) << value;
  return text.str();
}

/// A ratio, bold where it misses its target.
std::string Ratio(double value, double target) {
  const std::string text = Fixed(value, 2);
  return target > 0 && value > target ? "**" + text + "**" : text;
}

}  // namespace

void WriteRatios(std::ostream& out, const std::vector<Row>& rows, const Results& results) {
  out << "| job | against | at most | first run | warm |\n|---|---|---|---|---|\n";
  for (const Row& row : rows) {
    out << "| " << row.Work << " | " << row.Against << " | "
        << (row.Target > 0 ? Fixed(row.Target, 2) : "–") << " | ";
    const auto ours = results.find(row.Ours);
    const auto other = results.find(row.Other);
    if (ours == results.end() || other == results.end()) {
      out << "not built | not built |\n";
      continue;
    }
    const double first = ours->second.First / other->second.First / row.Parts;
    const double warm = ours->second.Warm / other->second.Warm / row.Parts;
    out << (row.WarmOnly ? "–" : Ratio(first, row.Target)) << " | " << Ratio(warm, row.Target)
        << " |\n";
  }
}

void WriteMemory(std::ostream& out, const std::vector<MemoryRow>& rows, const Results& results) {
  const auto measured = [&results](const MemoryRow& row) { return results.contains(row.Job); };
  if (std::none_of(rows.begin(), rows.end(), measured)) return;
  constexpr double kKib = 1024;
  out << "| job | at most | peak MiB | end MiB | peak per byte | end per byte |\n"
         "|---|---|---|---|---|---|\n";
  for (const MemoryRow& row : rows) {
    if (!measured(row)) continue;
    const Sample& sample = results.at(row.Job);
    const auto bytes = static_cast<double>(std::filesystem::file_size(row.File));
    out << "| " << row.Work << " | " << row.Target << " | " << Fixed(sample.Peak / kKib, 1) << " | "
        << Fixed(sample.End / kKib, 1) << " | " << Fixed(sample.Peak * kKib / bytes, 2) << " | "
        << Fixed(sample.End * kKib / bytes, 2) << " |\n";
  }
  out << '\n';
}

void WriteTimes(std::ostream& out, const Results& results) {
  constexpr double kMilliseconds = 1e6;
  out << "| job | first run, ms | of it in the system | page faults | warm, ms |\n"
         "|---|---|---|---|---|\n";
  for (const auto& [job, sample] : results)
    out << "| `" << job << "` | " << Fixed(sample.First / kMilliseconds, 3) << " | "
        << Fixed(sample.System / kMilliseconds, 3) << " | " << Fixed(sample.Faults, 0) << " | "
        << Fixed(sample.Warm / kMilliseconds, 3) << " |\n";
}

}  // namespace qenzor::bench
