#include <memory>

#include "bench/suite.h"
#include "qenzor/qen/qen.h"

namespace qenzor::bench {

namespace {

std::shared_ptr<CQen> Read(const std::string& path) {
  auto map = std::make_shared<CQen>();
  Require(map->Read(path), "reading " + path);
  return map;
}

std::shared_ptr<CQenEdit> Edit(CQen& map) {
  auto edit = std::make_shared<CQenEdit>();
  edit->QenDataToEditData(&map);
  return edit;
}

}  // namespace

void AddOurMapJobs(Suite& suite, const Corpus& corpus) {
  auto& jobs = suite.Jobs;
  const std::string output = corpus.Output();

  jobs["ours/map-read"] = [path = corpus.MapFile()] {
    return Making([path] { return Read(path); });
  };
  jobs["ours/map-write"] = [path = corpus.MapFile(), output] {
    return Writing(
        output, [map = Read(path)](const std::string& to) { Require(map->Write(to), "writing"); });
  };
  jobs["ours/map-to-xml"] = [path = corpus.MapFile(), output] {
    return Writing(output, [map = Read(path)](const std::string& to) {
      Require(CQenTextConverter().ConvertChunkToText(to, *map, 0), "writing XML");
    });
  };
  jobs["ours/map-from-xml"] = [path = corpus.ParsedXml()] {
    return Making([path] {
      std::unique_ptr<CQenEdit> edit(CQenTextConverter().ConvertTextToQenEdit(path));
      Require(edit != nullptr, "reading XML");
      return edit;
    });
  };
  jobs["ours/map-clone"] = [path = corpus.MapFile()] {
    return Making([map = Read(path)] {
      std::unique_ptr<CQen> clone(map->Clone());
      Require(clone != nullptr, "cloning");
      return clone;
    });
  };
  jobs["ours/map-to-edit"] = [path = corpus.MapFile()] {
    return Making([map = Read(path)] { return Edit(*map); });
  };
  jobs["ours/map-to-chunk"] = [path = corpus.MapFile()] {
    // The map that the edit form comes from stays, lest the first run find its memory free.
    auto map = Read(path);
    return Making([map, edit = Edit(*map)] {
      std::unique_ptr<CQen> chunk(edit->EditDataToQenData());
      Require(chunk != nullptr, "turning into chunks");
      return chunk;
    });
  };
  jobs["ours/tiny-read"] = [path = corpus.TinyMapFile()] {
    return Making([path] { return Read(path); });
  };
  jobs["ours/tiny-write"] = [path = corpus.TinyMapFile(), output] {
    return Rewriting(
        output, [map = Read(path)](const std::string& to) { Require(map->Write(to), "writing"); });
  };
}

}  // namespace qenzor::bench
