#pragma once

#include "qenzor/core/chunk_of.h"
#include "qenzor/edit/edit_of.h"
#include "qenzor/qen/abstract_obj.h"
#include "qenzor/qen/bounded.h"
#include "qenzor/text/converter_of.h"

namespace qenzor {

class CLineObjEdit;
class CLineObjTextConverter;

/// Data: point count N (u16), N points (x and y, i16 each); N * 4 + 2 bytes.
template <class Form>
struct QENZOR_EXPORT LineObjFields {
  /// The vertices in drawing order, in map units.
  typename Form::template Array<CPoint> Pt;

  static constexpr auto Fields() { return std::tuple{array("Pt", &LineObjFields::Pt)}; }
};

/// A polyline. GetBoundRect tells the bounding rectangle of all points as they were read.
class QENZOR_EXPORT CLineObj
    : public CChunkOf<CLineObj, CAbstractObj,
                      CBounded<LineObjFields<ChunkForm>, BoundsOf::kAllPoints>> {
 public:
  static constexpr std::uint32_t kChunkId = 9;
  static constexpr std::string_view kTag = "LineObj";
  using EditClass = CLineObjEdit;
  using ConverterClass = CLineObjTextConverter;
};

class QENZOR_EXPORT CLineObjEdit : public CEditOf<CLineObj> {};

class QENZOR_EXPORT CLineObjTextConverter : public CConverterOf<CLineObj> {};

extern template class CChunkOf<CLineObj, CAbstractObj,
                               CBounded<LineObjFields<ChunkForm>, BoundsOf::kAllPoints>>;

}  // namespace qenzor
