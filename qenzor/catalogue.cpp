// The one list of the data classes. A new class is its pair of files, a row in Classes, and its
// named creator.

#include <memory>
#include <new>
#include <tuple>
#include <typeinfo>

#include "qenzor/core/chunk_factory.h"
#include "qenzor/edit/edit_rows_impl.h"
#include "qenzor/qen/added_obj_info_set.h"
#include "qenzor/qen/cmb_lbl_obj.h"
#include "qenzor/qen/layer_data.h"
#include "qenzor/qen/layer_set.h"
#include "qenzor/qen/line_obj.h"
#include "qenzor/qen/map_data.h"
#include "qenzor/qen/mesh_segment.h"
#include "qenzor/qen/mesh_segment_set.h"
#include "qenzor/qen/obj_set.h"
#include "qenzor/qen/poly_obj.h"
#include "qenzor/qen/ras_ll_obj.h"
#include "qenzor/qen/ras_mm_obj.h"
#include "qenzor/qen/url_info.h"
#include "qenzor/qen/z_id_obj.h"
#include "qenzor/qen/z_id_obj_set.h"
#include "qenzor/text/converter_rows_impl.h"
#include "qenzor/zor/cmb_lbl_draw_info.h"
#include "qenzor/zor/draw_atter.h"
#include "qenzor/zor/draw_atter_set.h"
#include "qenzor/zor/draw_data.h"
#include "qenzor/zor/draw_info_idx_set.h"
#include "qenzor/zor/draw_info_set.h"
#include "qenzor/zor/line_draw_info.h"
#include "qenzor/zor/mark_data.h"
#include "qenzor/zor/mark_data_set.h"
#include "qenzor/zor/poly_bmp_brush_draw_info.h"
#include "qenzor/zor/poly_shadow_draw_info.h"
#include "qenzor/zor/poly_solid_brush_draw_info.h"
#include "qenzor/zor/ras_ll_draw_info.h"
#include "qenzor/zor/ras_mm_draw_info.h"

namespace qenzor {

namespace {

/// In the order in which classes are matched.
using Classes = std::tuple<CUrlInfo, CAddedObjInfoSet, CLineObj, CPolyObj, CCmbLblObj, CRasLLObj,
                           CRasMMObj, CObjSet, CZIdObj, CZIdObjSet, CLayerData, CLayerSet,
                           CQenMapData, CMarkData, CMarkDataSet, CRasMMDrawInfo, CRasLLDrawInfo,
                           CCmbLblDrawInfo, CPolyShadowDrawInfo, CPolyBmpBrushDrawInfo,
                           CPolySolidBrushDrawInfo, CLineDrawInfo, CDrawInfoSet, CDrawInfoIdxSet,
                           CDrawAtter, CDrawAtterSet, CZorDrawData, CMeshSegmentSet, CMeshSegment>*;

template <class Chunk>
CAbstractChunk* Make() {
  return new (std::nothrow) Chunk;
}

template <class... Chunks>
constexpr std::array<CChunkFactory::Creator, CChunkFactory::kChunkIds> MakeCreators(
    std::tuple<Chunks...>* /*classes*/) noexcept {
  std::array<CChunkFactory::Creator, CChunkFactory::kChunkIds> creators{};
  ((creators[Chunks::kChunkId] = &Make<Chunks>), ...);
  creators[0] = &CChunkFactory::CreateUnKnownChunkInst;
  return creators;
}

template <class Chunk>
constexpr CChunkEditFactory::Row kEditRow{
    &Chunk::kRuntimeClass, []() -> CAbstractChunkEdit* { return new typename Chunk::EditClass; },
    [](const CAbstractChunkTextConverter& converter) {
      using Converter = typename Chunk::ConverterClass;
      return typeid(converter) == typeid(Converter) ||
             dynamic_cast<const Converter*>(&converter) != nullptr;
    }};

template <class Chunk>
CAbstractChunkTextConverter& SharedConverter() {
  static typename Chunk::ConverterClass converter;
  return converter;
}

template <class Chunk>
constexpr CChunkTextConverterFactory::Row kConverterRow{
    &Chunk::kRuntimeClass, Chunk::kTag,
    []() -> CAbstractChunkTextConverter* { return new typename Chunk::ConverterClass; },
    &SharedConverter<Chunk>};

template <class... Chunks>
constexpr std::array<CChunkEditFactory::Row, sizeof...(Chunks)> MakeEditRows(
    std::tuple<Chunks...>* /*classes*/) {
  return {kEditRow<Chunks>...};
}

template <class... Chunks>
constexpr std::array<CChunkTextConverterFactory::Row, sizeof...(Chunks)> MakeConverterRows(
    std::tuple<Chunks...>* /*classes*/) {
  return {kConverterRow<Chunks>...};
}

constexpr auto kEditRows = MakeEditRows(Classes{});
constexpr auto kConverterRows = MakeConverterRows(Classes{});

}  // namespace

constinit const std::array<CChunkFactory::Creator, CChunkFactory::kChunkIds>
    CChunkFactory::kCreators = MakeCreators(Classes{});

std::span<const CChunkEditFactory::Row> EditRows() { return kEditRows; }

std::span<const CChunkTextConverterFactory::Row> ConverterRows() { return kConverterRows; }

CAbstractChunk* CChunkFactory::CreateUrlInfoInst() { return Make<CUrlInfo>(); }
CAbstractChunk* CChunkFactory::CreateAddedObjInfoSetInst() { return Make<CAddedObjInfoSet>(); }
CAbstractChunk* CChunkFactory::CreateLineObjInst() { return Make<CLineObj>(); }
CAbstractChunk* CChunkFactory::CreatePolyObjInst() { return Make<CPolyObj>(); }
CAbstractChunk* CChunkFactory::CreateCmbLblObjInst() { return Make<CCmbLblObj>(); }
CAbstractChunk* CChunkFactory::CreateRasLLObjInst() { return Make<CRasLLObj>(); }
CAbstractChunk* CChunkFactory::CreateRasMMObjInst() { return Make<CRasMMObj>(); }
CAbstractChunk* CChunkFactory::CreateObjSetInst() { return Make<CObjSet>(); }
CAbstractChunk* CChunkFactory::CreateZIdObjInst() { return Make<CZIdObj>(); }
CAbstractChunk* CChunkFactory::CreateZIdObjSetInst() { return Make<CZIdObjSet>(); }
CAbstractChunk* CChunkFactory::CreateLayerDataInst() { return Make<CLayerData>(); }
CAbstractChunk* CChunkFactory::CreateLayerSetInst() { return Make<CLayerSet>(); }
CAbstractChunk* CChunkFactory::CreateQenMapDataInst() { return Make<CQenMapData>(); }
CAbstractChunk* CChunkFactory::CreateMarkDataInst() { return Make<CMarkData>(); }
CAbstractChunk* CChunkFactory::CreateMarkDataSetInst() { return Make<CMarkDataSet>(); }
CAbstractChunk* CChunkFactory::CreateRasMMDrawInfoInst() { return Make<CRasMMDrawInfo>(); }
CAbstractChunk* CChunkFactory::CreateRasLLDrawInfoInst() { return Make<CRasLLDrawInfo>(); }
CAbstractChunk* CChunkFactory::CreateCmbLblDrawInfoInst() { return Make<CCmbLblDrawInfo>(); }
CAbstractChunk* CChunkFactory::CreatePolyShadowDrawInfoInst() {
  return Make<CPolyShadowDrawInfo>();
}
CAbstractChunk* CChunkFactory::CreatePolyBmpBrushDrawInfoInst() {
  return Make<CPolyBmpBrushDrawInfo>();
}
CAbstractChunk* CChunkFactory::CreatePolySolidBrushDrawInfoInst() {
  return Make<CPolySolidBrushDrawInfo>();
}
CAbstractChunk* CChunkFactory::CreateLineDrawInfoInst() { return Make<CLineDrawInfo>(); }
CAbstractChunk* CChunkFactory::CreateDrawInfoSetInst() { return Make<CDrawInfoSet>(); }
CAbstractChunk* CChunkFactory::CreateDrawInfoIdxSetInst() { return Make<CDrawInfoIdxSet>(); }
CAbstractChunk* CChunkFactory::CreateDrawAtterInst() { return Make<CDrawAtter>(); }
CAbstractChunk* CChunkFactory::CreateDrawAtterSetInst() { return Make<CDrawAtterSet>(); }
CAbstractChunk* CChunkFactory::CreateZorDrawDataInst() { return Make<CZorDrawData>(); }
CAbstractChunk* CChunkFactory::CreateMeshSegmentSetInst() { return Make<CMeshSegmentSet>(); }
CAbstractChunk* CChunkFactory::CreateMeshSegmentInst() { return Make<CMeshSegment>(); }
}  // namespace qenzor
