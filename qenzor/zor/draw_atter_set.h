#pragma once

#include "qenzor/core/chunk_set.h"
#include "qenzor/edit/chunk_set_edit.h"
#include "qenzor/text/chunk_set_text_converter.h"
#include "qenzor/zor/draw_atter.h"

namespace qenzor {

class CDrawAtterSetEdit;
class CDrawAtterSetTextConverter;

/// All draw attributes of a draw-data document, filed under their z-ids.
class QENZOR_EXPORT CDrawAtterSet : public CKeyedSetOf<CDrawAtterSet, CDrawAtter> {
 public:
  static constexpr std::uint32_t kChunkId = 2;
  static constexpr std::string_view kTag = "DrawAtterSet";
  using EditClass = CDrawAtterSetEdit;
  using ConverterClass = CDrawAtterSetTextConverter;

  /// Takes ownership of a draw attribute and files it under its z-id, deleting the one that stands
  /// there. The index is not used.
  void AddElem(std::uint32_t index, CDrawAtter* elem) override;
};

class QENZOR_EXPORT CDrawAtterSetEdit : public CSetEditOf<CDrawAtterSet> {
 public:
  void AddElem(CDrawAtterEdit* elem) override;
};

class QENZOR_EXPORT CDrawAtterSetTextConverter : public CSetConverterOf<CDrawAtterSet> {};

extern template class CChunkSetMap<std::uint64_t, CDrawAtter*>;
extern template class CSetOf<CDrawAtterSet, CChunkSetMap<std::uint64_t, CDrawAtter*>>;

}  // namespace qenzor
