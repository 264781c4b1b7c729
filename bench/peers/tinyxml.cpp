#include <tinyxml.h>

#include "bench/suite.h"

namespace qenzor::bench {

void AddTinyXml(Suite& suite, const Corpus& corpus) {
  suite.Jobs["tinyxml/load"] = [path = corpus.ParsedXml()] {
    return Job{[path] {
                 TiXmlDocument document;
                 Require(document.LoadFile(path), "loading XML");
               },
               [] {}};
  };
}

}  // namespace qenzor::bench
