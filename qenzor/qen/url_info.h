#pragma once

#include "qenzor/core/chunk_of.h"
#include "qenzor/edit/edit_of.h"
#include "qenzor/qen/abstract_added_obj_info.h"
#include "qenzor/text/converter_of.h"

namespace qenzor {

class CUrlInfoEdit;
class CUrlInfoTextConverter;

/// Data: text (u16 byte count, mark, UTF-16 units).
template <class Form>
struct QENZOR_EXPORT UrlInfoFields {
  /// The URL; not checked.
  CStringW Text;

  static constexpr auto Fields() { return std::tuple{text("Text", &UrlInfoFields::Text)}; }
};

/// A link attached to a map object.
class QENZOR_EXPORT CUrlInfo
    : public CChunkOf<CUrlInfo, CAbstractAddedObjInfo, UrlInfoFields<ChunkForm>> {
 public:
  static constexpr std::uint32_t kChunkId = 19;
  static constexpr std::string_view kTag = "UrlInfo";
  using EditClass = CUrlInfoEdit;
  using ConverterClass = CUrlInfoTextConverter;
};

class QENZOR_EXPORT CUrlInfoEdit : public CEditOf<CUrlInfo> {};

/// Writes the URL as a "Text" element that stands twice on its line, but reads the text that stands
/// directly in the "UrlInfo" element: a URL reaches the edit form from text written by hand, not
/// from text that the library wrote.
class QENZOR_EXPORT CUrlInfoTextConverter : public CAbstractChunkTextConverter {
 public:
  void ConvertDataToString(CStdioFile& file, CAbstractChunk* chunk, std::uint32_t level) override;
  void SetChunkEditParam(CAbstractChunkEdit* edit, TiXmlElement* elem) override;
  static void FillEdit(CUrlInfoEdit& edit, CXmlElement& elem);
};

extern template class CChunkOf<CUrlInfo, CAbstractAddedObjInfo, UrlInfoFields<ChunkForm>>;

}  // namespace qenzor
