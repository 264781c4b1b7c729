#include <pugixml.hpp>

#include "bench/suite.h"

namespace qenzor::bench {

void AddPugiXml(Suite& suite, const Corpus& corpus) {
  suite.Jobs["pugixml/save"] = [path = corpus.MapXml(), output = corpus.Output()] {
    auto document = std::make_shared<pugi::xml_document>();
    Require(static_cast<bool>(document->load_file(
                path.c_str(), pugi::parse_default | pugi::parse_declaration, pugi::encoding_utf8)),
            "loading XML");
    return Writing(output, [document](const std::string& to) {
      Require(document->save_file(to.c_str(), "\t", pugi::format_default, pugi::encoding_utf8),
              "saving XML");
    });
  };
}

}  // namespace qenzor::bench
