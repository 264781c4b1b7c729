#pragma once

#include "qenzor/text/chunk_set_text_converter.h"

namespace qenzor {

template <class T>
void CChunkSetArrayTextConverter<T>::ConvertDataToString(CStdioFile& file, CAbstractChunk* chunk,
                                                         std::uint32_t level) {
  auto* set = class_cast<CChunkSetArray<T>>(chunk);
  if (set == nullptr) return;
  const std::uint32_t count = set->GetElemCount();
  for (std::uint32_t i = 0; i < count; ++i)
    if (T elem = set->GetElem(i); elem != nullptr)
      this->ConvertChunkToString(file, this->GetElemTagName(elem), elem, level);
}

template <class T>
void CChunkSetMapTextConverter<std::uint64_t, T>::ConvertDataToString(CStdioFile& file,
                                                                      CAbstractChunk* chunk,
                                                                      std::uint32_t level) {
  auto* set = class_cast<CChunkSetMap<std::uint64_t, T>>(chunk);
  if (set == nullptr) return;
  set->ForEachElem(
      [&](T elem) { this->ConvertChunkToString(file, this->GetElemTagName(elem), elem, level); });
}

template <class SetBase>
CString CSetConverterOf<SetBase>::GetElemTagName(CAbstractChunk* elem) {
  return class_cast<typename SetBase::Element>(elem) == nullptr ? SetBase::GetElemTagName(elem)
                                                                : this->TagOfClass(*elem);
}

}  // namespace qenzor
