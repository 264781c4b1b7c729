#include "bench/floors/map_tree.h"

#include <algorithm>
#include <cstring>

namespace qenzor::bench {

namespace {

constexpr std::uint32_t kHeaderSize = 8;
constexpr std::uint32_t kLabelSize = 18;  // without its text

template <class T>
T Load(const std::uint8_t* bytes) {
  T value;
  std::memcpy(&value, bytes, sizeof value);
  return value;
}

PlainPoint LoadPoint(const std::uint8_t* bytes) {
  return {Load<std::int16_t>(bytes), Load<std::int16_t>(bytes + 2)};
}

std::uint32_t HeightSize(const Node& node) { return node.Id == id::kPolygon ? 4 : 0; }

std::unique_ptr<Node> ReadPoints(const std::uint8_t* data, std::uint32_t id, std::uint32_t size) {
  auto node = std::make_unique<PointsNode>(id, size);
  if (id == id::kPolygon) node->Height = Load<std::int32_t>(data);
  data += HeightSize(*node);
  node->Count = Load<std::uint16_t>(data);
  node->Points = std::make_unique_for_overwrite<PlainPoint[]>(node->Count);
  for (std::uint32_t i = 0; i < node->Count; ++i) node->Points[i] = LoadPoint(data + 2 + 4 * i);
  return node;
}

std::unique_ptr<Node> ReadLabel(const std::uint8_t* data, std::uint32_t size) {
  auto node = std::make_unique<LabelNode>(id::kLabel, size);
  node->Flags = Load<std::uint16_t>(data);
  node->Angle = Load<float>(data + 2);
  node->At = LoadPoint(data + 6);
  node->OffsetRate = Load<float>(data + 10);
  node->OffsetAngle = Load<float>(data + 14);
  const std::uint32_t stored = Load<std::uint16_t>(data + kLabelSize);
  if (stored == 0) return node;
  node->Units = stored / 2 - 1;  // the mark stands in front
  node->Text = std::make_unique_for_overwrite<char16_t[]>(node->Units);
  std::memcpy(node->Text.get(), data + kLabelSize + 4, 2 * std::size_t{node->Units});
  return node;
}

std::unique_ptr<Node> ReadNode(const std::uint8_t* data, std::uint32_t id, std::uint32_t size) {
  if (id == id::kLine || id == id::kPolygon) return ReadPoints(data, id, size);
  if (id == id::kLabel) return ReadLabel(data, size);
  auto node = std::make_unique<BranchNode>(id, size);
  std::uint32_t at = FieldsSize(id);
  std::memcpy(node->Fields.data(), data, at);
  if (at == 4) node->Nodes.reserve(Load<std::uint32_t>(data));
  while (at < size) {
    const auto below = Load<std::uint32_t>(data + at + 4);
    node->Nodes.push_back(ReadNode(data + at + kHeaderSize, Load<std::uint32_t>(data + at), below));
    at += kHeaderSize + below;
  }
  return node;
}

std::unique_ptr<Node> CopyNode(const Node& node) {
  switch (node.Id) {
    case id::kLine:
    case id::kPolygon: {
      const auto& from = static_cast<const PointsNode&>(node);
      auto to = std::make_unique<PointsNode>(from.Id, from.Size);
      to->Height = from.Height;
      to->Count = from.Count;
      to->Points = std::make_unique_for_overwrite<PlainPoint[]>(from.Count);
      std::copy_n(from.Points.get(), from.Count, to->Points.get());
      return to;
    }
    case id::kLabel: {
      const auto& from = static_cast<const LabelNode&>(node);
      auto to = std::make_unique<LabelNode>(from.Id, from.Size);
      to->Flags = from.Flags;
      to->Angle = from.Angle;
      to->At = from.At;
      to->OffsetRate = from.OffsetRate;
      to->OffsetAngle = from.OffsetAngle;
      to->Units = from.Units;
      to->Text = std::make_unique_for_overwrite<char16_t[]>(from.Units);
      std::copy_n(from.Text.get(), from.Units, to->Text.get());
      return to;
    }
    default: {
      const auto& from = static_cast<const BranchNode&>(node);
      auto to = std::make_unique<BranchNode>(from.Id, from.Size);
      to->Fields = from.Fields;
      to->Nodes.reserve(from.Nodes.size());
      for (const auto& below : from.Nodes) to->Nodes.push_back(CopyNode(*below));
      return to;
    }
  }
}

class TreeWriter {
 public:
  explicit TreeWriter(PlainWriter& out) : m_out(out) {}

  void Write(const Node& node) {
    switch (node.Id) {
      case id::kLine:
      case id::kPolygon:
        return WritePoints(static_cast<const PointsNode&>(node));
      case id::kLabel:
        return WriteLabel(static_cast<const LabelNode&>(node));
      default: {
        const auto& branch = static_cast<const BranchNode&>(node);
        std::uint8_t* to = Begin(node, FieldsSize(node.Id));
        std::copy_n(branch.Fields.data(), FieldsSize(node.Id), to);
        m_out.Advance(kHeaderSize + FieldsSize(node.Id));
        for (const auto& below : branch.Nodes) Write(*below);
      }
    }
  }

 private:
  /// Room for a header, which is put there, and size bytes behind it.
  std::uint8_t* Begin(const Node& node, std::size_t size) {
    std::uint8_t* to = m_out.Room(kHeaderSize + size);
    return Store(Store(to, node.Id), node.Size);
  }

  template <class T>
  static std::uint8_t* Store(std::uint8_t* to, T value) {
    std::memcpy(to, &value, sizeof value);
    return to + sizeof value;
  }
  static std::uint8_t* StorePoint(std::uint8_t* to, const PlainPoint& point) {
    return Store(Store(to, static_cast<std::int16_t>(point.X)), static_cast<std::int16_t>(point.Y));
  }

  // Room is asked for once where an object fits into the buffer.
  void WritePoints(const PointsNode& node) {
    constexpr std::uint32_t kAtOnce = 8192;
    const std::uint32_t count = std::min(node.Count, kAtOnce);
    const std::size_t front = HeightSize(node) + 2;
    std::uint8_t* to = Begin(node, front + 4 * std::size_t{count});
    if (node.Id == id::kPolygon) to = Store(to, node.Height);
    to = Store(to, static_cast<std::uint16_t>(node.Count));
    for (std::uint32_t i = 0; i < count; ++i) to = StorePoint(to, node.Points[i]);
    m_out.Advance(kHeaderSize + front + 4 * std::size_t{count});
    for (std::uint32_t i = count; i < node.Count; ++i) {
      StorePoint(m_out.Room(4), node.Points[i]);
      m_out.Advance(4);
    }
  }

  void WriteLabel(const LabelNode& node) {
    std::uint8_t* to = Begin(node, node.Size);
    to = Store(Store(to, node.Flags), node.Angle);
    to = Store(Store(StorePoint(to, node.At), node.OffsetRate), node.OffsetAngle);
    to = Store(to, static_cast<std::uint16_t>(node.Size - kLabelSize - 2));
    if (node.Units != 0) {
      to = Store(to, std::uint16_t{0xFEFF});
      std::memcpy(to, node.Text.get(), 2 * std::size_t{node.Units});
    }
    m_out.Advance(kHeaderSize + node.Size);
  }

  PlainWriter& m_out;
};

}  // namespace

PlainMap ReadPlainMap(const std::filesystem::path& path) {
  const FileBytes file = ReadWholeFile(path);
  const std::uint8_t* root = file.Data.get() + PlainMap::kInfoSize;
  PlainMap map;
  std::copy_n(file.Data.get(), PlainMap::kInfoSize, map.Info.begin());
  map.Root = ReadNode(root + kHeaderSize, Load<std::uint32_t>(root), Load<std::uint32_t>(root + 4));
  return map;
}

PlainMap CopyPlainMap(const PlainMap& map) { return {map.Info, CopyNode(*map.Root)}; }

void WritePlainMap(const PlainMap& map, const std::filesystem::path& path) {
  PlainWriter out(path);
  out.Put(map.Info.data(), map.Info.size());
  TreeWriter(out).Write(*map.Root);
  out.Flush();
}

}  // namespace qenzor::bench
