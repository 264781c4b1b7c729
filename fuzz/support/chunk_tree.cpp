#include "support/chunk_tree.h"

#include "qenzor/catalogue.h"

namespace fuzz {
namespace {

constexpr std::size_t kHeader = 8;
/// Deeper trees than documents may have, and far from the end of the stack.
constexpr int kDeepest = 300;

using Span = std::span<const std::uint8_t>;

/// Ids that classes have, and one more.
bool IsKnown(std::uint64_t id) { return id > 0 && id <= qenzor::kChunkIds; }

/// Whether the data are whole chunks of known ids, back to back, at least one.
bool IsCleanRun(Span data) {
  std::size_t at = 0;
  while (data.size() - at >= kHeader) {
    if (!IsKnown(GetNumber(data, at, 4))) return false;
    const std::uint64_t size = GetNumber(data, at + 4, 4);
    if (size > data.size() - at - kHeader) return false;
    at += kHeader + size;
  }
  return at > 0 && at == data.size();
}

ChunkNode ParseChunk(Span whole, int depth) {
  ChunkNode node;
  node.Id = static_cast<std::uint32_t>(GetNumber(whole, 0, 4));
  const Span data = whole.subspan(kHeader, GetNumber(whole, 4, 4));
  std::size_t fields = 0;
  while (fields < data.size() && !IsCleanRun(data.subspan(fields))) ++fields;
  if (depth >= kDeepest) fields = data.size();
  node.Fields.assign(data.begin(), data.begin() + static_cast<std::ptrdiff_t>(fields));
  for (Span rest = data.subspan(fields); !rest.empty();) {
    const std::size_t size = kHeader + GetNumber(rest, 4, 4);
    node.Children.push_back(ParseChunk(rest.first(size), depth + 1));
    rest = rest.subspan(size);
  }
  return node;
}

void Append(Bytes& bytes, const ChunkNode& node) {
  const std::size_t at = bytes.size();
  bytes.resize(at + kHeader);
  PutNumber(bytes, at, node.Id, 4);
  bytes.insert(bytes.end(), node.Fields.begin(), node.Fields.end());
  for (const ChunkNode& child : node.Children) Append(bytes, child);
  PutNumber(bytes, at + 4, bytes.size() - at - kHeader + node.Lie, 4);
}

/// Where the root stands: behind the file info of the document whose root it is, or nowhere.
std::size_t FindRoot(Span data) {
  struct Place {
    std::size_t Offset;
    std::uint32_t Id;
  };
  constexpr Place kPlaces[] = {{kQenInfoSize, qenzor::CQenMapData::kChunkId},
                               {kZorInfoSize, qenzor::CZorDrawData::kChunkId}};
  for (const auto& [offset, id] : kPlaces)
    if (offset + kHeader <= data.size() && GetNumber(data, offset, 4) == id) return offset;
  return data.size();
}

void Collect(ChunkNode& node, std::vector<ChunkNode*>& nodes) {
  nodes.push_back(&node);
  for (ChunkNode& child : node.Children) Collect(child, nodes);
}

}  // namespace

std::size_t ChunkNode::Size() const {
  std::size_t size = kHeader + Fields.size();
  for (const ChunkNode& child : Children) size += child.Size();
  return size;
}

ChunkDocument ParseDocument(Span data) {
  ChunkDocument document;
  const std::size_t root = FindRoot(data);
  if (root == data.size()) {
    document.Rest.assign(data.begin(), data.end());
    return document;
  }
  const Span info = data.first(root);
  document.FileInfo.assign(info.begin(), info.end());
  const std::uint64_t told = GetNumber(data, root + 4, 4);
  const std::size_t size = std::min<std::uint64_t>(told, data.size() - root - kHeader);
  Bytes whole(data.begin() + static_cast<std::ptrdiff_t>(root),
              data.begin() + static_cast<std::ptrdiff_t>(root + kHeader + size));
  PutNumber(whole, 4, size, 4);
  document.Root = ParseChunk(whole, 0);
  document.Root.Lie = static_cast<std::uint32_t>(told - size);
  const Span rest = data.subspan(root + kHeader + size);
  document.Rest.assign(rest.begin(), rest.end());
  return document;
}

Bytes WriteDocument(const ChunkDocument& document) {
  Bytes bytes = document.FileInfo;
  if (!document.FileInfo.empty()) Append(bytes, document.Root);
  bytes.insert(bytes.end(), document.Rest.begin(), document.Rest.end());
  return bytes;
}

std::vector<ChunkNode*> AllNodes(ChunkNode& root) {
  std::vector<ChunkNode*> nodes;
  Collect(root, nodes);
  return nodes;
}

void PutNumber(Bytes& bytes, std::size_t at, std::uint64_t value, std::size_t width) {
  for (std::size_t i = 0; i < width && at + i < bytes.size(); ++i)
    bytes[at + i] = static_cast<std::uint8_t>(value >> 8 * i);
}

std::uint64_t GetNumber(Span bytes, std::size_t at, std::size_t width) {
  std::uint64_t value = 0;
  for (std::size_t i = 0; i < width && at + i < bytes.size(); ++i)
    value |= std::uint64_t{bytes[at + i]} << 8 * i;
  return value;
}

}  // namespace fuzz
