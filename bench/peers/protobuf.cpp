#include <fcntl.h>
#include <google/protobuf/arena.h>
#include <unistd.h>

#include <fstream>

#include "bench/floors/plain_file.h"
#include "bench/suite.h"
#include "map.pb.h"

namespace qenzor::bench {

namespace {

void PutPoints(google::protobuf::RepeatedField<std::int32_t>& xy,
               const std::vector<Point>& points) {
  for (const Point& point : points) {
    xy.Add(point.X);
    xy.Add(point.Y);
  }
}

struct PutObject {
  proto::Object& To;

  void operator()(const Line& line) const {
    PutPoints(*To.mutable_line()->mutable_xy(), line.Points);
  }
  void operator()(const Polygon& polygon) const {
    To.mutable_polygon()->set_height(polygon.Height);
    PutPoints(*To.mutable_polygon()->mutable_xy(), polygon.Points);
  }
  void operator()(const Label& label) const {
    proto::Label& to = *To.mutable_label();
    to.set_flags(label.Flags);
    to.set_angle(label.Angle);
    to.set_x(label.At.X);
    to.set_y(label.At.Y);
    to.set_offset_rate(label.OffsetRate);
    to.set_offset_angle(label.OffsetAngle);
    to.set_text(NarrowText(label));
  }
};

void PutLayer(proto::Layer& to, const Layer& layer) {
  to.set_number(layer.Number);
  for (const ZIdGroup& group : layer.Groups) {
    proto::ZIdGroup& to_group = *to.add_groups();
    to_group.set_id(group.Id);
    for (const Object& object : group.Objects)
      std::visit(PutObject{*to_group.add_objects()}, object);
  }
}

void WriteFile(const Map& map, const std::string& path) {
  proto::Map message;
  for (const Segment& segment : map.Segments) {
    proto::Segment& to = *message.add_segments();
    to.set_number(segment.Number);
    for (const Layer& layer : segment.Layers) PutLayer(*to.add_layers(), layer);
  }
  std::ofstream file(path, std::ios::binary);
  Require(message.SerializeToOstream(&file), "writing " + path);
}

void Parse(proto::Map& message, const FileBytes& file) {
  Require(message.ParseFromArray(file.Data.get(), static_cast<int>(file.Size)), "parsing");
}

void Serialise(const proto::Map& message, const std::string& path) {
  const int file = ::open(path.c_str(), O_CREAT | O_TRUNC | O_WRONLY | O_CLOEXEC, 0644);
  Require(file >= 0 && message.SerializeToFileDescriptor(file) && ::close(file) == 0,
          "writing " + path);
}

}  // namespace

void AddProtobuf(Suite& suite, const Corpus& corpus) {
  const std::string path = corpus.PeerFile("protobuf");
  suite.Files.emplace_back([path](const Map& map) { WriteFile(map, path); });

  suite.Jobs["protobuf/parse-heap"] = [path] {
    return Making([file = std::make_shared<FileBytes>(ReadWholeFile(path))] {
      auto message = std::make_unique<proto::Map>();
      Parse(*message, *file);
      return message;
    });
  };
  suite.Jobs["protobuf/parse-arena"] = [path] {
    return Making([file = std::make_shared<FileBytes>(ReadWholeFile(path))] {
      auto arena = std::make_unique<google::protobuf::Arena>();
      Parse(*google::protobuf::Arena::CreateMessage<proto::Map>(arena.get()), *file);
      return arena;
    });
  };
  suite.Jobs["protobuf/write"] = [path, output = corpus.Output()] {
    auto message = std::make_shared<proto::Map>();
    Parse(*message, ReadWholeFile(path));
    return Writing(output, [message](const std::string& to) { Serialise(*message, to); });
  };
}

}  // namespace qenzor::bench
