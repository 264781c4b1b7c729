#include <algorithm>
#include <array>
#include <limits>

#include "qenzor/check/indexed_set_impl.h"
#include "qenzor/core/chunk_header.h"
#include "qenzor/core/coding.h"
#include "qenzor/core/stored_text.h"
#include "qenzor/zor/draw_info_set.h"
#include "qenzor/zor/line_draw_info.h"
#include "qenzor/zor/mark_data.h"
#include "qenzor/zor/mark_data_set.h"

namespace qenzor::check {

namespace {

/// A set whose elements go by their position, and what stands for one of a kind that is not known.
struct IndexedClass {
  std::uint32_t Set;
  std::uint32_t StandIn;
};
constexpr std::array<IndexedClass, 2> kIndexed{{{CDrawInfoSet::kChunkId, CLineDrawInfo::kChunkId},
                                                {CMarkDataSet::kChunkId, CMarkData::kChunkId}}};

const IndexedClass* FindIndexed(const ClassSchema& schema) {
  const auto* const found = std::ranges::find(kIndexed, schema.Id, &IndexedClass::Set);
  return found == kIndexed.end() ? nullptr : found;
}

/// How many bytes fields take whose values are 0 and whose arrays and texts are empty.
// NOLINTNEXTLINE(misc-no-recursion): as deep as groups nest
std::uint32_t EmptySize(std::span<const FieldSchema> fields) {
  std::uint32_t size = 0;
  for (const FieldSchema& field : fields) {
    if (field.Shape == Shape::kChunk) continue;
    if (field.CountWidth != 0)
      size += field.CountWidth;
    else if (field.Shape == Shape::kText)
      size += kStoredTextCountSize;
    else
      size += field.Shape == Shape::kGroup ? EmptySize(field.Members) : field.Size;
  }
  return size;
}

std::uint64_t EmptyChunkSize(const ClassSchema& schema) {
  return CChunkHeader::kSize + EmptySize(schema.Fields);
}

void AppendEmpty(std::vector<std::uint8_t>& bytes, const ClassSchema& schema) {
  const std::size_t at = bytes.size();
  bytes.resize(at + EmptyChunkSize(schema));
  little_endian::Store(bytes.data() + at, schema.Id);
  little_endian::Store(bytes.data() + at + 4, EmptySize(schema.Fields));
}

/// The fewest bytes that an element of the set can have.
std::uint64_t LeastSize(const ClassSchema& set) {
  std::uint64_t least = std::numeric_limits<std::uint64_t>::max();
  for (const ClassSchema* schema : AllClasses())
    if (schema != nullptr && set.Accepts(schema->Id))
      least = std::min(least, EmptyChunkSize(*schema));
  return least;
}

}  // namespace

void CIndexedSet::Lose(const ClassSchema* kind, std::uint64_t size, bool is_one) {
  m_gaps.push_back({m_bytes.size(), m_kept, kind, size, is_one});
}

std::uint64_t CIndexedSet::Close(std::uint64_t declared) {
  const IndexedClass* const indexed = FindIndexed(m_schema);
  const std::size_t gaps = m_gaps.size();
  // What is lost behind all others leaves them where they are.
  std::erase_if(m_gaps, [this](const Gap& gap) { return gap.Before == m_kept; });
  if (indexed == nullptr || m_gaps.empty()) return m_kept;
  CountLost(declared, m_gaps.size() < gaps);
  const std::vector<std::uint8_t> kept(m_bytes.begin() + static_cast<std::ptrdiff_t>(m_begin),
                                       m_bytes.end());
  m_bytes.resize(m_begin);
  std::size_t taken = 0;
  const auto take_to = [&](std::size_t end) {
    m_bytes.insert(m_bytes.end(), kept.begin() + static_cast<std::ptrdiff_t>(taken),
                   kept.begin() + static_cast<std::ptrdiff_t>(end));
    taken = end;
  };
  std::uint64_t count = m_kept;
  for (const Gap& gap : m_gaps) {
    take_to(gap.At - m_begin);
    const bool is_known = gap.Kind != nullptr && gap.Number == 1;
    for (std::uint64_t i = 0; i < gap.Number; ++i)
      AppendEmpty(m_bytes, is_known ? *gap.Kind : *FindClass(indexed->StandIn));
    count += gap.Number;
  }
  take_to(kept.size());
  return count;
}

/// Where the declared number can be true, it tells how many elements are lost in gaps that may have
/// held any number. More than one such gap share it as well as can be.
void CIndexedSet::CountLost(std::uint64_t declared, bool ends_in_gap) {
  const std::uint64_t least = LeastSize(m_schema);
  std::uint64_t here = m_kept;
  std::uint64_t open = 0;
  std::uint64_t most = 0;
  Gap* largest = nullptr;
  for (Gap& gap : m_gaps) {
    if (gap.IsOne) {
      ++here;
      continue;
    }
    ++open;
    most += gap.Size / least;
    if (largest == nullptr || gap.Size > largest->Size) largest = &gap;
  }
  if (largest == nullptr || ends_in_gap || declared < here || declared - here > most) return;
  if (declared - here >= open)
    largest->Number = declared - here - open + 1;
  else if (declared == here)
    for (Gap& gap : m_gaps) gap.Number = gap.IsOne ? 1 : 0;
}

}  // namespace qenzor::check
