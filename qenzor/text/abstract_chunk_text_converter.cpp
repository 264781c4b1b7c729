#include "qenzor/text/abstract_chunk_text_converter.h"

#include <memory>

#include "qenzor/core/class_row_impl.h"
#include "qenzor/edit/chunk_edit_factory.h"
#include "qenzor/platform/code_page.h"
#include "qenzor/text/escape_impl.h"
#include "qenzor/text/xml_writer_impl.h"

namespace qenzor {

namespace {

template <class String>
void Escape(String& text) {
  String escaped;
  escaped.reserve(text.size());
  for (const auto unit : text) {
    const std::string_view escape =
        EscapeOf(static_cast<std::make_unsigned_t<typename String::value_type>>(unit));
    if (escape.empty())
      escaped.push_back(unit);
    else
      escaped.append(escape.begin(), escape.end());
  }
  text = std::move(escaped);
}

}  // namespace

CAbstractChunkTextConverter::~CAbstractChunkTextConverter() = default;

CAbstractChunkEdit* CAbstractChunkTextConverter::ConvertStringToChunkEdit(TiXmlElement* elem) {
  if (elem == nullptr) return nullptr;
  std::unique_ptr<CAbstractChunkEdit> edit(CChunkEditFactory::CreateInitInstance(this));
  if (edit != nullptr) SetChunkEditParam(edit.get(), elem);
  return edit.release();
}

CString CAbstractChunkTextConverter::GetIndent(std::uint32_t n) {
  CString indent(n, '\t');
  return indent;
}

CString CAbstractChunkTextConverter::GetElemString(const CString& tag, const CString& value,
                                                   const CString& attribs) {
  CString escaped = value;
  EncodeSpecialCharacterSetA(escaped);
  return '<' + tag + attribs + '>' + escaped + "</" + tag + '>';
}

CString CAbstractChunkTextConverter::GetElemString(const CString& tag, const CStringW& value,
                                                   const CString& attribs) {
  return GetElemString(tag, NarrowText(value), attribs);
}

CString CAbstractChunkTextConverter::GetColorElemString(const CString& tag, std::uint32_t color) {
  CString element(tag.size() + 64, '\0');
  CTextCursor out(reinterpret_cast<std::uint8_t*>(element.data()));
  CXmlWriter::PutColor(out, tag, color);
  element.resize(static_cast<std::size_t>(reinterpret_cast<char*>(out.GetEnd()) - element.data()));
  return element;
}

void CAbstractChunkTextConverter::EncodeSpecialCharacterSetA(CString& text) { Escape(text); }

void CAbstractChunkTextConverter::EncodeSpecialCharacterSetW(CStringW& text) { Escape(text); }

void CAbstractChunkTextConverter::ConvertChunkToString(CStdioFile& file, const CString& tag,
                                                       CAbstractChunk* chunk, std::uint32_t level) {
  const ClassRow* row = chunk == nullptr ? nullptr : FindRow(*chunk);
  if (row == nullptr) return;
  CXmlWriter writer(file, level);
  writer.OpenTag(tag);
  row->SharedConverter().ConvertDataToString(file, chunk, level + 1);
  writer.CloseTag(tag);
}

}  // namespace qenzor
