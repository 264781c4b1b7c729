#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace qenzor::testing {

/// Bytes as a file holds them, put together field by field, little-endian and packed. Written
/// without the library's own coding, so that the two can be held against each other.
class Bytes {
 public:
  Bytes() = default;
  Bytes(std::initializer_list<std::uint8_t> bytes) : m_bytes(bytes) {}
  explicit Bytes(std::vector<std::uint8_t> bytes) : m_bytes(std::move(bytes)) {}
  explicit Bytes(std::string_view text) : m_bytes(text.begin(), text.end()) {}

  Bytes& U8(std::uint32_t value) { return Put(value, 1); }
  Bytes& U16(std::uint32_t value) { return Put(value, 2); }
  Bytes& U32(std::uint32_t value) { return Put(value, 4); }
  Bytes& U64(std::uint64_t value) { return Put(value, 8); }
  Bytes& I16(std::int32_t value) { return Put(static_cast<std::uint32_t>(value), 2); }
  Bytes& I32(std::int32_t value) { return Put(static_cast<std::uint32_t>(value), 4); }
  Bytes& F32(float value) { return Put(std::bit_cast<std::uint32_t>(value), 4); }
  Bytes& Add(const Bytes& other) {
    m_bytes.insert(m_bytes.end(), other.m_bytes.begin(), other.m_bytes.end());
    return *this;
  }
  Bytes& Add(std::string_view text) { return Add(Bytes(text)); }
  /// A stored text: byte count, mark, code units; only a zero count for an empty one.
  Bytes& Text(std::u16string_view text) {
    if (text.empty()) return U16(0);
    U16(static_cast<std::uint32_t>((text.size() + 1) * 2)).U16(0xFEFF);
    for (const char16_t unit : text) U16(unit);
    return *this;
  }
  /// The same behind the mark of the other byte order.
  Bytes& SwappedText(std::u16string_view text) {
    U16(static_cast<std::uint32_t>((text.size() + 1) * 2)).U8(0xFE).U8(0xFF);
    for (const char16_t unit : text) U8(unit >> 8U).U8(unit & 0xFFU);
    return *this;
  }

  const std::uint8_t* data() const { return m_bytes.data(); }
  std::uint32_t size() const { return static_cast<std::uint32_t>(m_bytes.size()); }
  const std::vector<std::uint8_t>& vector() const { return m_bytes; }
  Bytes Front(std::size_t count) const {
    return Bytes(std::vector<std::uint8_t>(m_bytes.begin(),
                                           m_bytes.begin() + static_cast<std::ptrdiff_t>(count)));
  }
  std::uint8_t& operator[](std::size_t index) { return m_bytes[index]; }

  bool operator==(const Bytes&) const = default;

  friend void PrintTo(const Bytes& bytes, std::ostream* out) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    *out << bytes.size() << " bytes:";
    for (const std::uint8_t byte : bytes.m_bytes)
      *out << ' ' << kDigits[byte >> 4U] << kDigits[byte & 0xFU];
  }

 private:
  Bytes& Put(std::uint64_t value, int count) {
    for (; count > 0; --count, value >>= 8U)
      m_bytes.push_back(static_cast<std::uint8_t>(value & 0xFFU));
    return *this;
  }

  std::vector<std::uint8_t> m_bytes;
};

/// A whole chunk: header and data.
inline Bytes Chunk(std::uint32_t id, const Bytes& data) {
  return Bytes().U32(id).U32(data.size()).Add(data);
}

/// A set chunk with a count of its elements, which are whole chunks.
inline Bytes SetChunk(std::uint32_t id, const std::vector<Bytes>& elements) {
  Bytes data;
  data.U32(static_cast<std::uint32_t>(elements.size()));
  for (const Bytes& element : elements) data.Add(element);
  return Chunk(id, data);
}

/// The chunk ids as they stand in files.
namespace id {
inline constexpr std::uint32_t kAddedObjInfoSet = 1;
inline constexpr std::uint32_t kDrawAtterSet = 2;
inline constexpr std::uint32_t kDrawAtter = 3;
inline constexpr std::uint32_t kCmbLblObj = 5;
inline constexpr std::uint32_t kLayerData = 7;
inline constexpr std::uint32_t kLayerSet = 8;
inline constexpr std::uint32_t kLineObj = 9;
inline constexpr std::uint32_t kPolyObj = 13;
inline constexpr std::uint32_t kRasLLObj = 16;
inline constexpr std::uint32_t kRasMMObj = 18;
inline constexpr std::uint32_t kUrlInfo = 19;
inline constexpr std::uint32_t kZIdObjSet = 20;
inline constexpr std::uint32_t kZIdObj = 21;
inline constexpr std::uint32_t kObjSet = 22;
inline constexpr std::uint32_t kQenMapData = 25;
inline constexpr std::uint32_t kZorDrawData = 26;
inline constexpr std::uint32_t kNone = 28;
inline constexpr std::uint32_t kMeshSegmentSet = 29;
inline constexpr std::uint32_t kMeshSegment = 30;
}  // namespace id

}  // namespace qenzor::testing
