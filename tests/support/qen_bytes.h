#pragma once

#include <string_view>
#include <vector>

#include "qenzor/platform/geometry.h"
#include "tests/support/bytes.h"

namespace qenzor::testing {

// The chunks of a map project, byte by byte.

using Points = std::vector<CPoint>;

inline Bytes PointBytes(const Points& points) {
  Bytes bytes;
  bytes.U16(static_cast<std::uint32_t>(points.size()));
  for (const CPoint& point : points) bytes.I16(point.x).I16(point.y);
  return bytes;
}

inline Bytes UrlBytes(std::u16string_view url) { return Chunk(id::kUrlInfo, Bytes().Text(url)); }

/// An added-object-info set with one URL.
inline Bytes InfoSetBytes(std::u16string_view url) {
  return SetChunk(id::kAddedObjInfoSet, {UrlBytes(url)});
}

inline Bytes LineBytes(const Points& points, const Bytes& info_set = {}) {
  return Chunk(id::kLineObj, PointBytes(points).Add(info_set));
}

inline Bytes PolyBytes(std::int32_t height, const Points& points, const Bytes& info_set = {}) {
  return Chunk(id::kPolyObj, Bytes().I32(height).Add(PointBytes(points)).Add(info_set));
}

inline Bytes LabelBytes(std::u16string_view text, const Bytes& info_set = {}) {
  return Chunk(
      id::kCmbLblObj,
      Bytes().U16(0x0019).F32(1.5F).I16(3).I16(-4).F32(0.25F).F32(-2).Text(text).Add(info_set));
}

inline Bytes RasLLBytes(const CRect& rect, const Bytes& info_set = {}) {
  return Chunk(id::kRasLLObj,
               Bytes().I16(rect.left).I16(rect.top).I16(rect.right).I16(rect.bottom).Add(info_set));
}

inline Bytes RasMMBytes(const CPoint& point, const Bytes& info_set = {}) {
  return Chunk(id::kRasMMObj, Bytes().I16(point.x).I16(point.y).Add(info_set));
}

inline Bytes ZIdBytes(std::uint64_t zid, const Bytes& obj_set = {}) {
  return Chunk(id::kZIdObj, Bytes().U64(zid).Add(obj_set));
}

inline Bytes LayerBytes(std::uint32_t number, const Bytes& z_id_obj_set = {}) {
  return Chunk(id::kLayerData, Bytes().U16(number).Add(z_id_obj_set));
}

inline Bytes SegmentBytes(std::uint32_t number, const Bytes& layer_set = {}) {
  return Chunk(id::kMeshSegment, Bytes().U16(number).Add(layer_set));
}

/// A map data chunk down to one object set with these objects.
inline Bytes MapDataBytes(const std::vector<Bytes>& objects) {
  const Bytes zid = ZIdBytes(7, SetChunk(id::kObjSet, objects));
  const Bytes layer = LayerBytes(2, SetChunk(id::kZIdObjSet, {zid}));
  const Bytes segment = SegmentBytes(1, SetChunk(id::kLayerSet, {layer}));
  return Chunk(id::kQenMapData, SetChunk(id::kMeshSegmentSet, {segment}));
}

/// The 42 bytes in front of a map project.
inline Bytes QenInfoBytes() {
  return Bytes("QENMAP\r\n\x1A")
      .U16(0x4041)
      .U16(1)
      .U16(2)
      .U32(0x01020304)
      .U8(5)
      .I32(-100)
      .I32(-200)
      .I32(300)
      .I32(400)
      .U16(6)
      .U16(7)
      .U16(8);
}

/// A map project in which every class of it occurs.
inline Bytes QenDocumentBytes() {
  return QenInfoBytes().Add(
      MapDataBytes({LineBytes({{1, 2}, {-3, 4}}, InfoSetBytes(u"http://a.b/")),
                    PolyBytes(-9, {{0, 0}, {5, 0}, {5, 5}, {0, 0}}), LabelBytes(u"A\nb c\u5730"),
                    RasLLBytes({-1, -2, 3, 4}), RasMMBytes({11, -12})}));
}

}  // namespace qenzor::testing
