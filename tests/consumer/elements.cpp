// Hands an element of the parser to a converter, which needs the parser's header and library.

#include <tinyxml.h>

#include <cstdlib>
#include <memory>

#include "qenzor/qen/line_obj.h"

int main() {
  TiXmlDocument xml;
  xml.Parse(R"(<LineObj><Pt x="3" y="-4" /></LineObj>)");
  qenzor::CLineObjTextConverter converter;
  const std::unique_ptr<qenzor::CAbstractChunkEdit> edit(
      converter.ConvertStringToChunkEdit(xml.RootElement()));
  const auto* line = dynamic_cast<const qenzor::CLineObjEdit*>(edit.get());
  const bool came = line != nullptr && line->Pt.size() == 1 && line->Pt.front().x == 3 &&
                    line->Pt.front().y == -4;
  return came ? EXIT_SUCCESS : EXIT_FAILURE;
}
