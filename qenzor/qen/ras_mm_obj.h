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
struct QENZOR_EXPORT RasMMObjData {
  CPoint Pt;

  static constexpr auto Fields() { return std::tuple{field("Pt", &RasMMObjData::Pt)}; }
};

/// A raster placed at a point.
class QENZOR_EXPORT CRasMMObj : public CChunkOf<CRasMMObj, CAbstractObj, RasMMObjData<ChunkForm>> {
 public:
  static constexpr std::uint32_t kChunkId = 18;
  static constexpr std::string_view kTag = "RasMMObj";
  using EditClass = CRasMMObjEdit;
  using ConverterClass = CRasMMObjTextConverter;
};

class QENZOR_EXPORT CRasMMObjEdit
    : public CEditOf<CRasMMObjEdit, CRasMMObj, CAbstractObjEdit, RasMMObjData<EditForm>> {};

class QENZOR_EXPORT CRasMMObjTextConverter : public CConverterOf<CRasMMObj, CRasMMObjEdit> {};

extern template class CChunkOf<CRasMMObj, CAbstractObj, RasMMObjData<ChunkForm>>;
extern template class CEditOf<CRasMMObjEdit, CRasMMObj, CAbstractObjEdit, RasMMObjData<EditForm>>;
extern template class CConverterOf<CRasMMObj, CRasMMObjEdit>;

}  // namespace qenzor
