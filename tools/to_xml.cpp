#include "tools/commands.h"
#include "tools/document.h"
#include "tools/progress.h"

namespace tool {

int RunToXml(const Options& options) {
  Progress progress(options.Quiet);
  progress.Stage("reading");
  const Input input(options.In);
  return WithKind(DetectBinary(input, options.Kind), [&]<class Kind>(Kind /*kind*/) {
    const auto document = ReadBinary<Kind>(input);
    progress.Stage("writing");
    WriteOutput(options.Out, [&](qenzor::CFile& file) {
      qenzor::CStdioFile text(file);
      typename Kind::Converter().ConvertChunkToText(text, *document, 0);
      text.Flush();
      return true;
    });
    return 0;
  });
}

}  // namespace tool
