#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

#include "bench/content.h"

namespace qenzor::bench {

/// How large the documents are that are compared.
struct Sizes {
  std::size_t Map = 0;             ///< bytes of the map project
  std::size_t ParsedMap = 0;       ///< bytes of the map whose XML is parsed
  std::size_t TinyMap = 0;         ///< bytes of the small map project
  std::size_t Attributes = 0;      ///< draw attributes
  std::size_t BaseAttributes = 0;  ///< draw attributes of what those are held against
};

/// The folder in which all jobs find their input and leave their output.
class Corpus {
 public:
  Corpus(std::filesystem::path folder, const Sizes& sizes)
      : m_folder(std::move(folder)), m_sizes(sizes) {}

  const Sizes& GetSizes() const { return m_sizes; }
  std::string MapFile() const { return m_folder / "map.qen"; }
  std::string MapXml() const { return m_folder / "map.xml"; }
  std::string ParsedXml() const { return m_folder / "parsed.xml"; }
  std::string TinyMapFile() const { return m_folder / "tiny.qen"; }
  std::string DrawFile(std::size_t attributes) const {
    return m_folder / (std::to_string(attributes) + ".zor");
  }
  std::string DrawXml(std::size_t attributes) const {
    return m_folder / (std::to_string(attributes) + ".xml");
  }
  /// The map in the format of a peer.
  std::string PeerFile(const std::string& peer) const { return m_folder / ("map." + peer); }
  /// Where a job writes.
  std::string Output() const { return m_folder / "output"; }

 private:
  std::filesystem::path m_folder;
  Sizes m_sizes;
};

/// What is timed, and what cleans up after it untimed. Either throws when it fails.
struct Job {
  std::function<void()> Run;
  std::function<void()> Undo;
};

/// All contestants: how each job is prepared, and how the input of the peers is made.
struct Suite {
  std::map<std::string, std::function<Job()>> Jobs;
  std::vector<std::function<void(const Map&)>> Files;
};

void AddOurMapJobs(Suite& suite, const Corpus& corpus);
void AddOurDrawJobs(Suite& suite, const Corpus& corpus, std::size_t attributes);
void AddMapFloors(Suite& suite, const Corpus& corpus);
void AddDrawFloors(Suite& suite, const Corpus& corpus);
/// The peers that were there when this was built.
void AddPeers(Suite& suite, const Corpus& corpus);

inline Suite MakeSuite(const Corpus& corpus) {
  Suite suite;
  AddOurMapJobs(suite, corpus);
  AddOurDrawJobs(suite, corpus, corpus.GetSizes().Attributes);
  AddOurDrawJobs(suite, corpus, corpus.GetSizes().BaseAttributes);
  AddMapFloors(suite, corpus);
  AddDrawFloors(suite, corpus);
  AddPeers(suite, corpus);
  return suite;
}

inline void Require(bool done, const std::string& what) {
  if (!done) throw std::runtime_error(what + " failed");
}

/// A job that makes something, which is destroyed untimed.
template <class Make>
Job Making(Make make) {
  auto made = std::make_shared<std::optional<std::invoke_result_t<Make>>>();
  return {[made, make] { made->emplace(make()); }, [made] { made->reset(); }};
}

/// A job that writes a file, which is removed untimed.
template <class Write>
Job Writing(const std::string& path, Write write) {
  return {[path, write] { write(path); }, [path] { std::filesystem::remove(path); }};
}

/// A job that writes the same file again and again: to make and remove a small one would take
/// longer than what is to be timed.
template <class Write>
Job Rewriting(const std::string& path, Write write) {
  return {[path, write] { write(path); }, [] {}};
}

}  // namespace qenzor::bench
