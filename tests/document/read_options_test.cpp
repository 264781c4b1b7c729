// What reading is allowed to take: bytes, memory, time.

#include <gtest/gtest.h>

#include "qenzor/qen/cmb_lbl_obj.h"
#include "qenzor/qen/line_obj.h"
#include "qenzor/qen_document.h"
#include "qenzor/zor_document.h"
#include "tests/support/document_kinds.h"
#include "tests/support/temp_file.h"

namespace qenzor::testing {
namespace {

std::span<const std::uint8_t> SpanOf(const Bytes& bytes) { return {bytes.data(), bytes.size()}; }

ReadOptions WithMemory(std::uint64_t most) {
  ReadOptions options;
  options.MostMemory = most;
  return options;
}

/// The least memory with which read succeeds, to within a slab.
template <class Read>
std::uint64_t LeastMemory(Read&& read) {
  std::uint64_t too_little = 0;
  std::uint64_t enough = std::uint64_t{1} << 23;
  EXPECT_TRUE(read(WithMemory(enough)));
  while (enough - too_little > 4 * 1024) {
    const std::uint64_t middle = (too_little + enough) / 2;
    const auto result = read(WithMemory(middle));
    if (!result) {
      EXPECT_EQ(result.GetFailure().Kind, FailureKind::kTooLarge);
    }
    (result ? enough : too_little) = middle;
  }
  return enough;
}

constexpr std::uint32_t kCount = 1000;

Bytes MapOfLines() {
  return QenInfoBytes().Add(
      MapDataBytes(std::vector<Bytes>(kCount, LineBytes(Points(10, CPoint{1, 2})))));
}

TEST(MostMemory, IsWhatTheObjectsTake) {
  const Bytes map = MapOfLines();
  const std::uint64_t least =
      LeastMemory([&](const ReadOptions& options) { return ReadQen(SpanOf(map), options); });
  constexpr std::uint64_t kOfALine = sizeof(CLineObj) + 10 * sizeof(CPoint) + sizeof(void*);
  EXPECT_GE(least, kCount * kOfALine);
  EXPECT_LE(least, kCount * kOfALine * 5 / 4);
}

TEST(MostMemory, CountsBothFormsWhereOneIsMadeOfTheOther) {
  const Bytes map = MapOfLines();
  const std::uint64_t least =
      LeastMemory([&](const ReadOptions& options) { return ReadQenEdit(SpanOf(map), options); });
  constexpr std::uint64_t kOfALine =
      sizeof(CLineObj) + sizeof(CLineObjEdit) + 20 * sizeof(CPoint) + 2 * sizeof(void*);
  EXPECT_GE(least, kCount * kOfALine);
  EXPECT_LE(least, kCount * kOfALine * 5 / 4);
}

TEST(MostMemory, CountsTexts) {
  const std::u16string text(2000, u'x');
  const Bytes map =
      QenInfoBytes().Add(MapDataBytes(std::vector<Bytes>(kCount / 10, LabelBytes(text))));
  const std::uint64_t least =
      LeastMemory([&](const ReadOptions& options) { return ReadQen(SpanOf(map), options); });
  constexpr std::uint64_t kOfALabel = sizeof(CCmbLblObj) + 2000 * sizeof(char16_t);
  EXPECT_GE(least, kCount / 10 * kOfALabel);
  EXPECT_LE(least, kCount / 10 * kOfALabel * 5 / 4);
}

TEST(MostMemory, CountsTheTableOfAKeyedSet) {
  std::vector<Bytes> atters;
  for (std::uint32_t key = 0; key < kCount; ++key)
    atters.push_back(Chunk(id::kDrawAtter, Bytes().U64(key)));
  const Bytes drawing = ZorInfoBytes().Add(DrawDataBytes({SetChunk(id::kDrawAtterSet, atters)}));
  const std::uint64_t least =
      LeastMemory([&](const ReadOptions& options) { return ReadZor(SpanOf(drawing), options); });
  constexpr std::uint64_t kOfAnAtter = sizeof(CDrawAtter) + 2 * sizeof(std::uint64_t);
  EXPECT_GE(least, kCount * kOfAnAtter);
  EXPECT_LE(least, kCount * kOfAnAtter * 2);
}

TEST(MostMemory, CountsWhatXmlMakes) {
  const Bytes map = MapOfLines();
  const auto document = ReadQen(SpanOf(map));
  ASSERT_TRUE(document);
  const auto text = QenToXml(*document);
  ASSERT_TRUE(text);
  const std::uint64_t least = LeastMemory([&](const ReadOptions& limits) {
    XmlReadOptions options;
    options.MostMemory = limits.MostMemory;
    return ParseQenXml(*text, options);
  });
  constexpr std::uint64_t kOfALine = sizeof(CLineObjEdit) + 10 * sizeof(CPoint) + sizeof(void*);
  EXPECT_GE(least, kCount * kOfALine);
  EXPECT_LE(least, kCount * kOfALine * 2);
}

TEST(MostMemory, IsToldWithThePlaceWhereItWasExceeded) {
  const Bytes map = MapOfLines();
  const TempFile path(map);
  const auto result = ReadQen(path.Path(), WithMemory(50'000));
  ASSERT_FALSE(result);
  const Failure& failure = result.GetFailure();
  EXPECT_EQ(failure.Path, path.Path());
  EXPECT_EQ(failure.Reason, "takes more than the 50000 bytes of memory that are allowed");
  EXPECT_TRUE(failure.ChunkPath.starts_with("MeshSegmentSet/MeshSegment[0]/LayerSet"))
      << failure.ChunkPath;
  EXPECT_GT(failure.Offset.value_or(0), 42U);
  EXPECT_LT(failure.Offset.value_or(0), map.size());
}

TEST(MostMemory, HoldsForOneCallOnly) {
  const Bytes map = MapOfLines();
  EXPECT_FALSE(ReadQen(SpanOf(map), WithMemory(50'000)));
  EXPECT_TRUE(ReadQen(SpanOf(map)));
  EXPECT_TRUE(CQen().Read(map.data(), map.size()));
}

/// The same text from a path, bytes and a file.
class XmlOptions : public ::testing::Test {
 protected:
  template <class Check>
  void FromEverySource(const XmlReadOptions& options, Check&& check) {
    const Bytes bytes(m_text);
    const TempFile path(bytes);
    CMemFile file(bytes.vector());
    for (const auto& result : {ReadQenXml(path.Path(), options), ReadQenXml(SpanOf(bytes), options),
                               ReadQenXml(file, options), ParseQenXml(m_text, options)})
      check(result);
  }
  void ExpectFailure(const XmlReadOptions& options, FailureKind kind) {
    FromEverySource(options, [&](const auto& result) {
      ASSERT_FALSE(result);
      EXPECT_EQ(result.GetFailure().Kind, kind) << result.GetFailure().Describe();
    });
  }

  std::string m_text = "<Qen><QenFileInfo><Revision>9</Revision></QenFileInfo></Qen>" +
                       std::string(200'000, ' ') + "<!-- end -->";
};

TEST_F(XmlOptions, TextThatIsNotTooLongIsRead) {
  XmlReadOptions options;
  options.MostBytes = m_text.size();
  FromEverySource(options, [](const auto& result) {
    ASSERT_TRUE(result) << result.GetFailure().Describe();
    EXPECT_EQ(result->Revision, 9U);
  });
}

TEST_F(XmlOptions, ALongerTextIsRefusedEvenWhereTheRestIsBlank) {
  XmlReadOptions options;
  options.MostBytes = m_text.size() - 1;
  ExpectFailure(options, FailureKind::kTooLarge);
  options.MostBytes = 100;
  ExpectFailure(options, FailureKind::kTooLarge);
}

TEST_F(XmlOptions, ReadingStopsWhenItIsAskedTo) {
  std::stop_source source;
  source.request_stop();
  XmlReadOptions options;
  options.Stop = source.get_token();
  ExpectFailure(options, FailureKind::kCancelled);
}

TEST_F(XmlOptions, ProgressTellsHowFarReadingHasCome) {
  const TempFile path((Bytes(m_text)));
  std::vector<std::uint64_t> told;
  XmlReadOptions options;
  options.Progress = [&](std::uint64_t done, std::uint64_t all) {
    EXPECT_EQ(all, m_text.size());
    told.push_back(done);
  };
  ASSERT_TRUE(ReadQenXml(path.Path(), options));
  ASSERT_GT(told.size(), 1U);
  EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
  EXPECT_EQ(told.back(), m_text.size());
}

TEST(OrThrow, GivesTheObjectOrThrowsTheFailure) {
  EXPECT_EQ(ReadQen(SpanOf(QenKind::DocumentBytes())).OrThrow()->Revision, 0x01020304U);
  try {
    static_cast<void>(ReadQen("/nonexistent/a.qen").OrThrow());
    FAIL();
  } catch (const CFailureException& error) {
    EXPECT_STREQ(error.what(), "/nonexistent/a.qen: No such file or directory");
    EXPECT_EQ(error.GetFailure().Kind, FailureKind::kCannotOpen);
  }
  CQen without_map_data;
  EXPECT_THROW(SaveQen(without_map_data, "/nonexistent/a.qen").OrThrow(), std::runtime_error);
}

}  // namespace
}  // namespace qenzor::testing
