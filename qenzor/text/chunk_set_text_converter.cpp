#include "qenzor/text/chunk_set_text_converter.h"

#include "qenzor/text/converter_rows_impl.h"
#include "qenzor/text/field_text_impl.h"

namespace qenzor {

void CChunkSetTextConverter::SetChunkEditParam(CAbstractChunkEdit* edit, TiXmlElement* elem) {
  if (edit == nullptr || elem == nullptr) return;
  ForEachChild(*elem, [edit](TiXmlElement& child) {
    if (const auto* row = FindConverterRow(child.ValueStr()); row != nullptr)
      edit->SetSubChunkEdit(row->Shared().ConvertStringToChunkEdit(&child));
  });
}

CString CChunkSetTextConverter::GetElemTagName(CAbstractChunk* /*elem*/) { return "SetElem"; }

}  // namespace qenzor
