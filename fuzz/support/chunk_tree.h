#pragma once

// A document as the tree of its chunks, without a thought of what they mean.

#include <cstdint>
#include <span>
#include <vector>

namespace fuzz {

using Bytes = std::vector<std::uint8_t>;

/// What stands in front of the root chunk.
inline constexpr std::size_t kQenInfoSize = 42;
inline constexpr std::size_t kZorInfoSize = 19;

struct ChunkNode {
  std::uint32_t Id = 0;
  /// What the size in its header has too much.
  std::uint32_t Lie = 0;
  /// What stands in front of the sub-chunks.
  Bytes Fields;
  std::vector<ChunkNode> Children;

  /// With its header, lies left aside.
  std::size_t Size() const;
};

struct ChunkDocument {
  Bytes FileInfo;
  ChunkNode Root;
  /// What stands behind the root.
  Bytes Rest;
};

/// The tree; without a root where none can be seen, which leaves everything in Rest. Sub-chunks are
/// seen where a chunk's data end in a clean run of known ids.
ChunkDocument ParseDocument(std::span<const std::uint8_t> data);
Bytes WriteDocument(const ChunkDocument& document);

/// All chunks of the tree, the root first.
std::vector<ChunkNode*> AllNodes(ChunkNode& root);

void PutNumber(Bytes& bytes, std::size_t at, std::uint64_t value, std::size_t width);
std::uint64_t GetNumber(std::span<const std::uint8_t> bytes, std::size_t at, std::size_t width);

}  // namespace fuzz
