#pragma once

#include "qenzor/core/chunk_set.h"
#include "qenzor/edit/chunk_set_edit.h"
#include "qenzor/text/chunk_set_text_converter.h"
#include "qenzor/zor/mark_data.h"

namespace qenzor {

class CMarkDataSetEdit;
class CMarkDataSetTextConverter;

/// The marks of a draw-data document; combined label draw infos name them by their position.
class QENZOR_EXPORT CMarkDataSet : public CSetOf<CMarkDataSet, CChunkSetArray<CMarkData*>> {
 public:
  static constexpr std::uint32_t kChunkId = 24;
  static constexpr std::string_view kTag = "MarkDataSet";
  using EditClass = CMarkDataSetEdit;
  using ConverterClass = CMarkDataSetTextConverter;
};

class QENZOR_EXPORT CMarkDataSetEdit
    : public CSetEditOf<CMarkDataSetEdit, CMarkDataSet,
                        CChunkSetArrayEdit<CMarkData*, CMarkDataEdit*>> {};

class QENZOR_EXPORT CMarkDataSetTextConverter
    : public CSetConverterOf<CChunkSetArrayTextConverter<CMarkData*>> {};

extern template class CAbstractChunkSet<CMarkData*>;
extern template class CChunkSetArray<CMarkData*>;
extern template class CSetOf<CMarkDataSet, CChunkSetArray<CMarkData*>>;
extern template class CAbstractChunkSetEdit<CMarkDataEdit*>;
extern template class CChunkSetArrayEdit<CMarkData*, CMarkDataEdit*>;
extern template class CSetEditOf<CMarkDataSetEdit, CMarkDataSet,
                                 CChunkSetArrayEdit<CMarkData*, CMarkDataEdit*>>;
extern template class CChunkSetArrayTextConverter<CMarkData*>;
extern template class CSetConverterOf<CChunkSetArrayTextConverter<CMarkData*>>;

}  // namespace qenzor
