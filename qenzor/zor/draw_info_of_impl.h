#pragma once

#include "qenzor/core/chunk_of_impl.h"
#include "qenzor/edit/edit_of_impl.h"
#include "qenzor/text/converter_of_impl.h"
#include "qenzor/zor/draw_info_of.h"

namespace qenzor {

template <class Chunk>
void CDrawInfoConverterOf<Chunk>::SetChunkEditParam(CAbstractChunkEdit* edit, TiXmlElement* elem) {
  if (elem == nullptr) return;
  CXmlElement(*elem).ForEachChild([&](CXmlElement& child) {
    if (child.GetTag() == "ComData")
      SetChunkEditComDrawInfoParam(edit, &child.GetValue());
    else if (child.GetTag() == "ScData")
      SetChunkEditScDrawInfoParam(edit, &child.GetValue());
  });
}

template <class Chunk>
void CDrawInfoConverterOf<Chunk>::SetChunkEditComDrawInfoParam(CAbstractChunkEdit* edit,
                                                               TiXmlElement* elem) {
  auto* same = dynamic_cast<typename Chunk::EditClass*>(edit);
  if (same == nullptr || elem == nullptr) return;
  CXmlElement parsed(*elem);
  TakeXmlField(parsed, *same, std::get<0>(Chunk::EditClass::DataType::Fields()));
}

template <class Chunk>
void CDrawInfoConverterOf<Chunk>::SetChunkEditScDrawInfoParam(CAbstractChunkEdit* edit,
                                                              TiXmlElement* elem) {
  auto* same = dynamic_cast<typename Chunk::EditClass*>(edit);
  if (same == nullptr || elem == nullptr) return;
  CXmlElement parsed(*elem);
  TakeXmlField(parsed, *same, std::get<1>(Chunk::EditClass::DataType::Fields()));
}

}  // namespace qenzor
