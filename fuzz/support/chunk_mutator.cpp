#include "support/chunk_mutator.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "qenzor/catalogue.h"
#include "support/chunk_tree.h"
#include "support/pantry.h"
#include "support/random.h"
#include "support/require.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t max_size);

namespace fuzz {
namespace {

/// An empty chunk of each class.
std::vector<ChunkNode> EmptyChunks() {
  std::vector<ChunkNode> nodes;
  qenzor::ForEachClass([&nodes](auto row) {
    typename decltype(row)::Chunk chunk;
    qenzor::CMemFile file;
    Require(chunk.Write(&file, true));
    ChunkNode node;
    node.Id = row.kChunkId;
    node.Fields = file.GetBytes();
    node.Fields.erase(node.Fields.begin(),
                      node.Fields.begin() + std::min<std::ptrdiff_t>(8, std::ssize(node.Fields)));
    nodes.push_back(std::move(node));
  });
  return nodes;
}

Pantry<ChunkNode>& ThePantry() {
  static Pantry<ChunkNode> s_pantry(EmptyChunks());
  return s_pantry;
}

void AddChild(ChunkNode& parent, ChunkNode child, Random& random) {
  const auto at = static_cast<std::ptrdiff_t>(random.Below(parent.Children.size() + 1));
  parent.Children.insert(parent.Children.begin() + at, std::move(child));
}

/// A text as it is stored, right or nearly so.
Bytes StoredText(Random& random) {
  constexpr std::array<std::uint16_t, 12> kUnits{'a',  ' ',    '\n',   '&',    '<',    0,
                                                 0x80, 0x3042, 0x2014, 0xD83D, 0xFFFD, 0xF8F0};
  constexpr std::array<std::uint16_t, 6> kMarks{0xFEFF, 0xFEFF, 0xFEFF, 0xFFFE, 0, 0x6161};
  Bytes text(4);
  PutNumber(text, 2, random.Of(kMarks), 2);
  for (std::size_t units = random.Below(random.OneIn(8) ? 40 : 6); units > 0; --units) {
    text.resize(text.size() + 2);
    PutNumber(text, text.size() - 2, random.Of(kUnits), 2);
  }
  std::size_t length = text.size() - 2;
  if (random.OneIn(3)) length = random.OneIn(2) ? random.Below(70) : 0x10000 - random.Below(12);
  if (random.OneIn(8)) {
    text.resize(2);
    length = 0;
  }
  PutNumber(text, 0, length, 2);
  return text;
}

/// Puts bytes into the fields, in place of as many or between what is there.
void Plant(ChunkNode& node, const Bytes& bytes, Random& random) {
  const std::size_t at = random.OneIn(2) ? 0 : random.Below(node.Fields.size() + 1);
  const auto begin = node.Fields.begin() + static_cast<std::ptrdiff_t>(at);
  if (random.OneIn(2)) {
    const std::size_t over = std::min(bytes.size(), node.Fields.size() - at);
    node.Fields.erase(begin, begin + static_cast<std::ptrdiff_t>(over));
  }
  node.Fields.insert(node.Fields.begin() + static_cast<std::ptrdiff_t>(at), bytes.begin(),
                     bytes.end());
}

/// Counts stand anywhere, in two bytes or four; records have these sizes, points the first.
void ChangeCount(ChunkNode& node, Random& random) {
  constexpr std::array<std::size_t, 8> kRecords{4, 4, 8, 9, 10, 14, 16, 24};
  const std::size_t record = random.Of(kRecords);
  const std::size_t width = random.OneIn(3) ? 4 : 2;
  // Most counts lie a whole number of records before the end.
  std::size_t at = random.Below(node.Fields.size() + 1);
  if (random.OneIn(2)) at = node.Fields.size() % record;
  if (at + width > node.Fields.size()) return;
  const std::uint64_t behind = (node.Fields.size() - at - width) / record;
  switch (random.Below(4)) {
    case 0:
      PutNumber(node.Fields, at, behind + random.Below(3) - 1, width);
      break;
    case 1:
      PutNumber(node.Fields, at, random.Number(), width);
      break;
    case 2:
      PutNumber(node.Fields, at, node.Children.size() + random.Below(3) - 1, width);
      break;
    default: {  // records more, counted
      const std::size_t more = 1 + random.Below(4);
      PutNumber(node.Fields, at, GetNumber(node.Fields, at, width) + more, width);
      for (std::size_t i = 0; i < more * record; ++i)
        node.Fields.push_back(static_cast<std::uint8_t>(random.Number()));
    }
  }
}

/// A number in the fields: keys first of all, which may share a bucket with others.
void ChangeNumber(ChunkNode& node, Random& random) {
  constexpr std::array<std::size_t, 4> kWidths{1, 2, 4, 8};
  const std::size_t width = random.Of(kWidths);
  const std::size_t at = random.OneIn(2) ? 0 : random.Below(node.Fields.size() + 1);
  const std::uint64_t before = GetNumber(node.Fields, at, width);
  constexpr std::uint64_t kBuckets = 8191;
  const std::array<std::uint64_t, 4> values{random.Number(), before + kBuckets,
                                            before + (std::uint64_t{1} << 32U), before + 1};
  PutNumber(node.Fields, at, random.Of(values), width);
}

void ChangeBytes(Bytes& bytes, std::size_t room) {
  const std::size_t before = bytes.size();
  bytes.resize(before + room);
  if (bytes.empty()) return;
  bytes.resize(LLVMFuzzerMutate(bytes.data(), before, bytes.size()));
}

/// The child and its parent, or nothing when there are only roots.
struct Seat {
  ChunkNode* Parent = nullptr;
  std::size_t Index = 0;
  ChunkNode& Child() const { return Parent->Children[Index]; }
  auto Iterator() const { return Parent->Children.begin() + static_cast<std::ptrdiff_t>(Index); }
};

Seat AnySeat(ChunkNode& root, Random& random) {
  std::vector<Seat> seats;
  for (ChunkNode* node : AllNodes(root))
    for (std::size_t i = 0; i < node->Children.size(); ++i) seats.push_back({node, i});
  return seats.empty() ? Seat{} : random.Of(seats);
}

void ChangeTree(ChunkDocument& document, Random& random, std::size_t room) {
  const std::vector<ChunkNode*> nodes = AllNodes(document.Root);
  ChunkNode& node = *random.Of(nodes);
  const Seat seat = AnySeat(document.Root, random);
  constexpr std::size_t kOwn = 10;
  constexpr std::size_t kSeated = 5;
  switch (random.Below(seat.Parent == nullptr ? kOwn : kOwn + kSeated)) {
    case 0:
      AddChild(node, ThePantry().Take(random), random);
      break;
    case 1:  // the size in the header wrong, by little or much
      node.Lie =
          static_cast<std::uint32_t>(random.OneIn(2) ? random.Below(33) - 16 : random.Number());
      break;
    case 2:
      node.Id = static_cast<std::uint32_t>(random.Below(qenzor::kChunkIds + 2));
      break;
    case 3:
      ChangeCount(node, random);
      break;
    case 4:
      Plant(node, StoredText(random), random);
      break;
    case 5:
      ChangeNumber(node, random);
      break;
    case 6:
      ChangeBytes(node.Fields, std::min<std::size_t>(room, 16));
      break;
    case 7: {  // fields longer or shorter
      const std::size_t size = random.OneIn(2) ? random.Below(node.Fields.size() + 9)
                                               : random.Below(random.OneIn(9) ? 300 : 40);
      node.Fields.resize(size);
      break;
    }
    case 8: {  // deeper
      const std::size_t depth = random.OneIn(9) ? 250 + random.Below(20) : 1 + random.Below(3);
      const std::uint32_t id = random.OneIn(2) ? node.Id : qenzor::kChunkIds;
      for (std::size_t i = 0; i < depth; ++i) {
        ChunkNode outer;
        outer.Id = id;
        outer.Children.push_back(std::move(node));
        node = std::move(outer);
      }
      break;
    }
    case 9:
      if (random.OneIn(2))
        ChangeBytes(document.FileInfo, 0);
      else
        ChangeBytes(document.Rest, std::min<std::size_t>(room, 16));
      break;
    case kOwn:  // some more of it
      for (std::size_t more = 1 + random.Below(random.OneIn(9) ? 40 : 3); more > 0; --more)
        seat.Parent->Children.insert(seat.Iterator(), ChunkNode(seat.Child()));
      break;
    case kOwn + 1:
      seat.Parent->Children.erase(seat.Iterator());
      break;
    case kOwn + 2:
      std::swap(seat.Child(), random.Of(seat.Parent->Children));
      break;
    case kOwn + 3: {  // to another place
      ChunkNode child = std::move(seat.Child());
      seat.Parent->Children.erase(seat.Iterator());
      AddChild(*random.Of(AllNodes(document.Root)), std::move(child), random);
      break;
    }
    default:
      seat.Child() = ThePantry().Take(random);
  }
}

/// The bytes, where they fit into the room; otherwise what fits of them.
std::size_t Deliver(const ChunkDocument& document, std::uint8_t* out, std::size_t room) {
  const Bytes bytes = WriteDocument(document);
  const std::size_t size = std::min(bytes.size(), room);
  std::copy_n(bytes.begin(), size, out);
  return size;
}

}  // namespace

std::size_t MutateChunks(std::uint8_t* data, std::size_t size, std::size_t max_size,
                         unsigned seed) {
  Random random(seed);
  if (random.OneIn(8)) return LLVMFuzzerMutate(data, size, max_size);
  ChunkDocument document = ParseDocument({data, size});
  if (document.FileInfo.empty()) return LLVMFuzzerMutate(data, size, max_size);
  const std::vector<ChunkNode*> nodes = AllNodes(document.Root);
  constexpr std::size_t kLargestKept = 1024;
  if (const ChunkNode& node = *random.Of(nodes); node.Size() <= kLargestKept)
    ThePantry().Keep(node, random);
  std::size_t changes = 1;
  while (changes < 4 && random.OneIn(3)) ++changes;
  // What has become too long is cut, so no more is added to it.
  for (; changes > 0 && document.Root.Size() <= max_size; --changes)
    ChangeTree(document, random, max_size - size);
  return Deliver(document, data, max_size);
}

std::size_t CrossChunks(const std::uint8_t* first, std::size_t first_size,
                        const std::uint8_t* second, std::size_t second_size, std::uint8_t* out,
                        std::size_t max_out_size, unsigned seed) {
  Random random(seed);
  ChunkDocument document = ParseDocument({first, first_size});
  ChunkDocument other = ParseDocument({second, second_size});
  if (document.FileInfo.empty() || other.FileInfo.empty()) return 0;
  ChunkNode& given = *random.Of(AllNodes(other.Root));
  const std::vector<ChunkNode*> nodes = AllNodes(document.Root);
  if (random.OneIn(2)) {
    AddChild(*random.Of(nodes), std::move(given), random);
  } else {
    // What is replaced should be of the same class, where there is one.
    std::vector<ChunkNode*> alike;
    std::copy_if(nodes.begin(), nodes.end(), std::back_inserter(alike),
                 [&](const ChunkNode* node) { return node->Id == given.Id; });
    *random.Of(alike.empty() ? nodes : alike) = std::move(given);
  }
  return Deliver(document, out, max_out_size);
}

}  // namespace fuzz
