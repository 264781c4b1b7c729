#include "qenzor/zor/mark_data.h"

#include "qenzor/core/chunk_of_impl.h"
#include "qenzor/edit/edit_of_impl.h"
#include "qenzor/text/converter_of_impl.h"

namespace qenzor {

template class CChunkOf<CMarkData, CAbstractChunk, MarkDataFields<ChunkForm>>;
template class CEditOf<CMarkData>;
template class CConverterOf<CMarkData>;

void CMarkDataTextConverter::SetChunkEditParam(CAbstractChunkEdit* edit, TiXmlElement* elem) {
  auto* mark = class_cast<CMarkDataEdit>(edit);
  if (mark == nullptr || elem == nullptr) return;
  CXmlElement(*elem).ForEachChild([&](CXmlElement& child) {
    if (child.GetTag() == std::get<2>(CMarkDataEdit::Fields()).Tag)
      SetChunkEditMarkElemParam(mark, &child.GetValue());
    else
      ReadXmlField(child, CMarkDataEdit::Fields(), *mark);
  });
}

void CMarkDataTextConverter::SetChunkEditMarkElemParam(CAbstractChunkEdit* edit,
                                                       TiXmlElement* elem) {
  auto* mark = class_cast<CMarkDataEdit>(edit);
  if (mark == nullptr || elem == nullptr) return;
  CXmlElement parsed(*elem);
  TakeXmlField(parsed, *mark, std::get<2>(CMarkDataEdit::Fields()));
}

}  // namespace qenzor
