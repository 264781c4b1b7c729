#include "qenzor/save_impl.h"
#include "qenzor/zor_document.h"
#include "qenzor/zor_xml.h"

namespace qenzor {

namespace {

struct ZorSaving {
  using Document = CZor;

  static CZor* Convert(CZorEdit& edit) { return edit.EditDataToZorData(); }
  static CZor* Take(CZorEdit& edit) { return edit.TakeZorData(); }
  static std::uint64_t SizeOf(const CZor& document) {
    const CAbstractChunk& root = document.DrawData;
    return std::uint64_t{PackedSize<ZorFileInfo>()} + root.GetChunkSize();
  }
  static Result<void> WriteXml(CFile& file, CZor& document, XmlEncoding encoding) {
    return WriteZorXml(file, document, encoding);
  }
};

}  // namespace

Result<void> SaveZor(CZor& document, const CString& path, const SaveOptions& options) {
  return SaveDocument<ZorSaving>(document, path, StoredForm::kBinary, options);
}

Result<void> SaveZor(CZorEdit& edit, const CString& path, const SaveOptions& options) {
  return SaveEdit<ZorSaving>(edit, ZorSaving::Convert, path, StoredForm::kBinary, options);
}

Result<void> SaveZor(CZorEdit&& edit, const CString& path, const SaveOptions& options) {
  return SaveEdit<ZorSaving>(edit, ZorSaving::Take, path, StoredForm::kBinary, options);
}

Result<void> SaveZorXml(CZor& document, const CString& path, const SaveOptions& options) {
  return SaveDocument<ZorSaving>(document, path, StoredForm::kXml, options);
}

Result<void> SaveZorXml(CZorEdit& edit, const CString& path, const SaveOptions& options) {
  return SaveEdit<ZorSaving>(edit, ZorSaving::Convert, path, StoredForm::kXml, options);
}

Result<void> SaveZorXml(CZorEdit&& edit, const CString& path, const SaveOptions& options) {
  return SaveEdit<ZorSaving>(edit, ZorSaving::Take, path, StoredForm::kXml, options);
}

}  // namespace qenzor
