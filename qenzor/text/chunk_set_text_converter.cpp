#include "qenzor/text/chunk_set_text_converter.h"

#include "qenzor/core/class_row_impl.h"
#include "qenzor/text/field_text_impl.h"

namespace qenzor {

void CChunkSetTextConverter::SetChunkEditParam(CAbstractChunkEdit* edit, TiXmlElement* elem) {
  if (edit == nullptr || elem == nullptr) return;
  ForEachChild(*elem, [edit](TiXmlElement& child) {
    if (const ClassRow* row = FindRow(child.ValueStr()); row != nullptr)
      edit->SetSubChunkEdit(row->SharedConverter().ConvertStringToChunkEdit(&child));
  });
}

CString CChunkSetTextConverter::GetElemTagName(CAbstractChunk* /*elem*/) { return "SetElem"; }

CString CChunkSetTextConverter::TagOfClass(const CAbstractChunk& elem) {
  const ClassRow* row = FindRow(elem);
  return row == nullptr ? "SetElem" : CString(row->Tag);
}

}  // namespace qenzor
