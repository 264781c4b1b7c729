#include "qenzor/zor/zor.h"

#include <cassert>
#include <optional>

#include "qenzor/core/document_impl.h"
#include "qenzor/core/equal_impl.h"
#include "qenzor/edit/giving_up_impl.h"
#include "qenzor/platform/bulk_phase_impl.h"
#include "qenzor/text/document_text_impl.h"
#include "qenzor/zor/zor_xml_impl.h"

namespace qenzor {

CZor::CZor() = default;
CZor::~CZor() = default;

CZor* CZor::Clone() try {
  const CBulkPhase phase;
  auto clone = std::make_unique<CZor>();
  clone->DeepCopy(this);
  return clone.release();
} catch (const std::bad_alloc&) {
  return nullptr;
}

void CZor::DeepCopy(CZor* source) {
  assert(source != nullptr);
  const CBulkPhase phase;
  if (source == this) return;
  Release();
  ZorFileInfo::operator=(static_cast<const ZorFileInfo&>(*source));
  DrawData.DeepCopy(&source->DrawData);
}

bool CZor::Read(const CString& path) {
  return ReadThroughWindow(path, [this](CFile& file) { return Read(&file); });
}

bool CZor::Read(const void* data, const std::uint32_t& size) {
  const CBulkPhase phase;
  constexpr std::uint32_t kInfoSize = PackedSize<ZorFileInfo>();
  const std::uint32_t left = size - kInfoSize;  // the size may be a field that is read here
  return ReadFileInfo(data, size) &&
         ReadDrawData(static_cast<const std::uint8_t*>(data) + kInfoSize, left);
}

bool CZor::Read(CFile* file) {
  const CBulkPhase phase;
  return ReadFileInfo(file) && ReadDrawData(file);
}

bool CZor::Write(const CString& path) {
  return WriteWholeFile(path, [this](CFile& file) { return Write(&file); });
}

bool CZor::Write(CFile* file) { return WriteFileInfo(file) && WriteDrawData(file); }

void CZor::Release() {}

bool CZor::ReadFileInfo(CFile* file) { return ReadInfo<ZorFileInfo>(*file, *this); }

bool CZor::ReadFileInfo(const void* data, const std::uint32_t& size) {
  return ReadInfo<ZorFileInfo>(data, size, *this);
}

bool CZor::ReadDrawData(CFile* file) { return DrawData.Read(file); }

bool CZor::ReadDrawData(const void* data, const std::uint32_t& size) {
  return DrawData.Read(data, size);
}

bool CZor::WriteFileInfo(CFile* file) { return WriteInfo<ZorFileInfo>(*file, *this); }

bool CZor::WriteDrawData(CFile* file) { return DrawData.Write(file, true); }

CZorEdit::CZorEdit() = default;
CZorEdit::CZorEdit(const ZorFileInfo& info) : ZorFileInfo(info) {}
CZorEdit::~CZorEdit() = default;

CZor* CZorEdit::EditDataToZorData() try {
  std::optional<CBulkPhase> phase;
  // What an edit form gives up is for the chunks to use, which slabs would not.
  if (!CGivingUp::IsUnderWay()) phase.emplace();
  auto doc = std::make_unique<CZor>();
  static_cast<ZorFileInfo&>(*doc) = static_cast<const ZorFileInfo&>(*this);
  const auto draw_data = ChunkOfEdit<CZorDrawData>(&DrawData);
  doc->DrawData.DrawAtterSet = std::move(draw_data->DrawAtterSet);
  doc->DrawData.DrawInfoSet = std::move(draw_data->DrawInfoSet);
  doc->DrawData.MarkDataSet = std::move(draw_data->MarkDataSet);
  // As a copy would have them.
  if (doc->DrawData.DrawAtterSet != nullptr) doc->DrawData.DrawAtterSet->ReverseOrder();
  return doc.release();
} catch (const std::bad_alloc&) {
  return nullptr;
}

CZor* CZorEdit::TakeZorData() {
  const CGivingUp giving_up;
  CZor* const doc = EditDataToZorData();
  DrawData.Release();
  return doc;
}

void CZorEdit::ZorDataToEditData(CZor* doc) {
  assert(doc != nullptr);
  const CBulkPhase phase;
  DrawData.Release();
  ZorFileInfo::operator=(static_cast<const ZorFileInfo&>(*doc));
  DrawData.ChunkDataToEditData(&doc->DrawData);
}

bool CZorEdit::SetSubChunkEdit(CAbstractChunkEdit* sub) {
  auto* draw_data = dynamic_cast<CZorDrawDataEdit*>(sub);
  if (draw_data == nullptr) {
    delete sub;
    return false;
  }
  DrawData.DrawAtterSet = draw_data->DrawAtterSet;
  DrawData.DrawInfoSet = draw_data->DrawInfoSet;
  DrawData.MarkDataSet = draw_data->MarkDataSet;
  return true;
}

namespace {

template <class Document>
bool EqualDocuments(const Document& a, const Document& b) {
  return static_cast<const ZorFileInfo&>(a) == static_cast<const ZorFileInfo&>(b) &&
         a.DrawData == b.DrawData;
}

void FillInfo(CZorEdit& edit, CXmlElement& elem) {
  ReadXmlFields(elem, ZorFileInfo::Fields(), static_cast<ZorFileInfo&>(edit));
}

void FillEdit(CZorEdit& edit, CXmlElement& root) {
  root.ForEachChild([&](CXmlElement& child) {
    if (child.GetTag() == "ZorFileInfo") {
      FillInfo(edit, child);
    } else if (child.GetTag() == CZorDrawData::kTag) {
      edit.DrawData.Release();
      CZorDrawDataTextConverter::FillEdit(edit.DrawData, child);
      // As a copy of what was read would have them.
      if (edit.DrawData.DrawAtterSet != nullptr) edit.DrawData.DrawAtterSet->ReverseOrder();
    }
  });
}

}  // namespace

bool operator==(const CZor& a, const CZor& b) { return EqualDocuments(a, b); }
bool operator==(const CZorEdit& a, const CZorEdit& b) { return EqualDocuments(a, b); }

std::unique_ptr<CZorEdit> ToEdit(const CZor& document) try {
  auto edit = std::make_unique<CZorEdit>();
  edit->ZorDataToEditData(SourceOf(document));
  return edit;
} catch (const std::bad_alloc&) {
  return nullptr;
}

std::unique_ptr<CZor> ToDocument(const CZorEdit& edit) {
  return std::unique_ptr<CZor>(SourceOf(edit)->EditDataToZorData());
}

CZorTextConverter::CZorTextConverter() = default;
CZorTextConverter::~CZorTextConverter() = default;

// The interface passes paths by value.
// NOLINTBEGIN(performance-unnecessary-value-param)
bool CZorTextConverter::ConvertChunkToText(CString path, CZor& doc, std::uint32_t level) {
  return WriteXmlFile(path, [&](CStdioFile& file) { ConvertChunkToText(file, doc, level); });
}

CZorEdit* CZorTextConverter::ConvertTextToZorEdit(CString path) {
  CFile file;
  if (!file.Open(path, CFile::modeRead | CFile::typeBinary)) return nullptr;
  return ReadZorXmlPieces(file).Take().release();
}
// NOLINTEND(performance-unnecessary-value-param)

void CZorTextConverter::ConvertChunkToText(CStdioFile& file, CZor& doc, std::uint32_t level) {
  WriteXmlDocument<ZorFileInfo>(CXmlWriter(file, level), "Zor", doc, CZorDrawData::kTag,
                                &doc.DrawData);
}

void CZorTextConverter::SetZorEditParam(CZorEdit* edit, TiXmlElement* root) {
  if (edit == nullptr || root == nullptr) return;
  CXmlElement parsed(*root);
  FillEdit(*edit, parsed);
}

void CZorTextConverter::SetZorFileInfoParam(CZorEdit* edit, TiXmlElement* elem) {
  if (edit == nullptr || elem == nullptr) return;
  CXmlElement parsed(*elem);
  FillInfo(*edit, parsed);
}

Result<CZorEdit> ReadZorXmlPieces(CFile& text, const XmlReadOptions& options,
                                  const XmlPieceSizes& sizes) {
  return ReadXmlDocument<CZorEdit>(text, options, sizes, "Zor", FillEdit);
}

}  // namespace qenzor
