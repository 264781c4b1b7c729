#include "qenzor/qen/url_info.h"

#include "qenzor/core/chunk_of_impl.h"
#include "qenzor/edit/edit_of_impl.h"
#include "qenzor/text/field_text_impl.h"

namespace qenzor {

template class CChunkOf<CUrlInfo, CAbstractAddedObjInfo, UrlInfoFields<ChunkForm>>;
template class CEditOf<CUrlInfo>;

void CUrlInfoTextConverter::ConvertDataToString(CStdioFile& file, CAbstractChunk* chunk,
                                                std::uint32_t level) {
  const auto* url = class_cast<CUrlInfo>(chunk);
  if (url == nullptr) return;
  constexpr std::string_view kTextTag = "Text";
  const CString text = EncodeText(url->Text, file.GetEncoding());
  CXmlWriter xml(file, level);
  xml.TextElement(kTextTag, text);
  xml.Text(kTextTag, text);
}

void CUrlInfoTextConverter::SetChunkEditParam(CAbstractChunkEdit* edit, TiXmlElement* elem) {
  auto* url = dynamic_cast<CUrlInfoEdit*>(edit);
  if (url == nullptr || elem == nullptr) return;
  CXmlElement parsed(*elem);
  FillEdit(*url, parsed);
}

void CUrlInfoTextConverter::FillEdit(CUrlInfoEdit& edit, CXmlElement& elem) {
  edit.Text = elem.GetWideText();
}

}  // namespace qenzor
