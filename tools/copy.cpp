#include "tools/commands.h"
#include "tools/document.h"
#include "tools/progress.h"

namespace tool {

namespace {

template <class Kind>
std::unique_ptr<typename Kind::Document> Pass(std::unique_ptr<typename Kind::Document> document,
                                              Via via, const std::string& name) {
  if (via == Via::kChunk) return document;
  if (via == Via::kClone) return Owned(document->Clone());
  typename Kind::Edit edit;
  Kind::Fill(edit, *document);
  return MakeDocument<Kind>(edit, name);
}

}  // namespace

int RunCopy(const Options& options) {
  Progress progress(options.Quiet);
  progress.Stage("reading");
  const Input input(options.In);
  return WithKind(DetectBinary(input, options.Kind), [&]<class Kind>(Kind /*kind*/) {
    auto document = ReadBinary<Kind>(input);
    progress.Stage("copying");
    document = Pass<Kind>(std::move(document), options.Through, input.GetName());
    progress.Stage("writing");
    WriteBinary(options.Out, *document);
    return 0;
  });
}

}  // namespace tool
