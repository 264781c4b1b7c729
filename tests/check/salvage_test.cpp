// What is kept of damaged documents: cut off anywhere, one byte or one size wrong anywhere.

#include "qenzor/check/salvage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <random>

#include "qenzor/zor/zor.h"
#include "tests/support/document_tree.h"
#include "tests/support/findings.h"
#include "tests/support/qen_generator.h"
#include "tests/support/zor_bytes.h"
#include "tests/support/zor_generator.h"

namespace {

using namespace qenzor;
using namespace qenzor::testing;

/// Every so many places are tried, and all where that is asked for.
std::size_t Step(std::size_t sampled) {
  return std::getenv("QENZOR_LONG") == nullptr ? sampled : 1;
}

struct Lost {
  std::uint64_t Offset;
  std::uint64_t Size;
  std::string Path;

  bool operator==(const Lost&) const = default;
  friend void PrintTo(const Lost& lost, std::ostream* out) {
    *out << "{" << lost.Offset << ", " << lost.Size << ", \"" << lost.Path << "\"}";
  }
};

struct Rescue {
  std::optional<Bytes> Out;  ///< nothing where it failed
  std::vector<Lost> Losses;
};

Rescue Salvage(const Bytes& document, BinaryKind kind) {
  // From a buffer of the exact size, so that a byte too far is seen.
  const std::vector<std::uint8_t> exact(document.data(), document.data() + document.size());
  Rescue rescue;
  auto salvaged = SalvageBinary(exact, kind, [&](const Loss& loss) {
    rescue.Losses.push_back({loss.Offset, loss.Size, RenderPath(loss.Path)});
    EXPECT_FALSE(loss.Reason.empty());
  });
  if (!salvaged) {
    EXPECT_FALSE(salvaged.GetFailure().Reason.empty());
    return rescue;
  }
  EXPECT_EQ(salvaged->Losses, rescue.Losses.size());
  rescue.Out = Bytes(std::move(salvaged->Bytes));
  return rescue;
}

std::uint64_t ErrorsIn(const Bytes& document, BinaryKind kind) {
  CheckOptions options;
  options.MaxDetails = 0;
  FoundSink sink;
  return CheckBinary({document.data(), document.size()}, kind, options, sink).Of(Severity::kError);
}

const std::vector<DocumentTree>& Documents() {
  static const std::vector<DocumentTree> kDocuments{MapTree(), DrawingTree()};
  return kDocuments;
}

TEST(Salvage, ADocumentWithoutErrorsStaysByteForByte) {
  for (const DocumentTree& document : Documents()) {
    const Bytes bytes = document.Render();
    ASSERT_EQ(ErrorsIn(bytes, document.Kind), 0U);
    const Rescue rescue = Salvage(bytes, document.Kind);
    EXPECT_EQ(rescue.Out, bytes);
    EXPECT_EQ(rescue.Losses, std::vector<Lost>{});
  }
  for (std::uint64_t seed = 0; seed < 50; ++seed) {
    const Bytes map = QenGenerator(seed).Document();
    EXPECT_EQ(Salvage(map, BinaryKind::kQen).Out, map);
    const auto chunks = ToDocument(*ZorGenerator(seed).Edit());
    CMemFile file;
    ASSERT_TRUE(chunks->Write(&file));
    const Bytes drawing(file.GetBytes());
    EXPECT_EQ(Salvage(drawing, BinaryKind::kZor).Out, drawing);
    // Doubtful is not damaged.
    const Bytes longer = Bytes(map).U32(5);
    EXPECT_EQ(Salvage(longer, BinaryKind::kQen).Out, longer);
  }
}

TEST(Salvage, WithoutFileInfoOrRootThereIsNothing) {
  for (const DocumentTree& document : Documents()) {
    const Bytes bytes = document.Render();
    for (std::size_t size = 0; size < document.Info.size() + 8; ++size)
      EXPECT_FALSE(Salvage(bytes.Front(size), document.Kind).Out.has_value()) << size;
    Bytes other = bytes.Front(bytes.size() - 1);
    other[document.Info.size()] = 77;
    EXPECT_FALSE(Salvage(other, document.Kind).Out.has_value());
  }
}

TEST(Salvage, OfADocumentThatIsCutOffAllThatIsWholeIsKept) {
  for (const DocumentTree& document : Documents()) {
    const Bytes bytes = document.Render();
    for (std::size_t size = document.Info.size() + 8; size < bytes.size(); ++size) {
      const Rescue rescue = Salvage(bytes.Front(size), document.Kind);
      const Bytes expected =
          Bytes(document.Info).Add(*document.Root.Cut(document.Info.size(), size));
      ASSERT_EQ(rescue.Out, expected) << size;
      ASSERT_EQ(ErrorsIn(*rescue.Out, document.Kind), 0U) << size;
      ASSERT_FALSE(rescue.Losses.empty()) << size;
      EXPECT_EQ(
          rescue.Losses.back(),
          (Lost{size, bytes.size() - size,
                std::string(document.Kind == BinaryKind::kQen ? "QenMapData" : "ZorDrawData")}));
    }
  }
}

/// The elements that stand in a set, with where they begin in the document.
struct Element {
  std::size_t At;
  Bytes Chunk;
};
std::vector<Element> ElementsOf(const DocumentTree& document, std::uint32_t set) {
  std::vector<Element> elements;
  document.Root.ForEach(document.Info.size(), [&](const Node& node, std::size_t at) {
    if (node.Id != set) return;
    at += 12;
    for (const Node& sub : node.Subs) {
      elements.push_back({at, sub.Render()});
      at += sub.Size();
    }
  });
  return elements;
}

/// The elements of the only set of this class in a sound document.
std::vector<Bytes> ElementsIn(const Bytes& document, std::uint32_t set) {
  const std::vector<std::uint8_t>& bytes = document.vector();
  const auto number = [&](std::size_t at) {
    std::uint32_t value = 0;
    for (std::size_t i = 4; i-- > 0;) value = value << 8U | bytes[at + i];
    return value;
  };
  std::vector<Bytes> elements;
  for (std::size_t at = 19 + 8; at + 8 <= bytes.size(); at += 8 + number(at + 4)) {
    if (number(at) != set) continue;
    const std::size_t end = at + 8 + number(at + 4);
    for (std::size_t sub = at + 12; sub < end; sub += 8 + number(sub + 4))
      elements.emplace_back(std::vector<std::uint8_t>(
          bytes.begin() + static_cast<std::ptrdiff_t>(sub),
          bytes.begin() + static_cast<std::ptrdiff_t>(sub + 8 + number(sub + 4))));
  }
  return elements;
}

bool IsEmpty(const Bytes& element) {
  return std::all_of(element.vector().begin() + 8, element.vector().end(),
                     [](std::uint8_t byte) { return byte == 0; });
}

/// That what the damage at the place has left is sound, that whatever stands before it is kept, and
/// that nothing takes the position of another.
void ExpectRescued(const DocumentTree& document, const Bytes& damaged, std::size_t place,
                   std::size_t place_end) {
  const Rescue rescue = Salvage(damaged, document.Kind);
  ASSERT_TRUE(rescue.Out.has_value());
  ASSERT_EQ(ErrorsIn(*rescue.Out, document.Kind), 0U);
  if (ErrorsIn(damaged, document.Kind) == 0) {
    EXPECT_EQ(rescue.Out, damaged);
    EXPECT_TRUE(rescue.Losses.empty());
    return;
  }
  EXPECT_FALSE(rescue.Losses.empty());
  EXPECT_EQ(Salvage(*rescue.Out, document.Kind).Out, rescue.Out);
  const std::vector<std::uint8_t>& out = rescue.Out->vector();
  auto from = out.begin();
  for (const std::uint32_t set : {id::kObjSet, id::kDrawAtterSet}) {
    for (const Element& object : ElementsOf(document, set)) {
      if (object.At + object.Chunk.size() > place) continue;
      const std::vector<std::uint8_t>& bytes = object.Chunk.vector();
      from = std::search(from, out.end(), bytes.begin(), bytes.end());
      ASSERT_NE(from, out.end()) << "the chunk at " << object.At << " is missing";
      from += static_cast<std::ptrdiff_t>(bytes.size());
    }
  }
  if (document.Kind == BinaryKind::kQen) return;
  for (const std::uint32_t set : {id::kDrawInfoSet, id::kMarkDataSet}) {
    const std::vector<Bytes> left = ElementsIn(*rescue.Out, set);
    const std::vector<Element> before = ElementsOf(document, set);
    for (std::size_t i = 0; i < before.size(); ++i) {
      const std::size_t end = before[i].At + before[i].Chunk.size();
      ASSERT_TRUE(end > place || i < left.size());
      if (i >= left.size() || (before[i].At < place_end && place < end)) continue;
      EXPECT_TRUE(left[i] == before[i].Chunk || IsEmpty(left[i]))
          << "element " << i << " of set " << set << " has become another";
    }
  }
}

TEST(Salvage, OneWrongByteLosesNothingBeforeItAndMovesNoPosition) {
  std::mt19937 random(9);
  for (const DocumentTree& document : Documents()) {
    const Bytes bytes = document.Render();
    for (std::size_t at = document.Info.size() + 4; at < bytes.size(); ++at) {
      for (std::uint32_t value = static_cast<std::uint32_t>(random() % Step(40)); value < 256;
           value += static_cast<std::uint32_t>(Step(40))) {
        Bytes damaged = bytes;
        damaged[at] = static_cast<std::uint8_t>(value);
        ExpectRescued(document, damaged, at, at + 1);
        if (HasFailure()) FAIL() << "byte " << at << " became " << value;
      }
    }
  }
}

TEST(Salvage, OneWrongSizeLosesNothingBeforeItAndMovesNoPosition) {
  for (const DocumentTree& document : Documents()) {
    const Bytes bytes = document.Render();
    document.Root.ForEach(document.Info.size(), [&](const Node& node, std::size_t at) {
      const auto size = static_cast<std::uint32_t>(node.Size() - 8);
      for (const std::uint32_t wrong :
           {0U, size - 1, size + 1, size / 2, size + 4, size + 8, size + 30, size * 2, 0x7FFFFFFFU,
            0xFFFFFFF8U, 0xFFFFFFFFU}) {
        const Bytes four = Bytes().U32(wrong);
        Bytes damaged = bytes;
        for (std::size_t i = 0; i < 4; ++i) damaged[at + 4 + i] = four.vector()[i];
        ExpectRescued(document, damaged, at + 4, at + 8);
        if (HasFailure())
          FAIL() << "chunk " << node.Id << " at " << at << " with the size " << wrong;
      }
    });
  }
}

TEST(Salvage, AWrongSizeIsMadeRightWhereNothingElseIsWrong) {
  const DocumentTree document = MapTree();
  const Bytes bytes = document.Render();
  const std::vector<Element> objects = ElementsOf(document, id::kObjSet);
  for (const Element& object : objects)
    for (const std::int32_t change : {-2, -1, 1, 3, 1000000}) {
      Bytes damaged = bytes;
      const Bytes four = Bytes().I32(static_cast<std::int32_t>(object.Chunk.size()) - 8 + change);
      for (std::size_t i = 0; i < 4; ++i) damaged[object.At + 4 + i] = four.vector()[i];
      const Rescue rescue = Salvage(damaged, document.Kind);
      EXPECT_EQ(rescue.Out, bytes) << object.At << ' ' << change;
      ASSERT_EQ(rescue.Losses.size(), 1U);
      EXPECT_EQ(rescue.Losses[0].Offset, object.At + 4);
      EXPECT_EQ(rescue.Losses[0].Size, 0U);
    }
}

TEST(Salvage, EmptyElementsOfTheirKindKeepThePlacesOfThoseThatAreLost) {
  const DocumentTree document = DrawingTree();
  const auto after_wrong_count = [&](std::uint32_t set, std::size_t index, std::size_t count_at) {
    Bytes damaged = document.Render();
    const std::size_t at = ElementsOf(document, set)[index].At;
    damaged[at + count_at + 1] = 0x40;
    const Rescue rescue = Salvage(damaged, document.Kind);
    EXPECT_EQ(rescue.Losses.size(), 1U);
    EXPECT_EQ(rescue.Losses[0].Offset, at);
    return ElementsIn(*rescue.Out, set);
  };
  const std::vector<Bytes> infos = after_wrong_count(id::kDrawInfoSet, 1, 8 + 4);
  ASSERT_EQ(infos.size(), 5U);
  EXPECT_EQ(infos[1], Chunk(id::kPolySolidBrushDrawInfo, Bytes().U32(0).U16(0)));
  EXPECT_EQ(infos[4], SolidBrushBytes(0xFF445566));
  const std::vector<Bytes> marks = after_wrong_count(id::kMarkDataSet, 0, 8 + 8);
  ASSERT_EQ(marks.size(), 3U);
  EXPECT_EQ(marks[0], MarkBytes({0, 0, 0, 0}, {}));
  // Behind the last one nobody's position needs one.
  EXPECT_EQ(after_wrong_count(id::kDrawInfoSet, 4, 8 + 4).size(), 4U);
}

TEST(Salvage, ALineDrawInfoWithoutRecordsStandsForWhatCannotBeTold) {
  const DocumentTree document = DrawingTree();
  const std::vector<Element> elements = ElementsOf(document, id::kDrawInfoSet);
  Bytes damaged = document.Render();
  // Two are overwritten from their beginning.
  for (std::size_t at = elements[1].At; at < elements[3].At; ++at) damaged[at] = 0xEE;
  const Rescue rescue = Salvage(damaged, document.Kind);
  ASSERT_TRUE(rescue.Out.has_value());
  const Bytes empty = Chunk(id::kLineDrawInfo, Bytes().U8(0).U32(0).F32(0).U16(0));
  EXPECT_EQ(
      ElementsIn(*rescue.Out, id::kDrawInfoSet),
      (std::vector<Bytes>{elements[0].Chunk, empty, empty, elements[3].Chunk, elements[4].Chunk}));
  EXPECT_EQ(rescue.Losses,
            (std::vector<Lost>{{elements[1].At, elements[3].At - elements[1].At, "DrawInfoSet"}}));
}

TEST(Salvage, WholeChunksOfUnknownClassesAreKept) {
  const Bytes unknown = Chunk(300, Chunk(301, {}).Add(Chunk(302, {})));
  const Bytes layers = Bytes().U32(1).Add(unknown).Add(LayerBytes(5));
  const auto map_of = [](const Bytes& data) {
    const Bytes segment = SegmentBytes(0, Chunk(id::kLayerSet, data));
    return GoodQenInfo().Add(Chunk(id::kQenMapData, SetChunk(id::kMeshSegmentSet, {segment})));
  };
  const Bytes damaged = map_of(Bytes(layers).Add(Bytes{1, 2, 3}));
  ASSERT_GT(ErrorsIn(damaged, BinaryKind::kQen), 0U);
  EXPECT_EQ(Salvage(damaged, BinaryKind::kQen).Out, map_of(layers));
}

TEST(Salvage, WhateverIsWrongTheResultIsSound) {
  std::mt19937 random(4);
  const std::size_t rounds = 400000 / Step(100);
  for (std::size_t round = 0; round < rounds; ++round) {
    const DocumentTree& document = Documents()[round % 2];
    std::vector<std::uint8_t> bytes = document.Render().vector();
    for (std::size_t edits = 1 + random() % 6; edits > 0; --edits) {
      const auto at =
          document.Info.size() + 4 + random() % (bytes.size() - document.Info.size() - 4);
      const auto place = bytes.begin() + static_cast<std::ptrdiff_t>(at);
      const auto some =
          static_cast<std::ptrdiff_t>(std::min<std::size_t>(random() % 40, bytes.size() - at));
      switch (random() % 4) {
        case 0:
          *place = static_cast<std::uint8_t>(random());
          break;
        case 1:
          bytes.erase(place, place + some);
          break;
        case 2:
          bytes.insert(place, static_cast<std::size_t>(some),
                       static_cast<std::uint8_t>(random() % 32));
          break;
        default:
          std::fill(place, place + some, static_cast<std::uint8_t>(random()));
      }
    }
    const Bytes damaged(bytes);
    const Rescue rescue = Salvage(damaged, document.Kind);
    if (!rescue.Out.has_value()) continue;
    ASSERT_EQ(ErrorsIn(*rescue.Out, document.Kind), 0U) << round;
    ASSERT_EQ(rescue.Losses.empty(), *rescue.Out == damaged) << round;
  }
}

/// Documents made to take long: many chunks of which each seems to hold all others.
TEST(Salvage, TakesTimeAndMemoryByTheBytesAlone) {
  constexpr std::size_t kChunks = 60000;
  const auto seconds_of = [](const Bytes& elements) {
    const Bytes set = Chunk(id::kDrawInfoSet, Bytes().U32(0xFFFFFFFF).Add(elements));
    const Bytes document = GoodZorInfo().Add(DrawDataBytes({set}));
    const std::clock_t begin = std::clock();
    const Rescue rescue = Salvage(document, BinaryKind::kZor);
    const double seconds = static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
    EXPECT_TRUE(rescue.Out.has_value());
    EXPECT_LT(rescue.Out->size(), 2 * document.size());
    return seconds;
  };
  Bytes nested;
  Bytes broken;
  for (std::size_t i = 0; i < kChunks; ++i) {
    const auto rest = static_cast<std::uint32_t>((kChunks - i) * 14);
    nested.U32(id::kPolySolidBrushDrawInfo).U32(rest - 8).U32(0).U16(0);
    broken.U32(id::kPolySolidBrushDrawInfo).U32(rest - 9).U32(0).U16(0xFFFF);
  }
  EXPECT_LT(seconds_of(Bytes(nested).U8(1)), 20);
  EXPECT_LT(seconds_of(broken), 20);
}

}  // namespace
