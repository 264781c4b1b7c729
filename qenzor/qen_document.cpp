#include "qenzor/qen_document.h"

#include "qenzor/qen/qen_xml_impl.h"
#include "qenzor/read_impl.h"
#include "qenzor/save_impl.h"

namespace qenzor {

namespace {

struct QenKind {
  using Document = CQen;
  using Edit = CQenEdit;
  using Info = QenFileInfo;
  using Root = CQenMapData;

  static std::uint32_t RootIdOf(const CQen& map) {
    return map.MapData == nullptr ? Root::kChunkId : map.MapData->GetHeader().ChunkId;
  }
  static std::uint32_t RootSizeOf(const CQen& map) {
    return static_cast<const CAbstractChunk&>(*map.MapData).GetChunkSize();
  }
  static void Convert(CQen& document, CQenEdit& edit) { edit.QenDataToEditData(&document); }
  static CQen* Convert(CQenEdit& edit) { return edit.EditDataToQenData(); }
  static CQen* Take(CQenEdit& edit) { return edit.TakeQenData(); }
  static Result<CQenEdit> ReadXmlPieces(CFile& file, const XmlReadOptions& options) {
    return ReadQenXmlPieces(file, options);
  }
  static void WriteXml(CStdioFile& file, CQen& document) {
    CQenTextConverter().ConvertChunkToText(file, document, 0);
  }
};

}  // namespace

Result<CQen> ReadQen(const CDocumentSource& source, const ReadOptions& options) {
  return ReadDocument<QenKind>(source, options);
}
Result<CQenEdit> ReadQenEdit(const CDocumentSource& source, const ReadOptions& options) {
  return ReadEdit<QenKind>(source, options);
}

Result<void> SaveQen(CQen& document, const CString& path, const SaveOptions& options) {
  return SaveDocument<QenKind>(document, path, StoredForm::kBinary, options);
}
Result<void> SaveQen(CQenEdit& edit, const CString& path, const SaveOptions& options) {
  return SaveEdit<QenKind>(edit, path, StoredForm::kBinary, options);
}
Result<void> SaveQen(CQenEdit&& edit, const CString& path, const SaveOptions& options) {
  return SaveEdit<QenKind>(std::move(edit), path, StoredForm::kBinary, options);
}

Result<void> SaveQenXml(CQen& document, const CString& path, const SaveOptions& options) {
  return SaveDocument<QenKind>(document, path, StoredForm::kXml, options);
}
Result<void> SaveQenXml(CQenEdit& edit, const CString& path, const SaveOptions& options) {
  return SaveEdit<QenKind>(edit, path, StoredForm::kXml, options);
}
Result<void> SaveQenXml(CQenEdit&& edit, const CString& path, const SaveOptions& options) {
  return SaveEdit<QenKind>(std::move(edit), path, StoredForm::kXml, options);
}

Result<CQenEdit> ReadQenXml(const CDocumentSource& source, const XmlReadOptions& options) {
  return ReadXml<QenKind>(source, options);
}
Result<CQenEdit> ParseQenXml(std::string_view text, const XmlReadOptions& options) {
  return ParseXml<QenKind>(text, options);
}
Result<std::string> QenToXml(CQen& document, XmlEncoding encoding) {
  return ToXml<QenKind>(document, encoding);
}
Result<void> WriteQenXml(CFile& file, CQen& document, XmlEncoding encoding) {
  return WriteXml<QenKind>(file, document, encoding);
}

}  // namespace qenzor
