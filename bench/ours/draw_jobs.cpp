#include <memory>

#include "bench/suite.h"
#include "qenzor/zor/zor.h"

namespace qenzor::bench {

namespace {

std::shared_ptr<CZor> Read(const std::string& path) {
  auto draw = std::make_shared<CZor>();
  Require(draw->Read(path), "reading " + path);
  return draw;
}

std::shared_ptr<CZorEdit> Edit(CZor& draw) {
  auto edit = std::make_shared<CZorEdit>();
  edit->ZorDataToEditData(&draw);
  return edit;
}

}  // namespace

void AddOurDrawJobs(Suite& suite, const Corpus& corpus, std::size_t attributes) {
  const auto job = [&suite, count = "/" + std::to_string(attributes)](
                       const std::string& name) -> std::function<Job()>& {
    return suite.Jobs["ours/draw-" + name + count];
  };
  const std::string path = corpus.DrawFile(attributes);
  const std::string output = corpus.Output();

  job("read") = [path] { return Making([path] { return Read(path); }); };
  job("write") = [path, output] {
    return Writing(output, [draw = Read(path)](const std::string& to) {
      Require(draw->Write(to), "writing");
    });
  };
  job("to-xml") = [path, output] {
    return Writing(output, [draw = Read(path)](const std::string& to) {
      Require(CZorTextConverter().ConvertChunkToText(to, *draw, 0), "writing XML");
    });
  };
  job("from-xml") = [path = corpus.DrawXml(attributes)] {
    return Making([path] {
      std::unique_ptr<CZorEdit> edit(CZorTextConverter().ConvertTextToZorEdit(path));
      Require(edit != nullptr, "reading XML");
      return edit;
    });
  };
  job("to-edit") = [path] { return Making([draw = Read(path)] { return Edit(*draw); }); };
  job("to-chunk") = [path] {
    // The document that the edit form comes from stays, lest the first run find its memory free.
    auto draw = Read(path);
    return Making([draw, edit = Edit(*draw)] {
      std::unique_ptr<CZor> chunk(edit->EditDataToZorData());
      Require(chunk != nullptr, "turning into chunks");
      return chunk;
    });
  };
  job("find") = [path, attributes] {
    return Job{[draw = Read(path), keys = ShuffledKeys(attributes)] {
                 std::size_t found = 0;
                 for (const std::uint64_t key : keys)
                   found += draw->DrawData.DrawAtterSet->GetElem(key) != nullptr ? 1 : 0;
                 Require(found == keys.size(), "finding keys");
               },
               [] {}};
  };
}

}  // namespace qenzor::bench
