#pragma once

#include "qenzor/core/chunk_of.h"
#include "qenzor/edit/edit_of.h"
#include "qenzor/qen/abstract_obj.h"
#include "qenzor/text/converter_of.h"

namespace qenzor {

class CRasMMObjEdit;
class CRasMMObjTextConverter;

/// Data: x, y (i16 each); 4 bytes.
template <class Form>
struct QENZOR_EXPORT RasMMObjFields {
  /// In map units.
  CPoint Pt;

  static constexpr auto Fields() { return std::tuple{field("Pt", &RasMMObjFields::Pt)}; }
};

/// A raster placed at a point.
class QENZOR_EXPORT CRasMMObj
    : public CChunkOf<CRasMMObj, CAbstractObj, RasMMObjFields<ChunkForm>> {
 public:
  static constexpr std::uint32_t kChunkId = 18;
  static constexpr std::string_view kTag = "RasMMObj";
  using EditClass = CRasMMObjEdit;
  using ConverterClass = CRasMMObjTextConverter;
};

class QENZOR_EXPORT CRasMMObjEdit : public CEditOf<CRasMMObj> {};

class QENZOR_EXPORT CRasMMObjTextConverter : public CConverterOf<CRasMMObj> {};

extern template class CChunkOf<CRasMMObj, CAbstractObj, RasMMObjFields<ChunkForm>>;

}  // namespace qenzor
