#pragma once

#include "qenzor/core/chunk_of.h"
#include "qenzor/edit/edit_of.h"
#include "qenzor/qen/abstract_obj.h"
#include "qenzor/text/converter_of.h"

namespace qenzor {

class CRasLLObjEdit;
class CRasLLObjTextConverter;

/// Data: west, south, east, north (i16 each); 8 bytes.
template <class Form>
struct QENZOR_EXPORT RasLLObjFields {
  /// West, south, east, north as left, top, right, bottom, in map units.
  CRect Rect;

  static constexpr auto Fields() { return std::tuple{field("Rect", &RasLLObjFields::Rect)}; }
};

/// A raster placed by its edges. No order of the edges is enforced.
class QENZOR_EXPORT CRasLLObj
    : public CChunkOf<CRasLLObj, CAbstractObj, RasLLObjFields<ChunkForm>> {
 public:
  static constexpr std::uint32_t kChunkId = 16;
  static constexpr std::string_view kTag = "RasLLObj";
  using EditClass = CRasLLObjEdit;
  using ConverterClass = CRasLLObjTextConverter;
};

class QENZOR_EXPORT CRasLLObjEdit : public CEditOf<CRasLLObj> {};

class QENZOR_EXPORT CRasLLObjTextConverter : public CConverterOf<CRasLLObj> {};

extern template class CChunkOf<CRasLLObj, CAbstractObj, RasLLObjFields<ChunkForm>>;

}  // namespace qenzor
