#pragma once

#include "qenzor/core/chunk_of.h"
#include "qenzor/edit/edit_of.h"
#include "qenzor/qen/abstract_obj.h"
#include "qenzor/qen/bounded.h"
#include "qenzor/text/converter_of.h"

namespace qenzor {

class CPolyObjEdit;
class CPolyObjTextConverter;

/// Data: height (i32), point count N (u16), N points (x and y, i16 each); N * 4 + 6 bytes.
template <class Form>
struct QENZOR_EXPORT PolyObjFields {
  /// Kept, not interpreted.
  std::int32_t Height = 0;
  /// The vertices of the ring, in map units.
  typename Form::template Array<CPoint> Pt;

  static constexpr auto Fields() {
    return std::tuple{field("Height", &PolyObjFields::Height), array("Pt", &PolyObjFields::Pt)};
  }
};

/// A polygon. GetBoundRect tells the bounding rectangle as it was read: from a file of all
/// points, from memory of all but the last, which repeats the first in a closed ring.
class QENZOR_EXPORT CPolyObj
    : public CChunkOf<CPolyObj, CAbstractObj, CBounded<PolyObjFields<ChunkForm>, BoundsOf::kRing>> {
 public:
  static constexpr std::uint32_t kChunkId = 13;
  static constexpr std::string_view kTag = "PolyObj";
  using EditClass = CPolyObjEdit;
  using ConverterClass = CPolyObjTextConverter;
};

class QENZOR_EXPORT CPolyObjEdit : public CEditOf<CPolyObj> {};

class QENZOR_EXPORT CPolyObjTextConverter : public CConverterOf<CPolyObj> {};

extern template class CChunkOf<CPolyObj, CAbstractObj,
                               CBounded<PolyObjFields<ChunkForm>, BoundsOf::kRing>>;

}  // namespace qenzor
