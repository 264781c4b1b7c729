#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace qenzor::bench {

/// What all contestants store: the content of documents, in nobody's format. The makers below give
/// the same content on every machine and in every run.

struct Point {
  std::int32_t X = 0;
  std::int32_t Y = 0;
};

struct Line {
  std::vector<Point> Points;
};

struct Polygon {
  std::int32_t Height = 0;
  std::vector<Point> Points;
};

struct Label {
  std::uint16_t Flags = 0;
  float Angle = 0;
  Point At;
  float OffsetRate = 0;
  float OffsetAngle = 0;
  std::u16string Text;  ///< ASCII letters and spaces
};

using Object = std::variant<Line, Polygon, Label>;

struct ZIdGroup {
  std::uint64_t Id = 0;
  std::vector<Object> Objects;
};

struct Layer {
  std::uint16_t Number = 0;
  std::vector<ZIdGroup> Groups;
};

struct Segment {
  std::uint16_t Number = 0;
  std::vector<Layer> Layers;
};

struct Map {
  std::vector<Segment> Segments;
};

/// The text of a label in one byte a letter.
inline std::string NarrowText(const Label& label) {
  std::string text;
  for (const char16_t unit : label.Text) text += static_cast<char>(unit);
  return text;
}

/// A map whose binary document has about so many bytes. Objects are half lines of 20 points on
/// average, 30 % polygons of 30 points and 20 % labels: 20 in a z-id, 50 z-ids in a layer, 10
/// layers in a segment.
Map MakeMap(std::size_t bytes);

struct ScaleRange {
  std::uint32_t Max = 0;
  std::uint32_t Min = 0;
  std::uint16_t Width = 0;
};

struct DrawInfo {
  std::uint8_t Code = 0;
  std::uint32_t Color = 0;
  std::vector<ScaleRange> Ranges;
};

struct DrawAttribute {
  std::uint64_t Key = 0;
  std::vector<std::uint32_t> Infos;  ///< positions in DrawData::Infos
};

struct DrawData {
  std::vector<DrawAttribute> Attributes;  ///< by random keys, none twice
  std::vector<DrawInfo> Infos;
};

/// Draw data of so many draw attributes, which share a hundred draw infos.
DrawData MakeDrawData(std::size_t attributes);

/// The keys of that draw data in another random order.
std::vector<std::uint64_t> ShuffledKeys(std::size_t attributes);

}  // namespace qenzor::bench
