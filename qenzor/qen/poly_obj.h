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
struct QENZOR_EXPORT PolyObjData {
  std::int32_t Height = 0;
  /// The vertices of the ring.
  typename Form::template Array<CPoint> Pt;

  static constexpr auto Fields() {
    return std::tuple{field("Height", &PolyObjData::Height), array("Pt", &PolyObjData::Pt)};
  }
};

/// A polygon. GetBoundRect tells the bounding rectangle as it was read: from a file of all
/// points, from memory of all but the last, which repeats the first in a closed ring.
class QENZOR_EXPORT CPolyObj
    : public CChunkOf<CPolyObj, CAbstractObj, Bounded<PolyObjData<ChunkForm>, BoundsOf::kRing>> {
 public:
  static constexpr std::uint32_t kChunkId = 13;
  static constexpr std::string_view kTag = "PolyObj";
  using EditClass = CPolyObjEdit;
  using ConverterClass = CPolyObjTextConverter;
};

class QENZOR_EXPORT CPolyObjEdit
    : public CEditOf<CPolyObjEdit, CPolyObj, CAbstractObjEdit, PolyObjData<EditForm>> {};

class QENZOR_EXPORT CPolyObjTextConverter : public CConverterOf<CPolyObj, CPolyObjEdit> {};

extern template class CChunkOf<CPolyObj, CAbstractObj,
                               Bounded<PolyObjData<ChunkForm>, BoundsOf::kRing>>;
extern template class CEditOf<CPolyObjEdit, CPolyObj, CAbstractObjEdit, PolyObjData<EditForm>>;
extern template class CConverterOf<CPolyObj, CPolyObjEdit>;

}  // namespace qenzor
