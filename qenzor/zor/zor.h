#pragma once

#include <memory>

#include "qenzor/core/file_info.h"
#include "qenzor/edit/convert.h"
#include "qenzor/platform/file.h"
#include "qenzor/zor/draw_data.h"

class TiXmlElement;

namespace qenzor {

/// The front of a draw-data file, 19 bytes.
using ZorFileInfo = FileInfo;

/// What new draw data start from: a well-formed front, version 1.0.
inline ZorFileInfo DefaultZorFileInfo() {
  ZorFileInfo info;
  info.SetIdent("ZORDRW");
  info.Magic = ZorFileInfo::kMagic;
  info.MajorVer = 1;
  return info;
}

/// A draw-data document: how a map is drawn. Any number of documents may be used at once, each by
/// one thread at a time.
class QENZOR_EXPORT CZor : public ZorFileInfo {
 public:
  CZor();
  virtual ~CZor();
  CZor(const CZor&) = delete;
  CZor& operator=(const CZor&) = delete;

  /// A new document with copies of everything, owned by the caller; null when memory runs out.
  [[nodiscard]] virtual CZor* Clone();
  /// Replaces everything by copies of the source's content.
  virtual void DeepCopy(CZor* source);

  /// Reads the file at the path. After a failure in the chunks the document holds the file info and
  /// what was read of the draw data; a file shorter than the file info changes nothing. The root
  /// chunk's id is taken as it stands. Sets that the document holds and the file does not stay.
  [[nodiscard]] bool Read(const CString& path);
  /// The same from a block of size bytes, and from a file's position on.
  [[nodiscard]] bool Read(const void* data, const std::uint32_t& size);
  [[nodiscard]] bool Read(CFile* file);
  /// Creates or overwrites the file at the path, all data sizes recomputed. False if anything did
  /// not reach the file; a partly written file stays.
  [[nodiscard]] bool Write(const CString& path);
  /// The same at a file's position.
  [[nodiscard]] bool Write(CFile* file);

  /// The root chunk.
  CZorDrawData DrawData;

 protected:
  /// There is nothing to release: the root chunk is a part of the document.
  virtual void Release();

  bool ReadFileInfo(CFile* file);
  bool ReadFileInfo(const void* data, const std::uint32_t& size);
  bool ReadDrawData(CFile* file);
  bool ReadDrawData(const void* data, const std::uint32_t& size);
  bool WriteFileInfo(CFile* file);
  bool WriteDrawData(CFile* file);
};

/// The editable form of a draw-data document.
class QENZOR_EXPORT CZorEdit : public ZorFileInfo {
 public:
  CZorEdit();
  /// Empty; CZorEdit(DefaultZorFileInfo()) is what new draw data start from.
  explicit CZorEdit(const ZorFileInfo& info);
  virtual ~CZorEdit();
  CZorEdit(const CZorEdit&) = delete;
  CZorEdit& operator=(const CZorEdit&) = delete;

  /// A new document with this content, owned by the caller; null when memory runs out.
  [[nodiscard]] CZor* EditDataToZorData();
  /// The same, but what has been turned into chunks is destroyed at once, so that both forms are
  /// not in memory together. Afterwards, and after a failure, the draw data edit is empty; so are
  /// sets that others share with it.
  [[nodiscard]] CZor* TakeZorData();
  /// Replaces the content with the document's, which is only read.
  void ZorDataToEditData(CZor* doc);
  /// A draw data edit: its three sets become this document's, true. The given object stays the
  /// caller's and still points at the sets, which both now share; either may go first. Any other
  /// edit object is destroyed, false.
  bool SetSubChunkEdit(CAbstractChunkEdit* sub);

  /// The root chunk's editable form.
  CZorDrawDataEdit DrawData;
};

/// Whether two documents hold the same.
QENZOR_EXPORT bool operator==(const CZor& a, const CZor& b);
QENZOR_EXPORT bool operator==(const CZorEdit& a, const CZorEdit& b);

/// The document in the other form, owned by the caller. The given one is only read. Null when
/// memory runs out.
[[nodiscard]] QENZOR_EXPORT std::unique_ptr<CZorEdit> ToEdit(const CZor& document);
[[nodiscard]] QENZOR_EXPORT std::unique_ptr<CZor> ToDocument(const CZorEdit& edit);

/// Converts whole draw-data documents to XML files and back.
class QENZOR_EXPORT CZorTextConverter {
 public:
  CZorTextConverter();
  virtual ~CZorTextConverter();

  /// Writes the document as the XML file at the path, indented by level tabs. False when the file
  /// cannot be opened; what goes wrong while writing throws CFileException.
  bool ConvertChunkToText(CString path, CZor& doc, std::uint32_t level);
  /// The same into an open text file, which is not closed.
  void ConvertChunkToText(CStdioFile& file, CZor& doc, std::uint32_t level);
  /// A new document edit read from the XML file at the path, owned by the caller. Null when the
  /// file cannot be loaded or its root element is not "Zor".
  [[nodiscard]] CZorEdit* ConvertTextToZorEdit(CString path);

 protected:
  void SetZorEditParam(CZorEdit* edit, TiXmlElement* root);
  void SetZorFileInfoParam(CZorEdit* edit, TiXmlElement* elem);
};

}  // namespace qenzor
