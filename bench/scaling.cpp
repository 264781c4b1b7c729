// How the cost of a draw attribute changes with the number of them: reading, writing, editing and
// XML of 10,000 to 1,000,000 draw attributes, with the order of growth that fits.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include "bench/documents.h"
#include "bench/scratch_folder.h"
#include "bench/suite.h"
#include "qenzor/zor/zor.h"

namespace {

using namespace qenzor;
using namespace qenzor::bench;

constexpr std::int64_t kFewest = 10'000;
constexpr std::int64_t kMost = 1'000'000;

/// A document of so many draw attributes, as a file; made when first asked for.
std::string DrawFile(const benchmark::State& state) {
  static const ScratchFolder folder;
  const auto attributes = static_cast<std::size_t>(state.range(0));
  const std::filesystem::path path = folder.Path() / (std::to_string(attributes) + ".zor");
  if (!std::filesystem::exists(path)) WriteDrawFile(MakeDrawData(attributes), path);
  return path;
}

std::string XmlFile(const benchmark::State& state) { return DrawFile(state) + ".xml"; }

std::unique_ptr<CZor> Read(const std::string& path) {
  auto draw = std::make_unique<CZor>();
  Require(draw->Read(path), "reading " + path);
  return draw;
}

void WriteXml(CZor& draw, const std::string& path) {
  Require(CZorTextConverter().ConvertChunkToText(path, draw, 0), "writing XML");
}

/// Times make; what it makes is destroyed untimed.
template <class Make>
void Loop(benchmark::State& state, Make make) {
  for (auto _ : state) {
    auto made = make();
    state.PauseTiming();
    Require(made != nullptr, "a job");
    made.reset();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
  state.SetComplexityN(state.range(0));
}

/// The same for what leaves nothing behind but a file.
template <class Write>
void WriteLoop(benchmark::State& state, Write write) {
  for (auto _ : state) write();
  state.SetItemsProcessed(state.iterations() * state.range(0));
  state.SetComplexityN(state.range(0));
}

void TimeReading(benchmark::State& state) {
  const std::string path = DrawFile(state);
  Loop(state, [&path] { return Read(path); });
}

void TimeWriting(benchmark::State& state) {
  const std::string path = DrawFile(state);
  const auto draw = Read(path);
  WriteLoop(state, [&] { Require(draw->Write(path + ".out"), "writing"); });
}

void TimeChunkToEdit(benchmark::State& state) {
  const auto draw = Read(DrawFile(state));
  Loop(state, [&draw] {
    auto edit = std::make_unique<CZorEdit>();
    edit->ZorDataToEditData(draw.get());
    return edit;
  });
}

void TimeEditToChunk(benchmark::State& state) {
  CZorEdit edit;
  edit.ZorDataToEditData(Read(DrawFile(state)).get());
  Loop(state, [&edit] { return std::unique_ptr<CZor>(edit.EditDataToZorData()); });
}

void TimeToXml(benchmark::State& state) {
  const auto draw = Read(DrawFile(state));
  WriteLoop(state, [&, path = XmlFile(state)] { WriteXml(*draw, path); });
}

void TimeFromXml(benchmark::State& state) {
  const std::string path = XmlFile(state);
  WriteXml(*Read(DrawFile(state)), path);
  Loop(state, [&path] {
    return std::unique_ptr<CZorEdit>(CZorTextConverter().ConvertTextToZorEdit(path));
  });
}

void Register(const char* name, void (*time)(benchmark::State&)) {
  benchmark::RegisterBenchmark(name, time)
      ->RangeMultiplier(10)
      ->Range(kFewest, kMost)
      ->Unit(benchmark::kMillisecond)
      ->Complexity(benchmark::oN);
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return EXIT_FAILURE;
  Register("read", TimeReading);
  Register("write", TimeWriting);
  Register("chunk to edit", TimeChunkToEdit);
  Register("edit to chunk", TimeEditToChunk);
  Register("to XML", TimeToXml);
  Register("from XML", TimeFromXml);
  benchmark::RunSpecifiedBenchmarks();
  return EXIT_SUCCESS;
}
