#pragma once

#include "qenzor/core/chunk_of.h"
#include "qenzor/edit/edit_of.h"
#include "qenzor/text/converter_of.h"
#include "qenzor/zor/mark_elem.h"

namespace qenzor {

class CMarkDataEdit;
class CMarkDataTextConverter;

/// Data: RectMin (x, y), RectMax (x, y) (i16 each), count (u16), the mark elements.
template <class Form>
struct QENZOR_EXPORT MarkDataData {
  CPoint RectMin;
  CPoint RectMax;
  typename Form::template RecordArray<CMarkElem> MarkElem;

  static constexpr auto Fields() {
    using D = MarkDataData;
    return std::tuple{field("RectMin", &D::RectMin), field("RectMax", &D::RectMax),
                      array("MarkElem", &D::MarkElem)};
  }
};

/// A mark: a small vector symbol.
class QENZOR_EXPORT CMarkData
    : public CChunkOf<CMarkData, CAbstractChunk, MarkDataData<ChunkForm>> {
 public:
  static constexpr std::uint32_t kChunkId = 11;
  static constexpr std::string_view kTag = "MarkData";
  using EditClass = CMarkDataEdit;
  using ConverterClass = CMarkDataTextConverter;
};

class QENZOR_EXPORT CMarkDataEdit
    : public CEditOf<CMarkDataEdit, CMarkData, CAbstractChunkEdit, MarkDataData<EditForm>> {};

class QENZOR_EXPORT CMarkDataTextConverter : public CConverterOf<CMarkData, CMarkDataEdit> {};

extern template class CChunkOf<CMarkData, CAbstractChunk, MarkDataData<ChunkForm>>;
extern template class CEditOf<CMarkDataEdit, CMarkData, CAbstractChunkEdit, MarkDataData<EditForm>>;
extern template class CConverterOf<CMarkData, CMarkDataEdit>;

}  // namespace qenzor
