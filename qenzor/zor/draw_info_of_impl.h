#pragma once

#include "qenzor/core/chunk_of_impl.h"
#include "qenzor/edit/edit_of_impl.h"
#include "qenzor/text/converter_of_impl.h"
#include "qenzor/zor/draw_info_of.h"

namespace qenzor {

template <class Chunk>
void CDrawInfoConverterOf<Chunk>::SetChunkEditParam(CAbstractChunkEdit* edit, TiXmlElement* elem) {
  if (elem == nullptr) return;
  ForEachChild(*elem, [&](TiXmlElement& child) {
    if (child.ValueStr() == "ComData")
      SetChunkEditComDrawInfoParam(edit, &child);
    else if (child.ValueStr() == "ScData")
      SetChunkEditScDrawInfoParam(edit, &child);
  });
}

template <class Chunk>
void CDrawInfoConverterOf<Chunk>::SetChunkEditComDrawInfoParam(CAbstractChunkEdit* edit,
                                                               TiXmlElement* elem) {
  auto* same = dynamic_cast<typename Chunk::EditClass*>(edit);
  if (same != nullptr && elem != nullptr)
    TakeXmlField(*elem, *same, std::get<0>(Chunk::EditClass::DataType::Fields()));
}

template <class Chunk>
void CDrawInfoConverterOf<Chunk>::SetChunkEditScDrawInfoParam(CAbstractChunkEdit* edit,
                                                              TiXmlElement* elem) {
  auto* same = dynamic_cast<typename Chunk::EditClass*>(edit);
  if (same != nullptr && elem != nullptr)
    TakeXmlField(*elem, *same, std::get<1>(Chunk::EditClass::DataType::Fields()));
}

}  // namespace qenzor
