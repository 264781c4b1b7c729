#pragma once

#include "qenzor/core/chunk_set.h"
#include "qenzor/edit/chunk_set_edit.h"
#include "qenzor/text/chunk_set_text_converter.h"
#include "qenzor/zor/abstract_draw_info.h"

namespace qenzor {

class CDrawInfoSetEdit;
class CDrawInfoSetTextConverter;

/// The draw infos of a draw-data document; draw attributes name them by their position.
class QENZOR_EXPORT CDrawInfoSet : public CSetOf<CDrawInfoSet, CChunkSetArray<CAbstractDrawInfo*>> {
 public:
  static constexpr std::uint32_t kChunkId = 6;
  static constexpr std::string_view kTag = "DrawInfoSet";
  using EditClass = CDrawInfoSetEdit;
  using ConverterClass = CDrawInfoSetTextConverter;
};

class QENZOR_EXPORT CDrawInfoSetEdit
    : public CSetEditOf<CDrawInfoSetEdit, CDrawInfoSet,
                        CChunkSetArrayEdit<CAbstractDrawInfo*, CAbstractDrawInfoEdit*>> {};

class QENZOR_EXPORT CDrawInfoSetTextConverter
    : public CSetConverterOf<CChunkSetArrayTextConverter<CAbstractDrawInfo*>> {};

extern template class CAbstractChunkSet<CAbstractDrawInfo*>;
extern template class CChunkSetArray<CAbstractDrawInfo*>;
extern template class CSetOf<CDrawInfoSet, CChunkSetArray<CAbstractDrawInfo*>>;
extern template class CAbstractChunkSetEdit<CAbstractDrawInfoEdit*>;
extern template class CChunkSetArrayEdit<CAbstractDrawInfo*, CAbstractDrawInfoEdit*>;
extern template class CSetEditOf<CDrawInfoSetEdit, CDrawInfoSet,
                                 CChunkSetArrayEdit<CAbstractDrawInfo*, CAbstractDrawInfoEdit*>>;
extern template class CChunkSetArrayTextConverter<CAbstractDrawInfo*>;
extern template class CSetConverterOf<CChunkSetArrayTextConverter<CAbstractDrawInfo*>>;

}  // namespace qenzor
