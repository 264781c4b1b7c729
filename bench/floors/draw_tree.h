#pragma once

#include <array>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <memory>
#include <unordered_map>
#include <vector>

#include "bench/floors/plain_file.h"

namespace qenzor::bench {

/// The least that can be called an owning tree of draw data: one allocation for each object, one
/// for each array. It believes every number in the file.

struct PlainObject {
  virtual ~PlainObject() = default;
};

struct PlainIndices final : PlainObject {
  std::uint32_t Count = 0;
  std::unique_ptr<std::uint32_t[]> Infos;
};

struct PlainAttribute final : PlainObject {
  std::uint64_t Key = 0;
  std::unique_ptr<PlainIndices> Indices;
};

/// The scale ranges stay packed as they are in the file.
struct PlainInfo final : PlainObject {
  static constexpr std::size_t kFixedSize = 9;
  static constexpr std::size_t kRangeSize = 16;

  std::array<std::uint8_t, kFixedSize> Fixed{};
  std::uint32_t Count = 0;
  std::unique_ptr<std::uint8_t[]> Ranges;
};

using AttributeList = std::vector<std::unique_ptr<PlainAttribute>>;
using AttributeMap = std::unordered_map<std::uint64_t, std::unique_ptr<PlainAttribute>>;

inline void File(AttributeList& list, std::unique_ptr<PlainAttribute> attribute) {
  list.push_back(std::move(attribute));
}
inline void File(AttributeMap& map, std::unique_ptr<PlainAttribute> attribute) {
  map[attribute->Key] = std::move(attribute);
}

/// Draw data whose draw attributes are filed in a Container, one of the two above.
template <class Container>
struct PlainDraw {
  Container Attributes;
  std::vector<std::unique_ptr<PlainInfo>> Infos;
};

template <class Container>
PlainDraw<Container> ReadPlainDraw(const std::filesystem::path& path);

}  // namespace qenzor::bench
