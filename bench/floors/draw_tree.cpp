#include "bench/floors/draw_tree.h"

#include <algorithm>

namespace qenzor::bench {

namespace {

constexpr std::size_t kFileInfoSize = 19;
constexpr std::size_t kHeaderSize = 8;
constexpr std::uint32_t kAttributeSet = 2;

std::uint32_t LoadLong(const std::uint8_t* bytes) {
  std::uint32_t value = 0;
  std::memcpy(&value, bytes, sizeof value);
  return value;
}

std::unique_ptr<PlainAttribute> ReadAttribute(const std::uint8_t* data) {
  auto attribute = std::make_unique<PlainAttribute>();
  std::memcpy(&attribute->Key, data, sizeof attribute->Key);
  attribute->Indices = std::make_unique<PlainIndices>();
  PlainIndices& indices = *attribute->Indices;
  const std::uint8_t* below = data + sizeof attribute->Key + kHeaderSize;
  indices.Count = LoadLong(below);
  indices.Infos = std::make_unique_for_overwrite<std::uint32_t[]>(indices.Count);
  std::memcpy(indices.Infos.get(), below + 4, 4 * std::size_t{indices.Count});
  return attribute;
}

std::unique_ptr<PlainInfo> ReadInfo(const std::uint8_t* data) {
  auto info = std::make_unique<PlainInfo>();
  std::copy_n(data, PlainInfo::kFixedSize, info->Fixed.begin());
  std::uint16_t count = 0;
  std::memcpy(&count, data + PlainInfo::kFixedSize, sizeof count);
  const std::size_t size = PlainInfo::kRangeSize * count;
  info->Count = count;
  info->Ranges = std::make_unique_for_overwrite<std::uint8_t[]>(size);
  std::copy_n(data + PlainInfo::kFixedSize + sizeof count, size, info->Ranges.get());
  return info;
}

/// Calls visit with the id and the data of every chunk between begin and end.
template <class Visit>
void ForEachChunk(const std::uint8_t* begin, const std::uint8_t* end, Visit visit) {
  while (begin < end) {
    const std::uint32_t size = LoadLong(begin + 4);
    visit(LoadLong(begin), begin + kHeaderSize, size);
    begin += kHeaderSize + size;
  }
}

}  // namespace

template <class Container>
PlainDraw<Container> ReadPlainDraw(const std::filesystem::path& path) {
  const FileBytes file = ReadWholeFile(path);
  const std::uint8_t* begin = file.Data.get() + kFileInfoSize + kHeaderSize;
  PlainDraw<Container> draw;
  const auto read_attribute = [&draw](std::uint32_t, const std::uint8_t* data, std::uint32_t) {
    File(draw.Attributes, ReadAttribute(data));
  };
  const auto read_info = [&draw](std::uint32_t, const std::uint8_t* data, std::uint32_t) {
    draw.Infos.push_back(ReadInfo(data));
  };
  ForEachChunk(begin, file.Data.get() + file.Size,
               [&](std::uint32_t id, const std::uint8_t* data, std::uint32_t size) {
                 if (id == kAttributeSet)
                   ForEachChunk(data + 4, data + size, read_attribute);
                 else
                   ForEachChunk(data + 4, data + size, read_info);
               });
  return draw;
}

template PlainDraw<AttributeList> ReadPlainDraw(const std::filesystem::path& path);
template PlainDraw<AttributeMap> ReadPlainDraw(const std::filesystem::path& path);

}  // namespace qenzor::bench
