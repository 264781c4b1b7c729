#include <plist/plist.h>

#include <fstream>

#include "bench/floors/plain_file.h"
#include "bench/suite.h"

namespace qenzor::bench {

namespace {

struct FreePlist {
  void operator()(void* node) const { plist_free(node); }
};
using Plist = std::unique_ptr<void, FreePlist>;

// Packed as a whole: a number each would make a tree of a hundred times the document's size.
plist_t PointsNode(const std::vector<Point>& points) {
  return plist_new_data(reinterpret_cast<const char*>(points.data()),
                        points.size() * sizeof(Point));
}

struct MakeObject {
  plist_t operator()(const Line& line) const {
    plist_t to = plist_new_dict();
    plist_dict_set_item(to, "line", PointsNode(line.Points));
    return to;
  }
  plist_t operator()(const Polygon& polygon) const {
    plist_t to = plist_new_dict();
    plist_dict_set_item(to, "height", Number(polygon.Height));
    plist_dict_set_item(to, "polygon", PointsNode(polygon.Points));
    return to;
  }
  plist_t operator()(const Label& label) const {
    plist_t to = plist_new_dict();
    plist_dict_set_item(to, "flags", Number(label.Flags));
    plist_dict_set_item(to, "angle", plist_new_real(label.Angle));
    plist_dict_set_item(to, "at", PointsNode({label.At}));
    plist_dict_set_item(to, "offset_rate", plist_new_real(label.OffsetRate));
    plist_dict_set_item(to, "offset_angle", plist_new_real(label.OffsetAngle));
    plist_dict_set_item(to, "text", plist_new_string(NarrowText(label).c_str()));
    return to;
  }

 private:
  static plist_t Number(std::int32_t number) {
    return plist_new_uint(static_cast<std::uint64_t>(number));
  }
};

/// A dictionary of a number and an array of what make gives for each of the elements.
template <class Elements, class Make>
plist_t MakeBranch(std::uint64_t number, const Elements& elements, Make make) {
  plist_t array = plist_new_array();
  for (const auto& element : elements) plist_array_append_item(array, make(element));
  plist_t to = plist_new_dict();
  plist_dict_set_item(to, "number", plist_new_uint(number));
  plist_dict_set_item(to, "elements", array);
  return to;
}

plist_t MakeGroup(const ZIdGroup& group) {
  return MakeBranch(group.Id, group.Objects,
                    [](const Object& object) { return std::visit(MakeObject(), object); });
}
plist_t MakeLayer(const Layer& layer) { return MakeBranch(layer.Number, layer.Groups, MakeGroup); }
plist_t MakeSegment(const Segment& segment) {
  return MakeBranch(segment.Number, segment.Layers, MakeLayer);
}

void Write(plist_t root, const std::string& path) {
  char* bytes = nullptr;
  std::uint32_t size = 0;
  plist_to_bin(root, &bytes, &size);
  const std::unique_ptr<char, void (*)(char*)> owner(bytes, &plist_to_bin_free);
  std::ofstream file(path, std::ios::binary);
  file.write(bytes, size);
  Require(bytes != nullptr && file.flush(), "writing " + path);
}

Plist Parse(const FileBytes& file) {
  plist_t root = nullptr;
  plist_from_bin(reinterpret_cast<const char*>(file.Data.get()),
                 static_cast<std::uint32_t>(file.Size), &root);
  Require(root != nullptr, "parsing");
  return Plist(root);
}

}  // namespace

void AddLibPlist(Suite& suite, const Corpus& corpus) {
  const std::string path = corpus.PeerFile("libplist");
  // Writing takes quadratic time, which the size that the others get would make minutes of.
  const std::size_t bytes = corpus.GetSizes().ParsedMap;
  suite.Files.emplace_back([path, bytes](const Map&) {
    const Map map = MakeMap(bytes);
    Write(Plist(MakeBranch(0, map.Segments, MakeSegment)).get(), path);
  });

  suite.Jobs["libplist/parse"] = [path] {
    return Making(
        [file = std::make_shared<FileBytes>(ReadWholeFile(path))] { return Parse(*file); });
  };
  suite.Jobs["libplist/write"] = [path, output = corpus.Output()] {
    return Writing(output, [root = std::shared_ptr<void>(Parse(ReadWholeFile(path)))](
                               const std::string& to) { Write(root.get(), to); });
  };
}

}  // namespace qenzor::bench
