#include "bench/rows.h"

namespace qenzor::bench {

namespace {

std::string Thousands(std::size_t number) {
  std::string text = std::to_string(number);
  for (std::size_t at = text.size(); at > 3;) text.insert(at -= 3, ",");
  return text;
}

std::string Megabytes(std::size_t bytes) { return std::to_string(bytes >> 20) + " MiB"; }

std::vector<Row> MapRows(const Sizes& sizes) {
  const std::string read = "file → tree";
  const std::string write = "tree → file";
  const std::string xml = "tree → XML file";
  const std::string parsed =
      sizes.ParsedMap == sizes.Map ? "" : " (" + Megabytes(sizes.ParsedMap) + " map)";
  return {
      {read, "minimal owning reader, file included", "ours/map-read", "floor/map-read", 1.0},
      {read, "protobuf parse from memory, heap", "ours/map-read", "protobuf/parse-heap", 0.40},
      {read, "protobuf parse from memory, arena", "ours/map-read", "protobuf/parse-arena", 0.45},
      {read, "FlatBuffers verify + unpack", "ours/map-read", "flatbuffers/unpack", 1.0},
      {write, "minimal writer with stored sizes", "ours/map-write", "floor/map-write", 0.95},
      {write, "protobuf serialise to file", "ours/map-write", "protobuf/write", 0.30},
      {xml, "minimal `to_chars` writer", "ours/map-to-xml", "floor/map-to-xml", 0.90},
      {xml, "pugixml save of the same text", "ours/map-to-xml", "pugixml/save", 0.50},
      {"XML file → edit tree" + parsed, "TinyXML `LoadFile` + freeing its tree",
       "ours/map-from-xml", "tinyxml/load", 0.75},
      {"chunk tree → edit tree", "minimal copy of the owning tree", "ours/map-to-edit",
       "floor/map-copy", 1.15},
      {"edit tree → chunk tree", "minimal copy of the owning tree", "ours/map-to-chunk",
       "floor/map-copy", 1.15},
      {"`Clone`", "minimal copy of the owning tree", "ours/map-clone", "floor/map-copy", 1.15},
  };
}

void AddDrawRows(std::vector<Row>& rows, const Sizes& sizes) {
  const std::string many = Thousands(sizes.Attributes);
  const std::string large = "/" + std::to_string(sizes.Attributes);
  const std::string base = "/" + std::to_string(sizes.BaseAttributes);
  const double parts =
      static_cast<double>(sizes.Attributes) / static_cast<double>(sizes.BaseAttributes);
  struct Scaled {
    std::string Work;
    std::string Job;
  };
  const std::vector<Scaled> scaled{{"read", "read"},
                                   {"write", "write"},
                                   {"chunk → edit", "to-edit"},
                                   {"edit → chunk", "to-chunk"},
                                   {"to XML", "to-xml"},
                                   {"from XML", "from-xml"}};
  for (const Scaled& each : scaled)
    rows.push_back({many + " draw attributes: " + each.Work + ", per element",
                    "the same at " + Thousands(sizes.BaseAttributes),
                    "ours/draw-" + each.Job + large, "ours/draw-" + each.Job + base, 2.0, parts});
  const std::string random = many + " draw attributes: read in random key order";
  rows.push_back({random, "minimal reader that files nothing (a list)", "ours/draw-read" + large,
                  "floor/draw-read-list", 1.6});
  rows.push_back({random, "minimal reader that files into `std::unordered_map`",
                  "ours/draw-read" + large, "floor/draw-read-map", 0.5});
  rows.push_back({"find " + many + " keys", "`std::unordered_map`", "ours/draw-find" + large,
                  "floor/draw-find", 0.7});
}

}  // namespace

std::vector<Row> MakeRows(const Sizes& sizes) {
  std::vector<Row> rows = MapRows(sizes);
  AddDrawRows(rows, sizes);
  rows.push_back({"1 KiB document, `Read`, warm", "minimal reader", "ours/tiny-read",
                  "floor/tiny-read", 1.5, 1, true});
  rows.push_back({"1 KiB document, `Write`, warm", "minimal writer", "ours/tiny-write",
                  "floor/tiny-write", 1.5, 1, true});
  rows.push_back({"file → tree", "memcpy of the file", "ours/map-read", "floor/map-memcpy"});
  const double parts = static_cast<double>(sizes.Map) / static_cast<double>(sizes.ParsedMap);
  const std::string size = ", per byte, at " + Megabytes(sizes.ParsedMap);
  rows.push_back({"file → tree", "libplist, binary, parse from memory" + size, "ours/map-read",
                  "libplist/parse", 0, parts});
  rows.push_back({"tree → file", "libplist, binary, to file" + size, "ours/map-write",
                  "libplist/write", 0, parts});
  return rows;
}

std::vector<MemoryRow> MakeMemoryRows(const Corpus& corpus) {
  const std::string map = corpus.MapFile();
  return {
      {"file → tree", "ours/map-read", map, "peak: the end + 1 MiB"},
      {"tree → file", "ours/map-write", map, "peak below 2 MiB"},
      {"tree → XML file", "ours/map-to-xml", map, "peak below 2 MiB"},
      {"XML file → edit tree", "ours/map-from-xml", corpus.ParsedXml(), "peak: the end + 4 MiB"}};
}

}  // namespace qenzor::bench
