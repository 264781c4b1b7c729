#pragma once

#include "qenzor/text/converter_of.h"
#include "qenzor/text/field_text_impl.h"

namespace qenzor {

template <class Chunk, class Edit>
void CConverterOf<Chunk, Edit>::ConvertDataToString(CStdioFile& file, CAbstractChunk* chunk,
                                                    std::uint32_t level) {
  if (const auto* same = class_cast<Chunk>(chunk); same != nullptr)
    WriteXmlFields(CXmlWriter(file, level), FieldsOf<Chunk>(), *same);
}

template <class Chunk, class Edit>
void CConverterOf<Chunk, Edit>::SetChunkEditParam(CAbstractChunkEdit* edit, TiXmlElement* elem) {
  auto* same = dynamic_cast<Edit*>(edit);
  if (same != nullptr && elem != nullptr) ReadXmlFields(*elem, FieldsOf<Edit>(), *same);
}

}  // namespace qenzor
