#pragma once

#include <random>
#include <string>
#include <vector>

#include "tests/support/qen_bytes.h"

namespace qenzor::testing {

/// Makes map projects from a seed: well-formed, in the form that writing gives, with every class
/// and every optional part present or absent. Written as bytes, so that the library has no hand
/// in them.
class QenGenerator {
 public:
  enum class Urls { kAny, kEmpty };

  explicit QenGenerator(std::uint64_t seed, Urls urls = Urls::kAny)
      : m_random(seed), m_urls(urls) {}

  Bytes Document() {
    Bytes bytes("QENMAP\r\n\x1A");
    bytes.U16(0x4041).U16(Number(65536)).U16(Number(65536)).U32(Any()).U8(Number(256));
    for (int i = 0; i < 4; ++i) bytes.U32(Any());
    return bytes.U16(Number(65536)).U16(Number(65536)).U16(Number(65536)).Add(MapData());
  }

  Bytes MapData() { return Chunk(id::kQenMapData, Maybe(&QenGenerator::SegmentSet)); }

  Bytes Object() {
    switch (Number(5)) {
      case 0:
        return LineBytes(RandomPoints(), Maybe(&QenGenerator::InfoSet));
      case 1:
        return PolyBytes(static_cast<std::int32_t>(Any()), RandomPoints(),
                         Maybe(&QenGenerator::InfoSet));
      case 2:
        return Label();
      case 3:
        return RasLLBytes({Coordinate(), Coordinate(), Coordinate(), Coordinate()},
                          Maybe(&QenGenerator::InfoSet));
      default:
        return RasMMBytes({Coordinate(), Coordinate()}, Maybe(&QenGenerator::InfoSet));
    }
  }

  /// A number below the limit.
  std::uint32_t Number(std::uint32_t limit) {
    return static_cast<std::uint32_t>(m_random() % limit);
  }

 private:
  using Maker = Bytes (QenGenerator::*)();

  std::uint32_t Any() { return static_cast<std::uint32_t>(m_random()); }
  std::int32_t Coordinate() { return static_cast<std::int16_t>(Number(65536)); }
  Bytes Maybe(Maker make) { return Number(4) == 0 ? Bytes() : (this->*make)(); }
  Bytes Set(std::uint32_t set_id, Maker make) {
    std::vector<Bytes> elements(Number(4));
    for (Bytes& element : elements) element = (this->*make)();
    return SetChunk(set_id, elements);
  }

  Points RandomPoints() {
    Points points(Number(6) == 0 ? Number(3000) : Number(6));
    for (CPoint& point : points) point = {Coordinate(), Coordinate()};
    return points;
  }
  /// Characters that the narrow code page has, those that XML escapes among them.
  std::u16string Text() {
    static constexpr std::u16string_view kCharacters =
        u"abcXYZ019 &<>\"'\n;#%\\~\u5730\u56f3\u3042\u30bd\uff71\u8868";
    std::u16string text(Number(3) == 0 ? 0 : Number(40), u' ');
    for (char16_t& unit : text)
      unit = kCharacters[Number(static_cast<std::uint32_t>(kCharacters.size()))];
    return text;
  }
  /// Values that ten decimals hold exactly.
  float Float() { return static_cast<float>(Coordinate()) / 64; }

  Bytes Label() {
    Bytes data;
    data.U16(Number(65536)).F32(Float()).I16(Coordinate()).I16(Coordinate());
    data.F32(Float()).F32(Float()).Text(Text());
    return Chunk(id::kCmbLblObj, data.Add(Maybe(&QenGenerator::InfoSet)));
  }
  Bytes Url() { return UrlBytes(m_urls == Urls::kAny ? Text() : std::u16string()); }
  Bytes InfoSet() { return Set(id::kAddedObjInfoSet, &QenGenerator::Url); }
  Bytes ObjSet() { return Set(id::kObjSet, &QenGenerator::Object); }
  Bytes ZId() { return ZIdBytes(m_random(), Maybe(&QenGenerator::ObjSet)); }
  Bytes ZIdSet() { return Set(id::kZIdObjSet, &QenGenerator::ZId); }
  Bytes Layer() { return LayerBytes(Number(65536), Maybe(&QenGenerator::ZIdSet)); }
  Bytes LayerSet() { return Set(id::kLayerSet, &QenGenerator::Layer); }
  Bytes Segment() { return SegmentBytes(Number(65536), Maybe(&QenGenerator::LayerSet)); }
  Bytes SegmentSet() { return Set(id::kMeshSegmentSet, &QenGenerator::Segment); }

  std::mt19937_64 m_random;
  Urls m_urls;
};

}  // namespace qenzor::testing
