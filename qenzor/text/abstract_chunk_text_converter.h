#pragma once

#include "qenzor/core/abstract_chunk.h"
#include "qenzor/edit/abstract_chunk_edit.h"
#include "qenzor/platform/strings.h"

class TiXmlElement;

namespace qenzor {

class CXmlElement;

/// Writes the chunks of one class as XML lines, and fills its edit objects from XML elements.
/// Converters hold no data. Writing lets the file's exceptions through. Reading takes what it
/// knows and ignores the rest; it does not fail.
class QENZOR_EXPORT CAbstractChunkTextConverter {
 public:
  virtual ~CAbstractChunkTextConverter();
  CAbstractChunkTextConverter(const CAbstractChunkTextConverter&) = delete;
  CAbstractChunkTextConverter& operator=(const CAbstractChunkTextConverter&) = delete;

  /// Writes the chunk's content, each line indented by level tabs; nothing when the chunk is not of
  /// the converter's class.
  virtual void ConvertDataToString(CStdioFile& file, CAbstractChunk* chunk,
                                   std::uint32_t level) = 0;
  /// A new edit object filled from the element, owned by the caller; null when the element is null.
  [[nodiscard]] virtual CAbstractChunkEdit* ConvertStringToChunkEdit(TiXmlElement* elem);
  /// Fills the edit object from the element's children; nothing when the edit object is not of the
  /// converter's class or the element is null.
  virtual void SetChunkEditParam(CAbstractChunkEdit* edit, TiXmlElement* elem) = 0;

  /// n tab characters.
  static CString GetIndent(std::uint32_t n);
  /// An element with the value escaped, attributes put behind the tag as they are.
  static CString GetElemString(const CString& tag, const CString& value, const CString& attribs);
  /// The same for wide text, which is converted to the narrow code page.
  static CString GetElemString(const CString& tag, const CStringW& value, const CString& attribs);
  /// A colour element of 0xAARRGGBB.
  static CString GetColorElemString(const CString& tag, std::uint32_t color);
  /// Escapes the text in place: a space becomes "&amp;nbsp;", a line feed "&lt;br /&gt;", the five
  /// special characters their entities.
  static void EncodeSpecialCharacterSetA(CString& text);
  static void EncodeSpecialCharacterSetW(CStringW& text);
  /// Writes the chunk as an element of that tag, its content one level deeper. Writes nothing when
  /// the chunk is null or its class has no converter.
  static void ConvertChunkToString(CStdioFile& file, const CString& tag, CAbstractChunk* chunk,
                                   std::uint32_t level);

 protected:
  CAbstractChunkTextConverter() = default;
};

}  // namespace qenzor
