#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "qenzor/qen/qen.h"
#include "qenzor/zor/zor.h"
#include "tests/support/qen_bytes.h"
#include "tests/support/zor_bytes.h"

namespace qenzor::testing {

/// Objects of one z-id of a map, each group in a segment and a layer of its own.
struct Placed {
  std::uint32_t Segment = 0;
  std::uint32_t Layer = 0;
  std::uint64_t ZId = 0;
  std::vector<Bytes> Objects;
};

/// What a map says of its frame.
struct Mesh {
  CRect IncRect;
  std::uint32_t Columns = 0;
  std::uint32_t Rows = 0;
  std::uint32_t CompCoef = 0;
  std::uint32_t GeoCoodinate = 1;
};

/// A map read from bytes. Without a mesh its coordinates stand as they are.
inline std::unique_ptr<CQen> MapOf(const std::vector<Placed>& content, const Mesh& mesh = {}) {
  std::vector<Bytes> segments;
  for (const Placed& placed : content)
    segments.push_back(SegmentBytes(
        placed.Segment,
        SetChunk(id::kLayerSet,
                 {LayerBytes(
                     placed.Layer,
                     SetChunk(id::kZIdObjSet,
                              {ZIdBytes(placed.ZId, SetChunk(id::kObjSet, placed.Objects))}))})));
  const Bytes bytes = Bytes("QENMAP\r\n\x1A")
                          .U16(0x4041)
                          .U16(1)
                          .U16(0)
                          .U32(0)
                          .U8(mesh.GeoCoodinate)
                          .I32(mesh.IncRect.left)
                          .I32(mesh.IncRect.top)
                          .I32(mesh.IncRect.right)
                          .I32(mesh.IncRect.bottom)
                          .U16(mesh.Columns)
                          .U16(mesh.Rows)
                          .U16(mesh.CompCoef)
                          .Add(Chunk(id::kQenMapData, SetChunk(id::kMeshSegmentSet, segments)));
  auto map = std::make_unique<CQen>();
  EXPECT_TRUE(map->Read(bytes.data(), bytes.size()));
  return map;
}

/// A drawing read from bytes: attributes, draw infos and marks as whole chunks.
inline std::unique_ptr<CZor> DrawingOf(const std::vector<Bytes>& attributes,
                                       const std::vector<Bytes>& infos,
                                       const std::vector<Bytes>& marks = {}) {
  const Bytes bytes = ZorInfoBytes().Add(
      DrawDataBytes({SetChunk(id::kDrawAtterSet, attributes), SetChunk(id::kDrawInfoSet, infos),
                     SetChunk(id::kMarkDataSet, marks)}));
  auto drawing = std::make_unique<CZor>();
  EXPECT_TRUE(drawing->Read(bytes.data(), bytes.size()));
  return drawing;
}

// Draw infos with records.

inline Bytes StrokeRecord(std::uint32_t max, std::uint32_t min, std::uint32_t width,
                          float sensitivity) {
  return Bytes().U32(max).U32(min).U16(width).F32(sensitivity).U16(0);
}

inline Bytes StrokeInfo(std::uint32_t code, std::uint32_t color, float aspect,
                        const std::vector<Bytes>& records) {
  Bytes data =
      Bytes().U8(code).U32(color).F32(aspect).U16(static_cast<std::uint32_t>(records.size()));
  for (const Bytes& record : records) data.Add(record);
  return Chunk(id::kLineDrawInfo, data);
}

/// A draw info of another kind: its common fields, then records.
inline Bytes InfoBytes(std::uint32_t chunk_id, const Bytes& common,
                       const std::vector<Bytes>& records) {
  Bytes data = common;
  data.U16(static_cast<std::uint32_t>(records.size()));
  for (const Bytes& record : records) data.Add(record);
  return Chunk(chunk_id, data);
}

/// All scales.
inline Bytes AnyScale() { return Bytes().U32(0xFFFFFFFF).U32(0); }

/// Asks for ids of draw infos.
inline Bytes Attribute(std::uint64_t z_id, const std::vector<std::uint32_t>& indices) {
  return AtterBytes(z_id, indices);
}

}  // namespace qenzor::testing
