#include "qenzor/qen_document.h"
#include "qenzor/qen_xml.h"
#include "qenzor/save_impl.h"

namespace qenzor {

namespace {

struct QenSaving {
  using Document = CQen;

  static CQen* Convert(CQenEdit& edit) { return edit.EditDataToQenData(); }
  static CQen* Take(CQenEdit& edit) { return edit.TakeQenData(); }
  static std::uint64_t SizeOf(const CQen& document) {
    const CAbstractChunk& root = *document.MapData;
    return std::uint64_t{PackedSize<QenFileInfo>()} + root.GetChunkSize();
  }
  static Result<void> WriteXml(CFile& file, CQen& document, XmlEncoding encoding) {
    return WriteQenXml(file, document, encoding);
  }
};

}  // namespace

Result<void> SaveQen(CQen& document, const CString& path, const SaveOptions& options) {
  return SaveDocument<QenSaving>(document, path, StoredForm::kBinary, options);
}

Result<void> SaveQen(CQenEdit& edit, const CString& path, const SaveOptions& options) {
  return SaveEdit<QenSaving>(edit, QenSaving::Convert, path, StoredForm::kBinary, options);
}

Result<void> SaveQen(CQenEdit&& edit, const CString& path, const SaveOptions& options) {
  return SaveEdit<QenSaving>(edit, QenSaving::Take, path, StoredForm::kBinary, options);
}

Result<void> SaveQenXml(CQen& document, const CString& path, const SaveOptions& options) {
  return SaveDocument<QenSaving>(document, path, StoredForm::kXml, options);
}

Result<void> SaveQenXml(CQenEdit& edit, const CString& path, const SaveOptions& options) {
  return SaveEdit<QenSaving>(edit, QenSaving::Convert, path, StoredForm::kXml, options);
}

Result<void> SaveQenXml(CQenEdit&& edit, const CString& path, const SaveOptions& options) {
  return SaveEdit<QenSaving>(edit, QenSaving::Take, path, StoredForm::kXml, options);
}

}  // namespace qenzor
