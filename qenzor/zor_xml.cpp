#include "qenzor/zor_xml.h"

#include "qenzor/text/xml_memory_impl.h"
#include "qenzor/zor/zor_xml_impl.h"

namespace qenzor {

Result<CZorEdit> ReadZorXml(const CString& path, const XmlReadOptions& options) {
  CFile file;
  if (!file.Open(path, CFile::modeRead | CFile::typeBinary))
    return FailureAtPath(path, FailureKind::kCannotOpen, "the file cannot be opened");
  Result<CZorEdit> edit = ReadZorXmlPieces(file, options);
  if (edit) return edit;
  Failure failure = edit.GetFailure();
  failure.Path = path;
  return failure;
}

Result<CZorEdit> ReadZorXml(CFile& file, const XmlReadOptions& options) {
  return ReadZorXmlPieces(file, options);
}

Result<CZorEdit> ParseZorXml(std::string_view text, const XmlReadOptions& options) {
  CTextView file(text);
  return ReadZorXmlPieces(file, options);
}

Result<std::string> ZorToXml(CZor& document, XmlEncoding encoding) {
  return XmlTextOf([&](CFile& file) { return WriteZorXml(file, document, encoding); });
}

Result<void> WriteZorXml(CFile& file, CZor& document, XmlEncoding encoding) {
  return WriteXmlText(file, encoding, [&](CStdioFile& text) {
    CZorTextConverter().ConvertChunkToText(text, document, 0);
  });
}

}  // namespace qenzor
