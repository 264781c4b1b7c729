#include "qenzor/qen_xml.h"

#include "qenzor/qen/qen_xml_impl.h"
#include "qenzor/text/xml_memory_impl.h"

namespace qenzor {

Result<CQenEdit> ReadQenXml(const CString& path, const XmlReadOptions& options) {
  CFile file;
  if (!file.Open(path, CFile::modeRead | CFile::typeBinary))
    return FailureAtPath(path, FailureKind::kCannotOpen, "the file cannot be opened");
  Result<CQenEdit> edit = ReadQenXmlPieces(file, options);
  if (edit) return edit;
  Failure failure = edit.GetFailure();
  failure.Path = path;
  return failure;
}

Result<CQenEdit> ReadQenXml(CFile& file, const XmlReadOptions& options) {
  return ReadQenXmlPieces(file, options);
}

Result<CQenEdit> ParseQenXml(std::string_view text, const XmlReadOptions& options) {
  CTextView file(text);
  return ReadQenXmlPieces(file, options);
}

Result<std::string> QenToXml(CQen& document, XmlEncoding encoding) {
  return XmlTextOf([&](CFile& file) { return WriteQenXml(file, document, encoding); });
}

Result<void> WriteQenXml(CFile& file, CQen& document, XmlEncoding encoding) {
  return WriteXmlText(file, encoding, [&](CStdioFile& text) {
    CQenTextConverter().ConvertChunkToText(text, document, 0);
  });
}

}  // namespace qenzor
