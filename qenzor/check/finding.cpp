#include "qenzor/check/finding.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <charconv>

#include "qenzor/check/finding_code_impl.h"
#include "qenzor/qen/layer_data.h"
#include "qenzor/qen/mesh_segment.h"
#include "qenzor/qen/z_id_obj.h"
#include "qenzor/zor/draw_atter.h"

namespace qenzor {

namespace {

/// More nodes than this are not all named in a path; real documents have one less.
constexpr std::size_t kMaxPathNodes = 12;

CString NodeText(const PathNode& node) {
  CString text = node.Tag.empty() ? "chunk " + std::to_string(node.Id) : CString(node.Tag);
  if (node.Index.has_value()) text += '[' + std::to_string(*node.Index) + ']';
  return text;
}

std::optional<std::uint64_t> NumberAbove(const PathNode* node, std::uint32_t id,
                                         std::uint32_t other_id) noexcept {
  for (; node != nullptr; node = node->Parent)
    if (node->Id == id || node->Id == other_id) return node->Number;
  return std::nullopt;
}

}  // namespace

std::string_view SeverityName(Severity severity) noexcept {
  constexpr std::array<std::string_view, 3> kNames{"note", "warning", "error"};
  return kNames.at(static_cast<std::size_t>(severity));
}

CString CodeText(const FindingKind& kind) { return 'Q' + std::to_string(kind.Code); }

const FindingKind* FindFindingKind(std::string_view code_or_name) noexcept {
  const auto kinds = FindingKinds();
  std::uint16_t code = 0;
  if (code_or_name.starts_with('Q'))
    std::from_chars(code_or_name.data() + 1, code_or_name.data() + code_or_name.size(), code);
  const auto found = std::ranges::find_if(kinds, [&](const FindingKind& kind) {
    return kind.Name == code_or_name || (kind.Code == code && CodeText(kind) == code_or_name);
  });
  return found == kinds.end() ? nullptr : &*found;
}

CString RenderPath(const PathNode* node) {
  std::array<const PathNode*, kMaxPathNodes> ends{};
  std::size_t depth = 0;
  for (const PathNode* at = node; at != nullptr && at->Parent != nullptr; at = at->Parent) ++depth;
  if (depth == 0) return node == nullptr ? CString() : NodeText(*node);
  const std::size_t in_front = depth > kMaxPathNodes ? kMaxPathNodes / 2 : depth;
  const std::size_t behind = std::min(depth, kMaxPathNodes) - in_front;
  std::size_t level = depth;
  for (const PathNode* at = node; at->Parent != nullptr; at = at->Parent, --level) {
    if (level <= in_front)
      ends.at(level - 1) = at;
    else if (depth - level < behind)
      ends.at(kMaxPathNodes - 1 - (depth - level)) = at;
  }
  CString path;
  for (std::size_t i = 0; i < in_front + behind; ++i) {
    if (i > 0) path += '/';
    if (i == in_front) path += "(" + std::to_string(depth - in_front - behind) + " more)/";
    path += NodeText(*ends.at(i));
  }
  return path;
}

std::optional<std::uint64_t> Finding::GetSegment() const noexcept {
  return NumberAbove(Path, CMeshSegment::kChunkId, CMeshSegment::kChunkId);
}
std::optional<std::uint64_t> Finding::GetLayer() const noexcept {
  return NumberAbove(Path, CLayerData::kChunkId, CLayerData::kChunkId);
}
std::optional<std::uint64_t> Finding::GetZId() const noexcept {
  return NumberAbove(Path, CZIdObj::kChunkId, CDrawAtter::kChunkId);
}
std::optional<std::uint64_t> Finding::GetIndex() const noexcept {
  for (const PathNode* node = Path; node != nullptr; node = node->Parent)
    if (node->Index.has_value()) return node->Index;
  return std::nullopt;
}

}  // namespace qenzor
