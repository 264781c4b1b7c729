#pragma once

#include "qenzor/core/chunk_set.h"
#include "qenzor/edit/chunk_set_edit.h"
#include "qenzor/qen/layer_data.h"
#include "qenzor/text/chunk_set_text_converter.h"

namespace qenzor {

class CLayerSetEdit;
class CLayerSetTextConverter;

/// The layers of a mesh segment.
class QENZOR_EXPORT CLayerSet : public CArraySetOf<CLayerSet, CLayerData> {
 public:
  static constexpr std::uint32_t kChunkId = 8;
  static constexpr std::string_view kTag = "LayerSet";
  using EditClass = CLayerSetEdit;
  using ConverterClass = CLayerSetTextConverter;
};

class QENZOR_EXPORT CLayerSetEdit : public CSetEditOf<CLayerSet> {};

class QENZOR_EXPORT CLayerSetTextConverter : public CSetConverterOf<CLayerSet> {};

extern template class CChunkSetArray<CLayerData*>;
extern template class CSetOf<CLayerSet, CChunkSetArray<CLayerData*>>;

}  // namespace qenzor
