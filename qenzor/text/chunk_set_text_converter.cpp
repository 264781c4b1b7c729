#include "qenzor/text/chunk_set_text_converter.h"

#include "qenzor/core/class_row_impl.h"
#include "qenzor/text/field_text_impl.h"

namespace qenzor {

void CChunkSetTextConverter::SetChunkEditParam(CAbstractChunkEdit* edit, TiXmlElement* elem) {
  if (edit == nullptr || elem == nullptr) return;
  CXmlElement parsed(*elem);
  FillEdit(*edit, parsed);
}

void CChunkSetTextConverter::FillEdit(CAbstractChunkEdit& edit, CXmlElement& elem) {
  elem.ForEachChild([&edit](CXmlElement& child) {
    const ClassRow* row = FindRow(child.GetTag());
    if (row == nullptr) return;
    std::unique_ptr<CAbstractChunkEdit> sub(row->CreateEdit());
    row->FillEdit(*sub, child);
    edit.SetSubChunkEdit(sub.release());
  });
}

CString CChunkSetTextConverter::GetElemTagName(CAbstractChunk* /*elem*/) { return "SetElem"; }

CString CChunkSetTextConverter::TagOfClass(const CAbstractChunk& elem) {
  const ClassRow* row = FindRow(elem);
  return row == nullptr ? "SetElem" : CString(row->Tag);
}

}  // namespace qenzor
