#pragma once

#include "qenzor/core/chunk_of.h"
#include "qenzor/edit/edit_of.h"
#include "qenzor/qen/abstract_obj.h"
#include "qenzor/text/converter_of.h"

namespace qenzor {

class CCircleObjEdit;
class CCircleObjTextConverter;

/// Data: centre (x and y, i16 each), radius (u16), flags (u8); 7 bytes.
template <class Form>
struct QENZOR_EXPORT CircleObjFields {
  /// In map units.
  CPoint Center;
  /// In map units.
  std::uint16_t Radius = 0;
  /// Kept, not interpreted.
  std::uint8_t Flags = 0;

  static constexpr auto Fields() {
    using D = CircleObjFields;
    return std::tuple{field("Center", &D::Center), field("Radius", &D::Radius),
                      field("Flags", &D::Flags)};
  }
};

/// A circle around a point.
class QENZOR_EXPORT CCircleObj
    : public CChunkOf<CCircleObj, CAbstractObj, CircleObjFields<ChunkForm>> {
 public:
  static constexpr std::uint32_t kChunkId = 31;
  static constexpr std::string_view kTag = "CircleObj";
  using EditClass = CCircleObjEdit;
  using ConverterClass = CCircleObjTextConverter;
};

class QENZOR_EXPORT CCircleObjEdit : public CEditOf<CCircleObj> {};

class QENZOR_EXPORT CCircleObjTextConverter : public CConverterOf<CCircleObj> {};

extern template class CChunkOf<CCircleObj, CAbstractObj, CircleObjFields<ChunkForm>>;

}  // namespace qenzor
