#pragma once

#include <random>
#include <string>
#include <vector>

#include "qenzor/catalogue.h"
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
    const std::uint32_t kind = Number(kKinds);
    switch (kind) {
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
      case 4:
        return RasMMBytes({Coordinate(), Coordinate()}, Maybe(&QenGenerator::InfoSet));
      default:
        return OtherObject(kind - kKnownKinds);
    }
  }

  /// A number below the limit.
  std::uint32_t Number(std::uint32_t limit) {
    return static_cast<std::uint32_t>(m_random() % limit);
  }

 private:
  using Maker = Bytes (QenGenerator::*)();

  /// Object classes that are made above, byte by byte, and those that have been added since, which
  /// are made from their field lists.
  static constexpr std::uint32_t kKnownKinds = 5;
  template <class Row>
  static constexpr bool kIsObject = std::is_base_of_v<CAbstractObj, typename Row::Chunk>;
  template <class Row>
  static constexpr bool kIsOther = kIsObject<Row>&& Row::kChunkId != id::kLineObj&& Row::kChunkId !=
                                   id::kPolyObj&& Row::kChunkId != id::kCmbLblObj&& Row::kChunkId !=
                                   id::kRasLLObj&& Row::kChunkId != id::kRasMMObj;
  static constexpr std::uint32_t kKinds = WithAllClasses(
      []<class... Rows>() { return kKnownKinds + (std::uint32_t{kIsOther<Rows>} + ...); });

  Bytes OtherObject(std::uint32_t at) {
    Bytes object;
    ForEachClass([&]<class Row>(Row) {
      if constexpr (kIsOther<Row>)
        if (at-- == 0) object = Chunk(Row::kChunkId, FieldBytes(Row::Chunk::DataType::Fields()));
    });
    return object;
  }
  template <class Fields>
  Bytes FieldBytes(const Fields& fields) {
    Bytes data;
    ForEachField(fields, [&](const auto& f) { AddField(data, f); });
    return data.Add(Maybe(&QenGenerator::InfoSet));
  }
  template <class O, class V, class C>
  void AddField(Bytes& data, const Field<O, V, C>& /*f*/) {
    if constexpr (std::is_floating_point_v<V>)
      data.F32(Float());
    else
      for (std::uint32_t i = 0; i < C::template kSize<V>; ++i) data.U8(Number(256));
  }
  template <class O, class V>
  void AddField(Bytes& data, const TextField<O, V>& /*f*/) {
    data.Text(Text());
  }
  template <class O, class Array>
  void AddField(Bytes& data, const ArrayField<O, Array>& /*f*/) {
    using Element = typename Array::value_type;
    const std::uint32_t count = Number(6);
    data.Add(sizeof(typename Array::count_type) == 2 ? Bytes().U16(count) : Bytes().U32(count));
    for (std::uint32_t i = 0; i < count * PackedSize<Element>(); ++i) data.U8(Number(256));
  }

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
