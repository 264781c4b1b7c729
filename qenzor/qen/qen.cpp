#include "qenzor/qen/qen.h"

#include <cassert>
#include <optional>

#include "qenzor/core/document_impl.h"
#include "qenzor/core/equal_impl.h"
#include "qenzor/edit/giving_up_impl.h"
#include "qenzor/platform/bulk_phase_impl.h"
#include "qenzor/qen/qen_xml_impl.h"
#include "qenzor/text/document_text_impl.h"

namespace qenzor {

CQen::CQen() = default;
CQen::~CQen() = default;

CQen* CQen::Clone() try {
  const CBulkPhase phase;
  auto clone = std::make_unique<CQen>();
  clone->DeepCopy(this);
  return clone.release();
} catch (const std::bad_alloc&) {
  return nullptr;
}

void CQen::DeepCopy(CQen* source) {
  assert(source != nullptr);
  const CBulkPhase phase;
  if (source == this) return;
  Release();
  QenFileInfo::operator=(static_cast<const QenFileInfo&>(*source));
  MapData = CloneOf(source->MapData.get());
}

bool CQen::Read(const CString& path) {
  return ReadThroughWindow(path, [this](CFile& file) { return Read(&file); });
}

bool CQen::Read(const void* data, const std::uint32_t& size) {
  const CBulkPhase phase;
  constexpr std::uint32_t kInfoSize = PackedSize<QenFileInfo>();
  const std::uint32_t left = size - kInfoSize;  // the size may be a field that is read here
  return ReadFileInfo(data, size) &&
         ReadMapData(static_cast<const std::uint8_t*>(data) + kInfoSize, left);
}

bool CQen::Read(CFile* file) {
  const CBulkPhase phase;
  return ReadFileInfo(file) && ReadMapData(file);
}

bool CQen::Write(const CString& path) {
  return WriteWholeFile(path, [this](CFile& file) { return Write(&file); });
}

bool CQen::Write(CFile* file) { return WriteFileInfo(file) && WriteMapData(file); }

void CQen::Release() { MapData.reset(); }

bool CQen::ReadFileInfo(CFile* file) { return ReadInfo<QenFileInfo>(*file, *this); }

bool CQen::ReadFileInfo(const void* data, const std::uint32_t& size) {
  return ReadInfo<QenFileInfo>(data, size, *this);
}

bool CQen::ReadMapData(CFile* file) {
  MapData.reset(new (std::nothrow) CQenMapData);
  return MapData != nullptr ? MapData->Read(file) : NoteNoMemory(*file);
}

bool CQen::ReadMapData(const void* data, const std::uint32_t& size) {
  const std::uint32_t all = size;  // which may be the data size of the map data that goes
  MapData.reset(new (std::nothrow) CQenMapData);
  return MapData != nullptr && MapData->Read(data, all);
}

bool CQen::WriteFileInfo(CFile* file) { return WriteInfo<QenFileInfo>(*file, *this); }

bool CQen::WriteMapData(CFile* file) { return MapData != nullptr && MapData->Write(file, true); }

CQenEdit::CQenEdit() = default;
CQenEdit::CQenEdit(const QenFileInfo& info) : QenFileInfo(info) {}
CQenEdit::~CQenEdit() = default;

CQen* CQenEdit::EditDataToQenData() try {
  std::optional<CBulkPhase> phase;
  // What an edit form gives up is for the chunks to use, which slabs would not.
  if (!CGivingUp::IsUnderWay()) phase.emplace();
  auto doc = std::make_unique<CQen>();
  static_cast<QenFileInfo&>(*doc) = static_cast<const QenFileInfo&>(*this);
  doc->MapData = ChunkOfEdit<CQenMapData>(MapData.get());
  return doc.release();
} catch (const std::bad_alloc&) {
  return nullptr;
}

CQen* CQenEdit::TakeQenData() {
  const CGivingUp giving_up;
  CQen* const doc = EditDataToQenData();
  Release();
  return doc;
}

void CQenEdit::QenDataToEditData(CQen* doc) {
  assert(doc != nullptr);
  const CBulkPhase phase;
  Release();
  QenFileInfo::operator=(static_cast<const QenFileInfo&>(*doc));
  if (doc->MapData == nullptr) return;
  MapData = std::make_unique<CQenMapDataEdit>();
  MapData->ChunkDataToEditData(doc->MapData.get());
}

bool CQenEdit::SetSubChunkEdit(CAbstractChunkEdit* sub) {
  std::unique_ptr<CAbstractChunkEdit> owned(sub);
  auto* map_data = dynamic_cast<CQenMapDataEdit*>(sub);
  if (map_data == nullptr) return false;
  owned.release();
  MapData.reset(map_data);
  return true;
}

void CQenEdit::Release() { MapData.reset(); }

namespace {

template <class Document>
bool EqualDocuments(const Document& a, const Document& b) {
  return static_cast<const QenFileInfo&>(a) == static_cast<const QenFileInfo&>(b) &&
         EqualValues(a.MapData, b.MapData);
}

void FillInfo(CQenEdit& edit, CXmlElement& elem) {
  ReadXmlFields(elem, QenFileInfo::Fields(), static_cast<QenFileInfo&>(edit));
}

void FillEdit(CQenEdit& edit, CXmlElement& root) {
  root.ForEachChild([&](CXmlElement& child) {
    if (child.GetTag() == "QenFileInfo") {
      FillInfo(edit, child);
    } else if (child.GetTag() == CQenMapData::kTag) {
      edit.MapData.reset();
      auto map_data = std::make_unique<CQenMapDataEdit>();
      CQenMapDataTextConverter::FillEdit(*map_data, child);
      edit.MapData = std::move(map_data);
    }
  });
}

}  // namespace

bool operator==(const CQen& a, const CQen& b) { return EqualDocuments(a, b); }
bool operator==(const CQenEdit& a, const CQenEdit& b) { return EqualDocuments(a, b); }

std::unique_ptr<CQenEdit> ToEdit(const CQen& document) try {
  auto edit = std::make_unique<CQenEdit>();
  edit->QenDataToEditData(SourceOf(document));
  return edit;
} catch (const std::bad_alloc&) {
  return nullptr;
}

std::unique_ptr<CQen> ToDocument(const CQenEdit& edit) {
  return std::unique_ptr<CQen>(SourceOf(edit)->EditDataToQenData());
}

CQenTextConverter::CQenTextConverter() = default;
CQenTextConverter::~CQenTextConverter() = default;

// The interface passes paths by value.
// NOLINTBEGIN(performance-unnecessary-value-param)
bool CQenTextConverter::ConvertChunkToText(CString path, CQen& doc, std::uint32_t level) {
  return WriteXmlFile(path, [&](CStdioFile& file) { ConvertChunkToText(file, doc, level); });
}

CQenEdit* CQenTextConverter::ConvertTextToQenEdit(CString path) {
  CFile file;
  if (!file.Open(path, CFile::modeRead | CFile::typeBinary)) return nullptr;
  return ReadQenXmlPieces(file).Take().release();
}
// NOLINTEND(performance-unnecessary-value-param)

void CQenTextConverter::ConvertChunkToText(CStdioFile& file, CQen& doc, std::uint32_t level) {
  WriteXmlDocument<QenFileInfo>(CXmlWriter(file, level), "Qen", doc, CQenMapData::kTag,
                                doc.MapData.get());
}

void CQenTextConverter::SetQenEditParam(CQenEdit* edit, TiXmlElement* root) {
  if (edit == nullptr || root == nullptr) return;
  CXmlElement parsed(*root);
  FillEdit(*edit, parsed);
}

void CQenTextConverter::SetQenFileInfoParam(CQenEdit* edit, TiXmlElement* elem) {
  if (edit == nullptr || elem == nullptr) return;
  CXmlElement parsed(*elem);
  FillInfo(*edit, parsed);
}

Result<CQenEdit> ReadQenXmlPieces(CFile& text, const XmlReadOptions& options,
                                  const XmlPieceSizes& sizes) {
  return ReadXmlDocument<CQenEdit>(text, options, sizes, "Qen", FillEdit);
}

}  // namespace qenzor
