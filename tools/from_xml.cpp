#include "tools/commands.h"
#include "tools/document.h"
#include "tools/failure.h"
#include "tools/progress.h"

namespace tool {

namespace {

BinaryKind KindOfXml(Input& input, std::optional<BinaryKind> given) {
  if (given) return *given;
  const Format format = DetectFormat(input, given);
  if (!format.IsXml)
    throw Failure(input.GetName(), "a binary document, not an XML one; to-xml reads it");
  if (!format.Kind) FailToReadXml(input, "\"Qen\" or \"Zor\"");
  return *format.Kind;
}

}  // namespace

int RunFromXml(const Options& options) {
  Progress progress(options.Quiet);
  progress.Stage("reading");
  Input input(options.In);
  return WithKind(KindOfXml(input, options.Kind), [&]<class Kind>(Kind /*kind*/) {
    const auto edit = ReadXml<Kind>(input);
    progress.Stage("converting");
    const auto document = MakeDocument<Kind>(*edit, input.GetName());
    const auto* root = Kind::RootOf(*document);
    if (root == nullptr)
      throw Failure(input.GetName(), "has no \"QenMapData\" element, so there is nothing to write");
    progress.Stage("writing");
    WriteBinary(options.Out, *document);
    return 0;
  });
}

}  // namespace tool
