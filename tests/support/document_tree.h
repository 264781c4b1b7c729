#pragma once

#include <optional>
#include <vector>

#include "tests/support/findings.h"
#include "tests/support/qen_bytes.h"
#include "tests/support/zor_bytes.h"

namespace qenzor::testing {

/// A document as a tree, from which what must be left of it is told without the library.
struct Node {
  std::uint32_t Id;
  Bytes Fields;  ///< without the count of a set
  bool IsSet = false;
  std::vector<Node> Subs{};

  std::size_t FieldsSize() const { return Fields.size() + (IsSet ? 4U : 0U); }
  std::size_t Size() const {
    std::size_t size = 8 + FieldsSize();
    for (const Node& sub : Subs) size += sub.Size();
    return size;
  }
  Bytes Render() const { return *Cut(0, Size()); }

  /// What is whole of it where it begins at a place and the file ends at another.
  std::optional<Bytes> Cut(std::size_t at, std::size_t file_end) const {
    if (at + 8 + FieldsSize() > file_end) return std::nullopt;
    std::vector<Bytes> kept;
    at += 8 + FieldsSize();
    for (const Node& sub : Subs) {
      if (const auto part = sub.Cut(at, file_end); part.has_value()) kept.push_back(*part);
      at += sub.Size();
    }
    if (IsSet) return SetChunk(Id, kept);
    Bytes data = Fields;
    for (const Bytes& sub : kept) data.Add(sub);
    return Chunk(Id, data);
  }

  /// Calls f with every chunk and where it begins.
  template <class F>
  void ForEach(std::size_t at, const F& f) const {
    f(*this, at);
    at += 8 + FieldsSize();
    for (const Node& sub : Subs) {
      sub.ForEach(at, f);
      at += sub.Size();
    }
  }
};

inline Node Set(std::uint32_t id, std::vector<Node> elements) {
  return {id, {}, true, std::move(elements)};
}

/// The fields of a chunk without sub-chunks.
inline Node Leaf(const Bytes& chunk) {
  const std::vector<std::uint8_t>& bytes = chunk.vector();
  return {bytes[0], Bytes(std::vector<std::uint8_t>(bytes.begin() + 8, bytes.end()))};
}

inline Node LineWithLink(const Points& points, std::u16string_view url) {
  Node line = Leaf(LineBytes(points));
  line.Subs.push_back(Set(id::kAddedObjInfoSet, {Leaf(UrlBytes(url)), Leaf(UrlBytes(u"b"))}));
  return line;
}

inline Node ZIdNode(std::uint64_t z_id, std::vector<Node> objects) {
  return {id::kZIdObj, Bytes().U64(z_id), false, {Set(id::kObjSet, std::move(objects))}};
}
inline Node LayerNode(std::uint32_t number, std::vector<Node> z_ids) {
  return {id::kLayerData, Bytes().U16(number), false, {Set(id::kZIdObjSet, std::move(z_ids))}};
}
inline Node SegmentNode(std::uint32_t number, std::vector<Node> layers) {
  return {id::kMeshSegment, Bytes().U16(number), false, {Set(id::kLayerSet, std::move(layers))}};
}

struct DocumentTree {
  BinaryKind Kind;
  Bytes Info;
  Node Root;

  Bytes Render() const { return Bytes(Info).Add(Root.Render()); }
};

inline DocumentTree MapTree() {
  const auto objects = [](std::int32_t x) {
    return std::vector<Node>{LineWithLink({{x, 2}, {-3, 4}}, u"http://a.b/"),
                             Leaf(PolyBytes(-9, {{x, 0}, {5, 0}, {5, 5}, {x, 0}})),
                             Leaf(LabelBytes(u"A\nb")), Leaf(RasLLBytes({x, -2, 300, 4})),
                             Leaf(RasMMBytes({x, -12}))};
  };
  return {BinaryKind::kQen,
          GoodQenInfo(),
          {id::kQenMapData,
           {},
           false,
           {Set(id::kMeshSegmentSet,
                {SegmentNode(0, {LayerNode(1, {ZIdNode(7, objects(301)), ZIdNode(8, objects(302))}),
                                 LayerNode(2, {ZIdNode(9, objects(303))})}),
                 SegmentNode(1, {LayerNode(1, {ZIdNode(7, objects(304))}), LayerNode(3, {})})})}}};
}

/// Draw data whose draw infos and marks all differ.
inline DocumentTree DrawingTree() {
  const auto mark = [](std::int32_t size) {
    return Leaf(MarkBytes({-size, -size, size, size},
                          {MarkElemBytes(1, 2, 0xFF102030, {{size, 0}, {0, size}})}));
  };
  const auto attribute = [](std::uint64_t z_id) {
    Node node{id::kDrawAtter, Bytes().U64(z_id)};
    node.Subs.push_back(Leaf(IdxSetBytes({0, 1, 2, 3, 4})));
    return node;
  };
  const auto line = [](std::uint32_t code) {
    return Leaf(Chunk(id::kLineDrawInfo, Bytes()
                                             .U8(code)
                                             .U32(0x80FF0000)
                                             .F32(1.5F)
                                             .U16(1)
                                             .U32(9000)
                                             .U32(100 + code)
                                             .U16(3)
                                             .F32(0.5F)
                                             .U16(0)));
  };
  const Bytes raster = Bytes().Text(u"name.png").U32(0xFF00FF00).U16(1).U32(5000).U32(40).U8(200);
  return {BinaryKind::kZor,
          GoodZorInfo(),
          {id::kZorDrawData,
           {},
           false,
           {Set(id::kDrawAtterSet, {attribute(7), attribute(8), attribute(9)}),
            Set(id::kDrawInfoSet, {line(1), Leaf(SolidBrushBytes(0xFF112233)),
                                   Leaf(Chunk(id::kRasLLDrawInfo, raster)), line(2),
                                   Leaf(SolidBrushBytes(0xFF445566))}),
            Set(id::kMarkDataSet, {mark(3), mark(4), mark(5)})}}};
}

}  // namespace qenzor::testing
