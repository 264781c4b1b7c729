#include "qenzor/qen/qen.h"

#include "qenzor/core/document_impl.h"
#include "qenzor/core/equal_impl.h"
#include "qenzor/platform/bulk_phase_impl.h"
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
  const CBulkPhase phase;
  if (source == this) return;
  Release();
  static_cast<QenFileInfo&>(*this) = *source;
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
  return MapData != nullptr && MapData->Read(file);
}

bool CQen::ReadMapData(const void* data, const std::uint32_t& size) {
  const std::uint32_t all = size;  // which may be the data size of the map data that goes
  MapData.reset(new (std::nothrow) CQenMapData);
  return MapData != nullptr && MapData->Read(data, all);
}

bool CQen::WriteFileInfo(CFile* file) { return WriteInfo<QenFileInfo>(*file, *this); }

bool CQen::WriteMapData(CFile* file) { return MapData != nullptr && MapData->Write(file, true); }

CQenEdit::CQenEdit() = default;
CQenEdit::~CQenEdit() = default;

CQen* CQenEdit::EditDataToQenData() try {
  const CBulkPhase phase;
  auto doc = std::make_unique<CQen>();
  static_cast<QenFileInfo&>(*doc) = *this;
  doc->MapData = ChunkOfEdit<CQenMapData>(MapData.get());
  return doc.release();
} catch (const std::bad_alloc&) {
  return nullptr;
}

void CQenEdit::QenDataToEditData(CQen* doc) {
  const CBulkPhase phase;
  Release();
  static_cast<QenFileInfo&>(*this) = *doc;
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

}  // namespace

bool operator==(const CQen& a, const CQen& b) { return EqualDocuments(a, b); }
bool operator==(const CQenEdit& a, const CQenEdit& b) { return EqualDocuments(a, b); }

std::unique_ptr<CQenEdit> ToEdit(const CQen& document) try {
  auto edit = std::make_unique<CQenEdit>();
  edit->QenDataToEditData(const_cast<CQen*>(&document));
  return edit;
} catch (const std::bad_alloc&) {
  return nullptr;
}

std::unique_ptr<CQen> ToDocument(const CQenEdit& edit) {
  return std::unique_ptr<CQen>(const_cast<CQenEdit&>(edit).EditDataToQenData());
}

CQenTextConverter::CQenTextConverter() = default;
CQenTextConverter::~CQenTextConverter() = default;

// The interface passes paths by value.
// NOLINTBEGIN(performance-unnecessary-value-param)
bool CQenTextConverter::ConvertChunkToText(CString path, CQen& doc, std::uint32_t level) {
  return WriteXmlFile(path, [&](CStdioFile& file) { ConvertChunkToText(file, doc, level); });
}

CQenEdit* CQenTextConverter::ConvertTextToQenEdit(CString path) {
  return ReadXmlDocument<CQenEdit>(
      path, "Qen", [this](CQenEdit* edit, TiXmlElement* root) { SetQenEditParam(edit, root); });
}
// NOLINTEND(performance-unnecessary-value-param)

void CQenTextConverter::ConvertChunkToText(CStdioFile& file, CQen& doc, std::uint32_t level) {
  WriteXmlDocument<QenFileInfo>(CXmlWriter(file, level), "Qen", doc, CQenMapData::kTag,
                                doc.MapData.get());
}

void CQenTextConverter::SetQenEditParam(CQenEdit* edit, TiXmlElement* root) {
  if (edit == nullptr || root == nullptr) return;
  ForEachChild(*root, [&](TiXmlElement& child) {
    if (child.ValueStr() == "QenFileInfo") {
      SetQenFileInfoParam(edit, &child);
    } else if (child.ValueStr() == CQenMapData::kTag) {
      edit->MapData.reset();
      auto map_data = std::make_unique<CQenMapDataEdit>();
      CQenMapDataTextConverter().SetChunkEditParam(map_data.get(), &child);
      edit->MapData = std::move(map_data);
    }
  });
}

void CQenTextConverter::SetQenFileInfoParam(CQenEdit* edit, TiXmlElement* elem) {
  if (edit != nullptr && elem != nullptr)
    ReadXmlFields(*elem, QenFileInfo::Fields(), static_cast<QenFileInfo&>(*edit));
}

}  // namespace qenzor
