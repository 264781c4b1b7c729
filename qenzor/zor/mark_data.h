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
struct QENZOR_EXPORT MarkDataFields {
  // The extent, in the mark's own coordinate space; not checked against the elements.
  CPoint RectMin;
  CPoint RectMax;
  /// In drawing order.
  typename Form::template RecordArray<CMarkElem> MarkElem;

  static constexpr auto Fields() {
    using D = MarkDataFields;
    return std::tuple{field("RectMin", &D::RectMin), field("RectMax", &D::RectMax),
                      array("MarkElem", &D::MarkElem)};
  }
};

/// A mark: a small vector symbol.
class QENZOR_EXPORT CMarkData
    : public CChunkOf<CMarkData, CAbstractChunk, MarkDataFields<ChunkForm>> {
 public:
  static constexpr std::uint32_t kChunkId = 11;
  static constexpr std::string_view kTag = "MarkData";
  using EditClass = CMarkDataEdit;
  using ConverterClass = CMarkDataTextConverter;
};

class QENZOR_EXPORT CMarkDataEdit : public CEditOf<CMarkData> {};

class QENZOR_EXPORT CMarkDataTextConverter : public CConverterOf<CMarkData> {
 public:
  void SetChunkEditParam(CAbstractChunkEdit* edit, TiXmlElement* elem) override;

 protected:
  /// Appends a mark element, zero but for what the "MarkElem" element holds.
  void SetChunkEditMarkElemParam(CAbstractChunkEdit* edit, TiXmlElement* elem);
};

extern template class CChunkOf<CMarkData, CAbstractChunk, MarkDataFields<ChunkForm>>;

}  // namespace qenzor
