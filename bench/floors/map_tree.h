#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <vector>

#include "bench/floors/plain_file.h"

namespace qenzor::bench {

/// The least that can be called an owning tree of a map project: one allocation for each object,
/// one for each array. It believes every number in the file.

namespace id {
inline constexpr std::uint32_t kLabel = 5;
inline constexpr std::uint32_t kLayer = 7;
inline constexpr std::uint32_t kLayerSet = 8;
inline constexpr std::uint32_t kLine = 9;
inline constexpr std::uint32_t kPolygon = 13;
inline constexpr std::uint32_t kZIdObjSet = 20;
inline constexpr std::uint32_t kZIdObj = 21;
inline constexpr std::uint32_t kObjSet = 22;
inline constexpr std::uint32_t kMapData = 25;
inline constexpr std::uint32_t kSegmentSet = 29;
inline constexpr std::uint32_t kSegment = 30;
}  // namespace id

// Without initial values: an array of them is filled right after it is made.
struct PlainPoint {
  std::int32_t X;
  std::int32_t Y;
};

/// A chunk. Size is its data size.
struct Node {
  Node(std::uint32_t id, std::uint32_t size) : Id(id), Size(size) {}
  virtual ~Node() = default;

  std::uint32_t Id;
  std::uint32_t Size;
};

/// A line or polygon.
struct PointsNode final : Node {
  using Node::Node;

  std::int32_t Height = 0;
  std::uint32_t Count = 0;
  std::unique_ptr<PlainPoint[]> Points;
};

struct LabelNode final : Node {
  using Node::Node;

  std::uint16_t Flags = 0;
  float Angle = 0;
  PlainPoint At{};
  float OffsetRate = 0;
  float OffsetAngle = 0;
  std::uint32_t Units = 0;
  std::unique_ptr<char16_t[]> Text;
};

/// A chunk with chunks below it. What stands in front of them is kept as it is in the file.
struct BranchNode final : Node {
  using Node::Node;

  std::array<std::uint8_t, 8> Fields{};
  std::vector<std::unique_ptr<Node>> Nodes;
};

struct PlainMap {
  static constexpr std::size_t kInfoSize = 42;

  std::array<std::uint8_t, kInfoSize> Info{};
  std::unique_ptr<Node> Root;
};

/// Bytes that stand in front of the chunks below a branch.
constexpr std::uint32_t FieldsSize(std::uint32_t branch_id) {
  switch (branch_id) {
    case id::kMapData:
      return 0;
    case id::kSegment:
    case id::kLayer:
      return 2;
    case id::kZIdObj:
      return 8;
    default:
      return 4;  // a set: its count
  }
}

PlainMap ReadPlainMap(const std::filesystem::path& path);
PlainMap CopyPlainMap(const PlainMap& map);
/// Writes with the sizes that the nodes hold.
void WritePlainMap(const PlainMap& map, const std::filesystem::path& path);
/// Writes the XML that the library writes of the same map.
void WritePlainMapXml(const PlainMap& map, const std::filesystem::path& path);

}  // namespace qenzor::bench
