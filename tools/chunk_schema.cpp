#include "chunk_schema.h"

#include <array>
#include <tuple>
#include <type_traits>

#include "qenzor/core/fields.h"
#include "qenzor/core/stored_text.h"
#include "qenzor/qen/cmb_lbl_obj.h"
#include "qenzor/qen/line_obj.h"
#include "qenzor/qen/poly_obj.h"
#include "qenzor/qen/qen.h"
#include "qenzor/qen/ras_ll_obj.h"
#include "qenzor/qen/ras_mm_obj.h"
#include "qenzor/zor/cmb_lbl_draw_info.h"
#include "qenzor/zor/line_draw_info.h"
#include "qenzor/zor/poly_bmp_brush_draw_info.h"
#include "qenzor/zor/poly_shadow_draw_info.h"
#include "qenzor/zor/poly_solid_brush_draw_info.h"
#include "qenzor/zor/ras_ll_draw_info.h"
#include "qenzor/zor/ras_mm_draw_info.h"
#include "qenzor/zor/zor.h"

namespace tool {

namespace {

using namespace qenzor;  // NOLINT(google-build-using-namespace): it is about all of it

using Classes = std::tuple<CUrlInfo, CAddedObjInfoSet, CLineObj, CPolyObj, CCmbLblObj, CRasLLObj,
                           CRasMMObj, CObjSet, CZIdObj, CZIdObjSet, CLayerData, CLayerSet,
                           CQenMapData, CMarkData, CMarkDataSet, CRasMMDrawInfo, CRasLLDrawInfo,
                           CCmbLblDrawInfo, CPolyShadowDrawInfo, CPolyBmpBrushDrawInfo,
                           CPolySolidBrushDrawInfo, CLineDrawInfo, CDrawInfoSet, CDrawInfoIdxSet,
                           CDrawAtter, CDrawAtterSet, CZorDrawData, CMeshSegmentSet, CMeshSegment>;

/// Points beyond this are outside what the format is made for.
constexpr std::uint64_t kMaxPoints = 32767;

template <class T>
T LoadAt(const BlockWalk& walk, std::uint64_t at) {
  return little_endian::Load<T>(walk.Bytes.data() + at);
}

template <class Fields>
bool WalkFields(BlockWalk& walk, const Fields& fields);

template <class O, class V, class C>
bool WalkField(BlockWalk& walk, const Field<O, V, C>& f) {
  const std::uint64_t at = walk.At;
  if (!walk.Skip(f.Tag, C::template kSize<V>)) return false;
  if constexpr (std::is_integral_v<V>)
    walk.OnValue(f.Tag, at, static_cast<std::uint64_t>(LoadAt<V>(walk, at)));
  return true;
}

template <class O, class V>
bool WalkField(BlockWalk& walk, const TextField<O, V>& f) {
  const std::uint64_t at = walk.At;
  if (!walk.Skip(f.Tag, kStoredTextCountSize)) return false;
  const auto size = LoadAt<std::uint16_t>(walk, at);
  if (size > f.MaxBytes) {
    walk.Error = "the block of " + std::string(f.Tag) + " has " + std::to_string(size) +
                 " bytes, at most " + std::to_string(f.MaxBytes) + " are taken";
    return false;
  }
  const std::uint64_t text = walk.At;
  if (!walk.Skip(f.Tag, size)) return false;
  const std::string tag(f.Tag);
  if (size % 2 != 0) walk.OnWarning(at, tag + " has an odd byte count; its last byte is dropped");
  if (size < 2) return true;
  const auto mark = LoadAt<std::uint16_t>(walk, text);
  if (mark != 0xFEFF && mark != 0xFFFE) {
    walk.OnWarning(text, tag + " has no byte-order mark and is read as empty");
    return true;
  }
  for (std::uint64_t unit = text + 2; unit + 2 < text + size; unit += 2)
    if (LoadAt<std::uint16_t>(walk, unit) == 0) {
      walk.OnWarning(unit, tag + " holds a zero unit; what follows it is dropped");
      break;
    }
  return true;
}

template <class O, class Array>
bool WalkField(BlockWalk& walk, const ArrayField<O, Array>& f) {
  using Count = typename Array::count_type;
  using Element = typename Array::value_type;
  const std::uint64_t at = walk.At;
  if (!walk.Skip(f.Tag, sizeof(Count))) return false;
  const std::uint64_t count = LoadAt<Count>(walk, at);
  if (std::is_same_v<Element, CPoint> && count > kMaxPoints)
    walk.OnWarning(at, std::to_string(count) + " points, more than the " +
                           std::to_string(kMaxPoints) + " that the format is made for");
  if constexpr (IsFixedSize<Element>()) {
    const std::uint64_t first = walk.At;
    if (!walk.Skip(f.Tag, count * PackedSize<Element>())) return false;
    if constexpr (std::is_integral_v<Element>)
      for (std::uint64_t i = first; i < walk.At; i += sizeof(Element))
        walk.OnValue(f.Tag, i, LoadAt<Element>(walk, i));
    return true;
  } else {
    for (std::uint64_t i = 0; i < count; ++i)
      if (!WalkFields(walk, Element::Fields())) return false;
    return true;
  }
}

template <class Members>
bool WalkField(BlockWalk& walk, const FieldGroup<Members>& f) {
  return WalkFields(walk, f.Members);
}

template <class O, class Slot, class Chunk>
bool WalkField(BlockWalk& /*walk*/, const SlotField<O, Slot, Chunk>& /*f*/) {
  return true;
}

template <class Fields>
bool WalkFields(BlockWalk& walk, const Fields& fields) {
  return AllFields(fields, [&walk](const auto& f) { return WalkField(walk, f); });
}

template <class Chunk>
constexpr bool kIsSet = requires {
  typename Chunk::Element;
};

template <class Chunk>
bool WalkBlock(BlockWalk& walk) {
  if constexpr (kIsSet<Chunk>) {
    if (!walk.Skip("element count", 4)) return false;
    walk.OnValue("", 0, LoadAt<std::uint32_t>(walk, 0));
    return true;
  } else {
    return WalkFields(walk, Chunk::DataType::Fields());
  }
}

template <class Chunk>
constexpr bool kMayOverrun = requires {
  &Chunk::MemoryConsumed;
};

template <class Chunk>
std::uint64_t Consumed(const BlockWalk& walk) {
  if constexpr (kMayOverrun<Chunk>)
    return Chunk::MemoryConsumed(walk.Bytes.data(), static_cast<std::uint32_t>(walk.At));
  else
    return walk.At;
}

template <class Chunk, class... Sub>
bool AcceptsAnyOf(std::uint32_t id, std::tuple<Sub...>* /*classes*/) {
  if constexpr (kIsSet<Chunk>) {
    return ((std::is_base_of_v<typename Chunk::Element, Sub> && Sub::kChunkId == id) || ...);
  } else {
    return !AllFields(FieldsOf<Chunk>(), [id]<class F>(const F& /*f*/) {
      if constexpr (requires { typename F::Chunk; })
        return F::Chunk::kChunkId != id;
      else
        return true;
    });
  }
}

template <class Chunk>
bool Accepts(std::uint32_t id) {
  return AcceptsAnyOf<Chunk>(id, static_cast<Classes*>(nullptr));
}

template <class Chunk>
constexpr ChunkSchema kSchema{
    Chunk::kChunkId,   Chunk::kTag,      kIsSet<Chunk>,      std::is_same_v<Chunk, CDrawAtterSet>,
    &WalkBlock<Chunk>, &Consumed<Chunk>, kMayOverrun<Chunk>, &Accepts<Chunk>};

template <class... Chunks>
constexpr auto MakeTable(std::tuple<Chunks...>* /*classes*/) {
  return std::array<const ChunkSchema*, sizeof...(Chunks)>{&kSchema<Chunks>...};
}

constexpr auto kSchemas = MakeTable(static_cast<Classes*>(nullptr));

}  // namespace

bool BlockWalk::Skip(std::string_view tag, std::uint64_t size) {
  if (size > Bytes.size() - At) {
    Error = std::string(tag) + " takes " + std::to_string(size) + " bytes, but only " +
            std::to_string(Bytes.size() - At) + " are there";
    return false;
  }
  At += size;
  return true;
}

const ChunkSchema* FindSchema(std::uint32_t id) {
  for (const ChunkSchema* schema : kSchemas)
    if (schema->Id == id) return schema;
  return nullptr;
}

}  // namespace tool
