#pragma once

#include "qenzor/core/chunk_set.h"
#include "qenzor/edit/chunk_set_edit.h"
#include "qenzor/text/chunk_set_text_converter.h"
#include "qenzor/zor/abstract_draw_info.h"

namespace qenzor {

class CDrawInfoSetEdit;
class CDrawInfoSetTextConverter;

/// The draw infos of a draw-data document; draw attributes name them by their position.
class QENZOR_EXPORT CDrawInfoSet : public CArraySetOf<CDrawInfoSet, CAbstractDrawInfo> {
 public:
  static constexpr std::uint32_t kChunkId = 6;
  static constexpr std::string_view kTag = "DrawInfoSet";
  using EditClass = CDrawInfoSetEdit;
  using ConverterClass = CDrawInfoSetTextConverter;
};

class QENZOR_EXPORT CDrawInfoSetEdit : public CSetEditOf<CDrawInfoSet> {};

class QENZOR_EXPORT CDrawInfoSetTextConverter : public CSetConverterOf<CDrawInfoSet> {};

extern template class CChunkSetArray<CAbstractDrawInfo*>;
extern template class CSetOf<CDrawInfoSet, CChunkSetArray<CAbstractDrawInfo*>>;

}  // namespace qenzor
