#include "bench/content.h"

#include <random>

namespace qenzor::bench {

namespace {

// The engine's numbers are the same everywhere; those of the standard distributions are not.
class Random {
 public:
  explicit Random(std::uint64_t seed) : m_engine(seed) {}

  /// A number from first to last.
  std::int32_t From(std::int32_t first, std::int32_t last) {
    const auto span = static_cast<std::uint64_t>(last - first) + 1;
    return first + static_cast<std::int32_t>(m_engine() % span);
  }

 private:
  std::mt19937_64 m_engine;
};

std::vector<Point> MakePoints(Random& random, int average) {
  std::vector<Point> points(static_cast<std::size_t>(random.From(average / 2, average * 3 / 2)));
  Point at{random.From(-30000, 30000), random.From(-30000, 30000)};
  for (Point& point : points) {
    at = {at.X + random.From(-32, 32), at.Y + random.From(-32, 32)};
    point = at;
  }
  return points;
}

Label MakeLabel(Random& random) {
  Label label;
  label.Flags = static_cast<std::uint16_t>(random.From(0, 127));
  label.Angle = static_cast<float>(random.From(0, 3599)) / 10.0F;
  label.At = {random.From(-30000, 30000), random.From(-30000, 30000)};
  label.OffsetRate = static_cast<float>(random.From(0, 100)) / 100.0F;
  label.OffsetAngle = static_cast<float>(random.From(0, 7)) * 45.0F;
  label.Text.resize(static_cast<std::size_t>(random.From(4, 20)));
  for (char16_t& unit : label.Text)
    unit = random.From(0, 9) == 0 ? u' ' : static_cast<char16_t>(u'a' + random.From(0, 25));
  return label;
}

Object MakeObject(Random& random) {
  const int kind = random.From(0, 9);
  if (kind < 5) return Line{MakePoints(random, 20)};
  if (kind < 8) return Polygon{random.From(0, 100), MakePoints(random, 30)};
  return MakeLabel(random);
}

// Bytes that an object takes in a document.
struct ObjectSize {
  std::size_t operator()(const Line& line) const { return 10 + 4 * line.Points.size(); }
  std::size_t operator()(const Polygon& poly) const { return 14 + 4 * poly.Points.size(); }
  std::size_t operator()(const Label& label) const { return 30 + 2 * label.Text.size(); }
};

// A one-to-one function, so that numbers counted up become random keys of which none comes twice.
std::uint64_t Scatter(std::uint64_t value) {
  value += 0x9E3779B97F4A7C15U;
  value = (value ^ (value >> 30)) * 0xBF58476D1CE4E5B9U;
  value = (value ^ (value >> 27)) * 0x94D049BB133111EBU;
  return value ^ (value >> 31);
}

}  // namespace

Map MakeMap(std::size_t bytes) {
  constexpr std::size_t kObjects = 20;
  constexpr std::size_t kGroups = 50;
  constexpr std::size_t kLayers = 10;
  constexpr std::size_t kDocumentSize = 62;  // file info, root and its set
  constexpr std::size_t kSegmentSize = 22;   // a segment, a layer, a z-id: each with its set
  constexpr std::size_t kLayerSize = 22;
  constexpr std::size_t kGroupSize = 28;

  Random random(1);
  std::size_t size = kDocumentSize;
  std::uint64_t groups = 0;
  Map map;
  while (size < bytes) {
    Segment segment{static_cast<std::uint16_t>(map.Segments.size() + 1), {}};
    size += kSegmentSize;
    while (segment.Layers.size() < kLayers && size < bytes) {
      Layer layer{static_cast<std::uint16_t>(segment.Layers.size() + 1), {}};
      size += kLayerSize;
      while (layer.Groups.size() < kGroups && size < bytes) {
        ZIdGroup group{Scatter(groups++), {}};
        size += kGroupSize;
        while (group.Objects.size() < kObjects && size < bytes) {
          group.Objects.push_back(MakeObject(random));
          size += std::visit(ObjectSize(), group.Objects.back());
        }
        layer.Groups.push_back(std::move(group));
      }
      segment.Layers.push_back(std::move(layer));
    }
    map.Segments.push_back(std::move(segment));
  }
  return map;
}

DrawData MakeDrawData(std::size_t attributes) {
  constexpr std::size_t kInfos = 100;
  constexpr std::uint32_t kRanges = 3;

  Random random(2);
  DrawData data;
  for (std::size_t i = 0; i < kInfos; ++i) {
    DrawInfo info{static_cast<std::uint8_t>(random.From(0, 9)),
                  static_cast<std::uint32_t>(random.From(0, 0xFFFFFF)) | 0xFF000000U,
                  {}};
    for (std::uint32_t k = 1; k <= kRanges; ++k)
      info.Ranges.push_back({k * 100000, (k - 1) * 100000, static_cast<std::uint16_t>(10 / k)});
    data.Infos.push_back(std::move(info));
  }
  data.Attributes.reserve(attributes);
  for (std::size_t i = 0; i < attributes; ++i) {
    DrawAttribute attribute{Scatter(i), {}};
    attribute.Infos.resize(static_cast<std::size_t>(random.From(1, 3)));
    for (std::uint32_t& info : attribute.Infos)
      info = static_cast<std::uint32_t>(random.From(0, kInfos - 1));
    data.Attributes.push_back(std::move(attribute));
  }
  return data;
}

std::vector<std::uint64_t> ShuffledKeys(std::size_t attributes) {
  Random random(3);
  std::vector<std::uint64_t> keys(attributes);
  for (std::size_t i = 0; i < attributes; ++i) {
    const auto at = static_cast<std::size_t>(random.From(0, static_cast<std::int32_t>(i)));
    keys[i] = keys[at];
    keys[at] = Scatter(i);
  }
  return keys;
}

}  // namespace qenzor::bench
