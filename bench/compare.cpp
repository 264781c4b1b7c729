// Holds the library against its peers and against what the work cannot avoid, on the same content,
// and prints tables of the ratios:
//
//     compare --size small --rounds 7 --only 'XML'
//
// Every job runs in a process of its own, which is this program with --job. To count the
// instructions of one, keep the files of an earlier run with --folder:
//
//     valgrind --tool=callgrind --toggle-collect='qenzor::bench::RunTimed*'
//       compare --folder FOLDER --once --job ours/map-read

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <optional>
#include <regex>

#include "bench/driver.h"
#include "bench/measure.h"
#include "bench/rows.h"
#include "bench/scratch_folder.h"
#include "bench/table.h"

namespace {

using namespace qenzor::bench;

constexpr std::size_t kKib = 1024;
constexpr std::size_t kMib = 1024 * kKib;

// The XML of a map is nine times as long, and its tree in TinyXML a hundred times: a larger map
// would ask for more memory than many a machine has.
constexpr Sizes kFull{64 * kMib, 8 * kMib, kKib, 1'000'000, 10'000};
constexpr Sizes kSmall{kMib, kMib, kKib, 10'000, 1'000};

struct Options {
  std::string Size = "full";
  int Rounds = 7;
  std::string Only = ".*";
  std::string Job;
  std::string Folder;
  bool Once = false;
  bool ProcessorTime = false;

  Clock GetClock() const { return ProcessorTime ? Clock::kProcessor : Clock::kWall; }
};

void RunOne(const Options& options, const Sizes& sizes) {
  const Suite suite = MakeSuite(Corpus(options.Folder, sizes));
  const Sample sample = Measure(suite.Jobs.at(options.Job)(), options.GetClock(), !options.Once);
  std::cout << std::setprecision(15) << sample.First << ' ' << sample.System << ' ' << sample.Faults
            << ' ' << sample.Warm << ' ' << sample.Peak << ' ' << sample.End << '\n';
}

std::vector<Row> ChosenRows(const Sizes& sizes, const std::regex& only) {
  std::vector<Row> rows = MakeRows(sizes);
  std::erase_if(rows, [&only](const Row& row) {
    return !std::regex_search(row.Work + " | " + row.Against, only);
  });
  return rows;
}

void RunAll(const Options& options, const Sizes& sizes) {
  std::optional<ScratchFolder> scratch;
  if (options.Folder.empty()) scratch.emplace();
  const std::filesystem::path folder =
      scratch ? scratch->Path() : std::filesystem::path(options.Folder);
  const Corpus corpus(folder, sizes);
  const Suite suite = MakeSuite(corpus);
  const std::vector<Row> rows = ChosenRows(sizes, std::regex(options.Only));
  std::vector<std::string> jobs;  // in the order of the rows: what is compared runs close together
  for (const Row& row : rows)
    for (const std::string& job : {row.Ours, row.Other})
      if (suite.Jobs.contains(job) && std::find(jobs.begin(), jobs.end(), job) == jobs.end())
        jobs.push_back(job);

  std::cerr << "making the documents\n";
  MakeCorpus(suite, corpus);
  std::vector<std::string> command{std::filesystem::read_symlink("/proc/self/exe"), "--size",
                                   options.Size, "--folder", folder};
  if (options.ProcessorTime) command.emplace_back("--processor-time");
  command.emplace_back("--job");
  const Results results = RunRounds(jobs, options.Rounds, command);
  std::cout << options.Rounds << " rounds; "
            << (options.ProcessorTime ? "processor time, the system's included"
                                      : "time on the wall")
            << "; map of " << std::filesystem::file_size(corpus.MapFile()) << " bytes.\n\n";
  WriteRatios(std::cout, rows, results);
  std::cout << '\n';
  WriteMemory(std::cout, MakeMemoryRows(corpus), results);
  WriteTimes(std::cout, results);
}

}  // namespace

int main(int argc, char** argv) {
  Options options;
  CLI::App app("Holds the library against its peers and floors");
  app.add_option("--size", options.Size, "small: 1 MiB and 10,000 draw attributes")
      ->check(CLI::IsMember({"small", "full"}));
  app.add_option("--rounds", options.Rounds, "how often every job runs")
      ->check(CLI::PositiveNumber);
  app.add_option("--only", options.Only, "regular expression on \"job | against\"");
  app.add_option("--job", options.Job, "run this job alone, in this process");
  app.add_option("--folder", options.Folder,
                 "make the files here, and keep them; with --job: where they are");
  app.add_flag("--processor-time", options.ProcessorTime,
               "not the time on the wall: for a machine on which other programs run");
  app.add_flag("--once", options.Once, "with --job: only the first run");
  CLI11_PARSE(app, argc, argv);

  try {
    const Sizes& sizes = options.Size == "full" ? kFull : kSmall;
    if (options.Job.empty())
      RunAll(options, sizes);
    else
      RunOne(options, sizes);
  } catch (const std::exception& error) {
    std::cerr << "compare: " << error.what() << '\n';
    return EXIT_FAILURE;
  }
  return EXIT_SUCCESS;
}
