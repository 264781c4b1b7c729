#include <fstream>

#include "bench/floors/plain_file.h"
#include "bench/suite.h"
#include "map_generated.h"

namespace qenzor::bench {

namespace {

std::vector<flat::Point> Points(const std::vector<Point>& points) {
  std::vector<flat::Point> result;
  result.reserve(points.size());
  for (const Point& point : points) result.emplace_back(point.X, point.Y);
  return result;
}

struct MakeObject {
  flat::ObjectUnion operator()(const Line& line) const {
    flat::LineT to;
    to.points = Points(line.Points);
    return Union(std::move(to));
  }
  flat::ObjectUnion operator()(const Polygon& polygon) const {
    flat::PolygonT to;
    to.height = polygon.Height;
    to.points = Points(polygon.Points);
    return Union(std::move(to));
  }
  flat::ObjectUnion operator()(const Label& label) const {
    flat::LabelT to;
    to.flags = label.Flags;
    to.angle = label.Angle;
    to.x = label.At.X;
    to.y = label.At.Y;
    to.offset_rate = label.OffsetRate;
    to.offset_angle = label.OffsetAngle;
    to.text = NarrowText(label);
    return Union(std::move(to));
  }

 private:
  template <class T>
  static flat::ObjectUnion Union(T&& object) {
    flat::ObjectUnion result;
    result.Set(std::move(object));
    return result;
  }
};

std::unique_ptr<flat::LayerT> MakeLayer(const Layer& layer) {
  auto to = std::make_unique<flat::LayerT>();
  to->number = layer.Number;
  for (const ZIdGroup& group : layer.Groups) {
    auto to_group = std::make_unique<flat::ZIdGroupT>();
    to_group->id = group.Id;
    for (const Object& object : group.Objects)
      to_group->objects.push_back(std::visit(MakeObject(), object));
    to->groups.push_back(std::move(to_group));
  }
  return to;
}

void WriteFile(const Map& map, const std::string& path) {
  flat::MapT root;
  for (const Segment& segment : map.Segments) {
    auto to = std::make_unique<flat::SegmentT>();
    to->number = segment.Number;
    for (const Layer& layer : segment.Layers) to->layers.push_back(MakeLayer(layer));
    root.segments.push_back(std::move(to));
  }
  flatbuffers::FlatBufferBuilder builder;
  builder.Finish(flat::Map::Pack(builder, &root));
  std::ofstream file(path, std::ios::binary);
  file.write(reinterpret_cast<const char*>(builder.GetBufferPointer()),
             static_cast<std::streamsize>(builder.GetSize()));
  Require(static_cast<bool>(file.flush()), "writing " + path);
}

}  // namespace

void AddFlatBuffers(Suite& suite, const Corpus& corpus) {
  const std::string path = corpus.PeerFile("flatbuffers");
  suite.Files.emplace_back([path](const Map& map) { WriteFile(map, path); });

  suite.Jobs["flatbuffers/unpack"] = [path] {
    return Making([file = std::make_shared<FileBytes>(ReadWholeFile(path))] {
      constexpr flatbuffers::uoffset_t kDepth = 64;
      constexpr flatbuffers::uoffset_t kTables = 100'000'000;  // more than any map here has
      flatbuffers::Verifier verifier(file->Data.get(), file->Size, kDepth, kTables);
      Require(flat::VerifyMapBuffer(verifier), "verifying");
      return flat::UnPackMap(file->Data.get());
    });
  };
}

}  // namespace qenzor::bench
