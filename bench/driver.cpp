#include "bench/driver.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <iostream>
#include <sstream>

#include "bench/documents.h"
#include "bench/floors/map_tree.h"
#include "qenzor/qen/qen.h"
#include "qenzor/zor/zor.h"

namespace qenzor::bench {

namespace {

/// Set when the user wants an end. The folder with the documents must not stay behind.
volatile std::sig_atomic_t stopped = 0;

void StopOnSignals() {
  for (const int signal : {SIGINT, SIGTERM}) std::signal(signal, [](int) { stopped = 1; });
}

/// What a program says on its standard output.
std::string OutputOf(const std::vector<std::string>& command) {
  std::vector<char*> arguments;
  for (const std::string& argument : command)
    arguments.push_back(const_cast<char*>(argument.c_str()));
  arguments.push_back(nullptr);

  std::array<int, 2> ends{};
  Require(::pipe(ends.data()) == 0, "making a pipe");
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
  posix_spawn_file_actions_addclose(&actions, ends[0]);
  posix_spawn_file_actions_addclose(&actions, ends[1]);
  pid_t child = 0;
  const int error =
      ::posix_spawn(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  ::close(ends[1]);

  std::string output;
  std::array<char, 256> block{};
  ssize_t count = 0;
  while (error == 0 && (count = ::read(ends[0], block.data(), block.size())) > 0)
    output.append(block.data(), static_cast<std::size_t>(count));
  ::close(ends[0]);
  int status = 0;
  Require(error == 0 && ::waitpid(child, &status, 0) == child && status == 0, command.back());
  return output;
}

Sample RunJob(const std::string& job, std::vector<std::string> command) {
  if (stopped != 0) throw std::runtime_error("stopped by a signal");
  command.push_back(job);
  std::istringstream output(OutputOf(command));
  Sample sample;
  output >> sample.First >> sample.System >> sample.Faults >> sample.Warm >> sample.Peak >>
      sample.End;
  Require(!output.fail(), job);
  return sample;
}

Sample MedianOf(const std::vector<Sample>& samples) {
  const auto median = [&samples](double Sample::*member) {
    std::vector<double> values;
    for (const Sample& sample : samples) values.push_back(sample.*member);
    return Median(std::move(values));
  };
  return {median(&Sample::First), median(&Sample::System), median(&Sample::Faults),
          median(&Sample::Warm),  median(&Sample::Peak),   median(&Sample::End)};
}

std::string Content(const std::string& path) {
  const FileBytes file = ReadWholeFile(path);
  return {reinterpret_cast<const char*>(file.Data.get()), file.Size};
}

void WriteMapXml(const std::string& from, const std::string& to) {
  CQen map;
  Require(map.Read(from) && CQenTextConverter().ConvertChunkToText(to, map, 0), "writing XML");
}

void WriteDrawXml(const std::string& from, const std::string& to) {
  CZor draw;
  Require(draw.Read(from) && CZorTextConverter().ConvertChunkToText(to, draw, 0), "writing XML");
}

/// What the floors write must be what the library reads and writes, or they do other work.
void CheckFloors(const std::string& map, const Corpus& corpus) {
  const std::string output = corpus.Output();
  PlainMap plain = ReadPlainMap(map);
  PlainMap copy = CopyPlainMap(plain);
  WritePlainMap(copy, output);
  Require(Content(output) == Content(map), "comparing what the minimal writer wrote");
  WritePlainMapXml(copy, output);
  const std::string xml = Content(output);
  WriteMapXml(map, output);
  Require(Content(output) == xml, "comparing what the minimal XML writer wrote");
  std::filesystem::remove(output);
}

}  // namespace

void MakeCorpus(const Suite& suite, const Corpus& corpus) {
  StopOnSignals();
  const Sizes& sizes = corpus.GetSizes();
  const std::string parsed = corpus.Output() + "-parsed";
  WriteMapFile(MakeMap(sizes.ParsedMap), parsed);
  CheckFloors(parsed, corpus);
  WriteMapXml(parsed, corpus.ParsedXml());
  std::filesystem::remove(parsed);

  WriteMapFile(MakeMap(sizes.TinyMap), corpus.TinyMapFile());
  const Map map = MakeMap(sizes.Map);
  WriteMapFile(map, corpus.MapFile());
  WriteMapXml(corpus.MapFile(), corpus.MapXml());
  for (const auto& write : suite.Files) write(map);

  for (const std::size_t attributes : {sizes.Attributes, sizes.BaseAttributes}) {
    WriteDrawFile(MakeDrawData(attributes), corpus.DrawFile(attributes));
    WriteDrawXml(corpus.DrawFile(attributes), corpus.DrawXml(attributes));
  }
}

Results RunRounds(const std::vector<std::string>& jobs, int rounds,
                  const std::vector<std::string>& command) {
  std::map<std::string, std::vector<Sample>> samples;
  for (int round = 1; round <= rounds; ++round) {
    std::cerr << "round " << round << " of " << rounds << '\n';
    for (const std::string& job : jobs) samples[job].push_back(RunJob(job, command));
  }
  Results results;
  for (const auto& [job, of_job] : samples) results[job] = MedianOf(of_job);
  return results;
}

}  // namespace qenzor::bench
