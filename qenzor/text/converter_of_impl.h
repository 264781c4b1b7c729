#pragma once

#include "qenzor/text/converter_of.h"
#include "qenzor/text/field_text_impl.h"

namespace qenzor {

template <class Chunk>
void CConverterOf<Chunk>::ConvertDataToString(CStdioFile& file, CAbstractChunk* chunk,
                                              std::uint32_t level) {
  if (const auto* same = class_cast<Chunk>(chunk); same != nullptr)
    WriteXmlFields(CXmlWriter(file, level), FieldsOf<Chunk>(), *same);
}

template <class Chunk>
void CConverterOf<Chunk>::SetChunkEditParam(CAbstractChunkEdit* edit, TiXmlElement* elem) {
  auto* same = dynamic_cast<typename Chunk::EditClass*>(edit);
  if (same == nullptr || elem == nullptr) return;
  CXmlElement parsed(*elem);
  FillEdit(*same, parsed);
}

template <class Chunk>
void CConverterOf<Chunk>::FillEdit(typename Chunk::EditClass& edit, CXmlElement& elem) {
  ReadXmlFields(elem, FieldsOf<typename Chunk::EditClass>(), edit);
}

}  // namespace qenzor
