#pragma once

#include "qenzor/core/chunk_of_impl.h"
#include "qenzor/edit/edit_of_impl.h"
#include "qenzor/text/converter_of_impl.h"
#include "qenzor/zor/draw_info_of.h"

namespace qenzor {

template <class Chunk, class Edit>
void CDrawInfoConverterOf<Chunk, Edit>::SetChunkEditParam(CAbstractChunkEdit* edit,
                                                          TiXmlElement* elem) {
  if (elem == nullptr) return;
  ForEachChild(*elem, [&](TiXmlElement& child) {
    if (child.ValueStr() == "ComData")
      SetChunkEditComDrawInfoParam(edit, &child);
    else if (child.ValueStr() == "ScData")
      SetChunkEditScDrawInfoParam(edit, &child);
  });
}

template <class Chunk, class Edit>
void CDrawInfoConverterOf<Chunk, Edit>::SetChunkEditComDrawInfoParam(CAbstractChunkEdit* edit,
                                                                     TiXmlElement* elem) {
  auto* same = dynamic_cast<Edit*>(edit);
  if (same != nullptr && elem != nullptr)
    TakeXmlField(*elem, *same, std::get<0>(Edit::DataType::Fields()));
}

template <class Chunk, class Edit>
void CDrawInfoConverterOf<Chunk, Edit>::SetChunkEditScDrawInfoParam(CAbstractChunkEdit* edit,
                                                                    TiXmlElement* elem) {
  auto* same = dynamic_cast<Edit*>(edit);
  if (same != nullptr && elem != nullptr)
    TakeXmlField(*elem, *same, std::get<1>(Edit::DataType::Fields()));
}

}  // namespace qenzor
