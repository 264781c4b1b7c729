#include "qenzor/zor_document.h"

#include "qenzor/read_impl.h"
#include "qenzor/save_impl.h"
#include "qenzor/zor/zor_xml_impl.h"

namespace qenzor {

namespace {

struct ZorKind {
  using Document = CZor;
  using Edit = CZorEdit;
  using Info = ZorFileInfo;
  using Root = CZorDrawData;

  static std::uint32_t RootIdOf(const CZor& zor) { return zor.DrawData.GetHeader().ChunkId; }
  static std::uint32_t RootSizeOf(const CZor& zor) { return zor.DrawData.GetChunkSize(); }
  static void Convert(CZor& document, CZorEdit& edit) { edit.ZorDataToEditData(&document); }
  static CZor* Convert(CZorEdit& edit) { return edit.EditDataToZorData(); }
  static CZor* Take(CZorEdit& edit) { return edit.TakeZorData(); }
  static Result<CZorEdit> ReadXmlPieces(CFile& file, const XmlReadOptions& options) {
    return ReadZorXmlPieces(file, options);
  }
  static void WriteXml(CStdioFile& file, CZor& document) {
    CZorTextConverter().ConvertChunkToText(file, document, 0);
  }
};

}  // namespace

Result<CZor> ReadZor(const CDocumentSource& source, const ReadOptions& options) {
  return ReadDocument<ZorKind>(source, options);
}
Result<CZorEdit> ReadZorEdit(const CDocumentSource& source, const ReadOptions& options) {
  return ReadEdit<ZorKind>(source, options);
}

Result<void> SaveZor(CZor& document, const CString& path, const SaveOptions& options) {
  return SaveDocument<ZorKind>(document, path, StoredForm::kBinary, options);
}
Result<void> SaveZor(CZorEdit& edit, const CString& path, const SaveOptions& options) {
  return SaveEdit<ZorKind>(edit, path, StoredForm::kBinary, options);
}
Result<void> SaveZor(CZorEdit&& edit, const CString& path, const SaveOptions& options) {
  return SaveEdit<ZorKind>(std::move(edit), path, StoredForm::kBinary, options);
}

Result<void> SaveZorXml(CZor& document, const CString& path, const SaveOptions& options) {
  return SaveDocument<ZorKind>(document, path, StoredForm::kXml, options);
}
Result<void> SaveZorXml(CZorEdit& edit, const CString& path, const SaveOptions& options) {
  return SaveEdit<ZorKind>(edit, path, StoredForm::kXml, options);
}
Result<void> SaveZorXml(CZorEdit&& edit, const CString& path, const SaveOptions& options) {
  return SaveEdit<ZorKind>(std::move(edit), path, StoredForm::kXml, options);
}

Result<CZorEdit> ReadZorXml(const CDocumentSource& source, const XmlReadOptions& options) {
  return ReadXml<ZorKind>(source, options);
}
Result<CZorEdit> ParseZorXml(std::string_view text, const XmlReadOptions& options) {
  return ParseXml<ZorKind>(text, options);
}
Result<std::string> ZorToXml(CZor& document, XmlEncoding encoding) {
  return ToXml<ZorKind>(document, encoding);
}
Result<void> WriteZorXml(CFile& file, CZor& document, XmlEncoding encoding) {
  return WriteXml<ZorKind>(file, document, encoding);
}

}  // namespace qenzor
