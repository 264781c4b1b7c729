#pragma once

#include <string>
#include <vector>

#include "tests/support/findings.h"
#include "tests/support/qen_bytes.h"

namespace qenzor::testing {

// Maps by the file info of GoodQenInfo: two segments of 1000 by 1000 units side by side, the
// coordinates of each running from -500 to 500.

/// A segment with objects under one layer and z-id.
struct Placed {
  std::uint32_t Segment = 0;
  std::vector<Bytes> Objects;
  std::uint64_t ZId = 7;
  std::uint32_t Layer = 2;
};

inline Bytes MapOf(const std::vector<Placed>& segments, const Bytes& info = GoodQenInfo()) {
  std::vector<Bytes> chunks;
  for (const Placed& placed : segments) {
    const Bytes z_id = ZIdBytes(placed.ZId, SetChunk(id::kObjSet, placed.Objects));
    const Bytes layer = LayerBytes(placed.Layer, SetChunk(id::kZIdObjSet, {z_id}));
    chunks.push_back(SegmentBytes(placed.Segment, SetChunk(id::kLayerSet, {layer})));
  }
  return Bytes(info).Add(Chunk(id::kQenMapData, SetChunk(id::kMeshSegmentSet, chunks)));
}

/// Where the first object of such a map begins, and the first points of a line and of an area.
constexpr std::uint64_t kFirstObject = 134;
constexpr std::uint64_t kFirstOfLine = kFirstObject + 8 + 2;
constexpr std::uint64_t kFirstOfArea = kFirstObject + 8 + 4 + 2;

inline std::string PathTo(const std::string& object, int segment = 0) {
  return "MeshSegmentSet/MeshSegment[" + std::to_string(segment) +
         "]/LayerSet/LayerData[0]/ZIdObjSet/ZIdObj[0]/ObjSet/" + object;
}

inline std::vector<Found> GeometryOf(const Bytes& map, const FrameOptions& frame = {}) {
  CheckOptions options;
  options.Geometry = true;
  options.Frame = frame;
  return FindingsOf(map, BinaryKind::kQen, options);
}

}  // namespace qenzor::testing
