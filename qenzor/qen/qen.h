#pragma once

#include <memory>

#include "qenzor/core/file_info.h"
#include "qenzor/edit/convert.h"
#include "qenzor/platform/file.h"
#include "qenzor/platform/object.h"
#include "qenzor/qen/map_data.h"

class TiXmlElement;

namespace qenzor {

/// The front of a map-project file, 42 bytes. None of the values is interpreted here.
struct QenFileInfo : FileInfo {
  /// Code of the geographic coordinate system (u8); kept, not interpreted.
  std::uint8_t GeoCoodinate = 0;
  /// West, south, east, north of the map (i32 each), in units of that system.
  CRect IncRect;
  /// Mesh segments from west to east, and from south to north (u16 each).
  std::uint16_t SegmentNumX = 0;
  std::uint16_t SegmentNumY = 0;
  /// Compression coefficient (u16); kept, not interpreted.
  std::uint16_t CompCoef = 0;

  static constexpr auto Fields() {
    using D = QenFileInfo;
    return std::tuple_cat(
        FileInfo::Fields(),
        std::tuple{field("GeoCoodinate", &D::GeoCoodinate),
                   field_as<LongRectCoding>("IncRect", &D::IncRect),
                   field("SegmentNumX", &D::SegmentNumX), field("SegmentNumY", &D::SegmentNumY),
                   field("CompCoef", &D::CompCoef)});
  }

  /// What a new map starts from: a well-formed front, version 1.0, one segment, an empty rectangle.
  static QenFileInfo Default() {
    QenFileInfo info;
    info.SetIdent("QENMAP");
    info.Magic = kMagic;
    info.MajorVer = 1;
    info.SegmentNumX = info.SegmentNumY = 1;
    return info;
  }

  /// Whether segments of the same number lie in the same place: rectangle, numbers of segments,
  /// coefficient and coordinate system are the same.
  bool HasMeshOf(const QenFileInfo& other) const {
    return IncRect == other.IncRect && SegmentNumX == other.SegmentNumX &&
           SegmentNumY == other.SegmentNumY && CompCoef == other.CompCoef &&
           GeoCoodinate == other.GeoCoodinate;
  }

  bool operator==(const QenFileInfo&) const = default;
};

/// A map-project document: the geography of a map. It owns its map data. Any number of documents
/// may be used at once, each by one thread at a time.
class QENZOR_EXPORT CQen : public CObject, public QenFileInfo {
 public:
  CQen();
  ~CQen() override;

  /// A new document with copies of everything, owned by the caller; null when memory runs out.
  [[nodiscard]] virtual CQen* Clone();
  /// Replaces everything by copies of the source's content.
  virtual void DeepCopy(CQen* source);

  /// Reads the file at the path. After a failure in the chunks the document holds the file info and
  /// what was read of the map data; a file shorter than the file info changes nothing. Bytes after
  /// the root chunk are ignored, and the root chunk's id is taken as it stands.
  [[nodiscard]] bool Read(const CString& path);
  /// The same from a block of size bytes, and from a file's position on.
  [[nodiscard]] bool Read(const void* data, const std::uint32_t& size);
  [[nodiscard]] bool Read(CFile* file);
  /// Creates or overwrites the file at the path, all data sizes recomputed. False if anything did
  /// not reach the file, and for a document without map data; a partly written file stays.
  [[nodiscard]] bool Write(const CString& path);
  /// The same at a file's position.
  [[nodiscard]] bool Write(CFile* file);

  /// The root chunk, or null.
  std::unique_ptr<CQenMapData> MapData;

 protected:
  /// Deletes the map data.
  virtual void Release();

  bool ReadFileInfo(CFile* file);
  bool ReadFileInfo(const void* data, const std::uint32_t& size);
  bool ReadMapData(CFile* file);
  bool ReadMapData(const void* data, const std::uint32_t& size);
  bool WriteFileInfo(CFile* file);
  bool WriteMapData(CFile* file);
};

/// The editable form of a map-project document.
class QENZOR_EXPORT CQenEdit : public QenFileInfo {
 public:
  CQenEdit();
  /// Without map data; CQenEdit(QenFileInfo::Default()) is what a new map starts from.
  explicit CQenEdit(const QenFileInfo& info);
  virtual ~CQenEdit();
  CQenEdit(const CQenEdit&) = delete;
  CQenEdit& operator=(const CQenEdit&) = delete;

  /// A new document with this content, owned by the caller; without map data if there is no map
  /// data edit. Null when memory runs out.
  [[nodiscard]] CQen* EditDataToQenData();
  /// The same, but what has been turned into chunks is destroyed at once, so that both forms are
  /// not in memory together. Afterwards, and after a failure, the map data edit is gone.
  [[nodiscard]] CQen* TakeQenData();
  /// Replaces the content with the document's, which is only read.
  void QenDataToEditData(CQen* doc);
  /// Takes ownership of an edit object: a map data edit replaces the one held, true; any other is
  /// destroyed, false.
  bool SetSubChunkEdit(CAbstractChunkEdit* sub);
  /// Destroys the map data edit.
  void Release();

  /// The root chunk's editable form, or null.
  std::unique_ptr<CQenMapDataEdit> MapData;
};

/// Whether two documents hold the same.
QENZOR_EXPORT bool operator==(const CQen& a, const CQen& b);
QENZOR_EXPORT bool operator==(const CQenEdit& a, const CQenEdit& b);

/// The document in the other form, owned by the caller. The given one is only read. Null when
/// memory runs out.
[[nodiscard]] QENZOR_EXPORT std::unique_ptr<CQenEdit> ToEdit(const CQen& document);
[[nodiscard]] QENZOR_EXPORT std::unique_ptr<CQen> ToDocument(const CQenEdit& edit);

/// Converts whole map-project documents to XML files and back.
class QENZOR_EXPORT CQenTextConverter {
 public:
  CQenTextConverter();
  virtual ~CQenTextConverter();

  /// Writes the document as the XML file at the path, indented by level tabs. False when the file
  /// cannot be opened; what goes wrong while writing throws CFileException.
  bool ConvertChunkToText(CString path, CQen& doc, std::uint32_t level);
  /// The same into an open text file, which is not closed.
  void ConvertChunkToText(CStdioFile& file, CQen& doc, std::uint32_t level);
  /// A new document edit read from the XML file at the path, owned by the caller. Null when the
  /// file cannot be loaded or its root element is not "Qen".
  [[nodiscard]] CQenEdit* ConvertTextToQenEdit(CString path);

 protected:
  void SetQenEditParam(CQenEdit* edit, TiXmlElement* root);
  void SetQenFileInfoParam(CQenEdit* edit, TiXmlElement* elem);
};

}  // namespace qenzor
