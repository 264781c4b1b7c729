#include <cstring>

#include "bench/floors/draw_tree.h"
#include "bench/floors/map_tree.h"
#include "bench/suite.h"

namespace qenzor::bench {

namespace {

std::shared_ptr<PlainMap> ReadShared(const std::string& path) {
  return std::make_shared<PlainMap>(ReadPlainMap(path));
}

}  // namespace

void AddMapFloors(Suite& suite, const Corpus& corpus) {
  auto& jobs = suite.Jobs;
  const std::string output = corpus.Output();

  jobs["floor/map-memcpy"] = [path = corpus.MapFile()] {
    return Making([file = std::make_shared<FileBytes>(ReadWholeFile(path))] {
      auto copy = std::make_unique_for_overwrite<std::uint8_t[]>(file->Size);
      std::memcpy(copy.get(), file->Data.get(), file->Size);
      return copy;
    });
  };
  jobs["floor/map-read"] = [path = corpus.MapFile()] {
    return Making([path] { return ReadPlainMap(path); });
  };
  jobs["floor/map-write"] = [path = corpus.MapFile(), output] {
    return Writing(output,
                   [map = ReadShared(path)](const std::string& to) { WritePlainMap(*map, to); });
  };
  jobs["floor/map-to-xml"] = [path = corpus.MapFile(), output] {
    return Writing(output,
                   [map = ReadShared(path)](const std::string& to) { WritePlainMapXml(*map, to); });
  };
  jobs["floor/map-copy"] = [path = corpus.MapFile()] {
    return Making([map = ReadShared(path)] { return CopyPlainMap(*map); });
  };
  jobs["floor/tiny-read"] = [path = corpus.TinyMapFile()] {
    return Making([path] { return ReadPlainMap(path); });
  };
  jobs["floor/tiny-write"] = [path = corpus.TinyMapFile(), output] {
    return Rewriting(output,
                     [map = ReadShared(path)](const std::string& to) { WritePlainMap(*map, to); });
  };
}

void AddDrawFloors(Suite& suite, const Corpus& corpus) {
  auto& jobs = suite.Jobs;
  const std::size_t attributes = corpus.GetSizes().Attributes;
  const std::string path = corpus.DrawFile(attributes);

  jobs["floor/draw-read-list"] = [path] {
    return Making([path] { return ReadPlainDraw<AttributeList>(path); });
  };
  jobs["floor/draw-read-map"] = [path] {
    return Making([path] { return ReadPlainDraw<AttributeMap>(path); });
  };
  jobs["floor/draw-find"] = [path, attributes] {
    auto draw = std::make_shared<PlainDraw<AttributeMap>>(ReadPlainDraw<AttributeMap>(path));
    return Job{[draw, keys = ShuffledKeys(attributes)] {
                 std::size_t found = 0;
                 for (const std::uint64_t key : keys) {
                   const auto at = draw->Attributes.find(key);
                   found += at != draw->Attributes.end() && at->second != nullptr ? 1 : 0;
                 }
                 Require(found == keys.size(), "finding keys");
               },
               [] {}};
  };
}

}  // namespace qenzor::bench
