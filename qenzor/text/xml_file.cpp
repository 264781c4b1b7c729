#include "qenzor/text/xml_file.h"

#include "qenzor/text/xml_pieces_impl.h"

namespace qenzor {

std::optional<XmlError> FindXmlError(const CString& path) {
  CFile file;
  if (!file.Open(path, CFile::modeRead | CFile::typeBinary))
    return XmlError{0, 0, "the file cannot be read"};
  CXmlPieces pieces(file);
  pieces.ReadDocument([](CXmlElement& /*root*/) {});
  if (!pieces.GetFailure().has_value()) return std::nullopt;
  const Failure& failure = *pieces.GetFailure();
  return XmlError{failure.Line, failure.Column, failure.Reason};
}

}  // namespace qenzor
