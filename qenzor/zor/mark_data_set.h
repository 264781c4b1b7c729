#pragma once

#include "qenzor/core/chunk_set.h"
#include "qenzor/edit/chunk_set_edit.h"
#include "qenzor/text/chunk_set_text_converter.h"
#include "qenzor/zor/mark_data.h"

namespace qenzor {

class CMarkDataSetEdit;
class CMarkDataSetTextConverter;

/// The marks of a draw-data document; combined label draw infos name them by their position.
class QENZOR_EXPORT CMarkDataSet : public CArraySetOf<CMarkDataSet, CMarkData> {
 public:
  static constexpr std::uint32_t kChunkId = 24;
  static constexpr std::string_view kTag = "MarkDataSet";
  using EditClass = CMarkDataSetEdit;
  using ConverterClass = CMarkDataSetTextConverter;
};

class QENZOR_EXPORT CMarkDataSetEdit : public CSetEditOf<CMarkDataSet> {};

class QENZOR_EXPORT CMarkDataSetTextConverter : public CSetConverterOf<CMarkDataSet> {};

extern template class CChunkSetArray<CMarkData*>;
extern template class CSetOf<CMarkDataSet, CChunkSetArray<CMarkData*>>;

}  // namespace qenzor
