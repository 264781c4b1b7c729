#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "qenzor/platform/geometry.h"
#include "tests/support/bytes.h"

namespace qenzor::testing {

// The chunks of draw data, byte by byte.

namespace id {
inline constexpr std::uint32_t kCmbLblDrawInfo = 4;
inline constexpr std::uint32_t kDrawInfoSet = 6;
inline constexpr std::uint32_t kLineDrawInfo = 10;
inline constexpr std::uint32_t kMarkData = 11;
inline constexpr std::uint32_t kPolySolidBrushDrawInfo = 12;
inline constexpr std::uint32_t kPolyShadowDrawInfo = 14;
inline constexpr std::uint32_t kRasLLDrawInfo = 15;
inline constexpr std::uint32_t kRasMMDrawInfo = 17;
inline constexpr std::uint32_t kDrawInfoIdxSet = 23;
inline constexpr std::uint32_t kMarkDataSet = 24;
inline constexpr std::uint32_t kPolyBmpBrushDrawInfo = 27;
}  // namespace id

/// A record of a mark: kind, width, colour and points.
inline Bytes MarkElemBytes(std::int32_t kind, std::int32_t width, std::uint32_t color,
                           const std::vector<CPoint>& points) {
  Bytes bytes = Bytes().I16(kind).I16(width).U32(color);
  bytes.U16(static_cast<std::uint32_t>(points.size()));
  for (const CPoint& point : points) bytes.I16(point.x).I16(point.y);
  return bytes;
}

inline Bytes MarkBytes(const CRect& rect, const std::vector<Bytes>& elements) {
  Bytes data = Bytes().I16(rect.left).I16(rect.top).I16(rect.right).I16(rect.bottom);
  data.U16(static_cast<std::uint32_t>(elements.size()));
  for (const Bytes& element : elements) data.Add(element);
  return Chunk(id::kMarkData, data);
}

inline Bytes IdxSetBytes(const std::vector<std::uint32_t>& indices) {
  Bytes data = Bytes().U32(static_cast<std::uint32_t>(indices.size()));
  for (const std::uint32_t index : indices) data.U32(index);
  return Chunk(id::kDrawInfoIdxSet, data);
}

/// A draw attribute without an index set.
inline Bytes BareAtterBytes(std::uint64_t zid) { return Chunk(id::kDrawAtter, Bytes().U64(zid)); }

inline Bytes AtterBytes(std::uint64_t zid, const std::vector<std::uint32_t>& indices = {}) {
  return Chunk(id::kDrawAtter, Bytes().U64(zid).Add(IdxSetBytes(indices)));
}

inline Bytes SolidBrushBytes(std::uint32_t color) {
  return Chunk(id::kPolySolidBrushDrawInfo, Bytes().U32(color).U16(1).U32(50000).U32(10));
}

inline Bytes LineInfoBytes(std::uint32_t line_code) {
  return Chunk(id::kLineDrawInfo, Bytes().U8(line_code).U32(0x80FF0000).F32(1.5F).U16(0));
}

/// The 19 bytes in front of draw data.
inline Bytes ZorInfoBytes() {
  return Bytes("ZORMAP\r\n\x1A").U16(0x4041).U16(3).U16(4).U32(0x0A0B0C0D);
}

inline Bytes DrawDataBytes(const std::vector<Bytes>& sets) {
  Bytes data;
  for (const Bytes& set : sets) data.Add(set);
  return Chunk(id::kZorDrawData, data);
}

/// Draw data with all three sets, in the order in which they are written.
inline std::vector<Bytes> ThreeSets() {
  return {SetChunk(id::kDrawAtterSet, {AtterBytes(0, {1, 0}), AtterBytes(1)}),
          SetChunk(id::kDrawInfoSet, {LineInfoBytes(7), SolidBrushBytes(0xFF00FF00)}),
          SetChunk(id::kMarkDataSet,
                   {MarkBytes({-5, -6, 5, 6}, {MarkElemBytes(1, 2, 0xFF0000FF, {{3, -4}})})})};
}

inline Bytes ZorDocumentBytes() { return ZorInfoBytes().Add(DrawDataBytes(ThreeSets())); }

}  // namespace qenzor::testing
