// What diff tells of two documents makes the one of the other, in both directions.

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <set>

#include "qenzor/qen/line_obj.h"
#include "qenzor/qen_document.h"
#include "qenzor/work/apply.h"
#include "qenzor/work/change_document.h"
#include "qenzor/work/diff.h"
#include "qenzor/zor_document.h"
#include "tests/support/document_kinds.h"
#include "tests/support/one_object.h"
#include "tests/support/qen_generator.h"
#include "tests/support/zor_generator.h"

namespace qenzor::testing {
namespace {

template <class Document>
Bytes Stored(Document& document) {
  CMemFile file;
  EXPECT_TRUE(document.Write(&file));
  return Bytes(file.GetBytes());
}

std::unique_ptr<CQen> Map(const Bytes& bytes) {
  auto map = ReadQen(bytes.vector());
  EXPECT_TRUE(map);
  return map.Take();
}

template <class Document>
ChangeDocument ChangesOf(const Document& before, const Document& after) {
  ChangeDocument changes;
  changes.Document = std::is_same_v<Document, CQen> ? ClassFamily::kQen : ClassFamily::kZor;
  EXPECT_TRUE(Diff(before, after, [&](const Change& change) {
    changes.Changes.push_back(change);
    return true;
  }));
  return changes;
}

template <class Document>
void ExpectApplied(Document& document, const ChangeDocument& changes, const Bytes& expected) {
  const auto report = Apply(document, changes);
  ASSERT_TRUE(report) << report.GetFailure().Describe();
  for (const Misfit& misfit : report->Misfits)
    ADD_FAILURE() << misfit.Reason << ": " << RenderChange(changes.Changes[misfit.Index]);
  EXPECT_EQ(report->Applied, changes.Changes.size());
  EXPECT_TRUE(Stored(document) == expected) << RenderChanges(changes);
}

/// Diff, the change document as text, apply, and the way back.
template <class Document>
void ExpectChangedBothWays(Document& before, Document& after) {
  const Bytes before_bytes = Stored(before);
  const Bytes after_bytes = Stored(after);
  const std::string text = RenderChanges(ChangesOf(before, after));
  EXPECT_EQ(text.find("\"op\"") == text.npos, before_bytes == after_bytes);
  auto changes = ParseChanges(text);
  ASSERT_TRUE(changes) << changes.GetFailure().Describe() << text;
  ExpectApplied(before, *changes, after_bytes);
  ASSERT_TRUE(ReverseChanges(*changes));
  ExpectApplied(before, *changes, before_bytes);
}

/// Maps made of few numbers and few objects, so that two have much in common, in another order,
/// more than once, or not at all.
class CSmallMaps {
 public:
  explicit CSmallMaps(std::uint64_t seed) : m_random(seed) {}

  Bytes Document() {
    return QenInfoBytes().Add(Chunk(id::kQenMapData, Maybe([&] { return Segments(); })));
  }
  Bytes ObjectSet(std::uint32_t longest) {
    return Set(id::kObjSet, longest, [&] { return Object(); });
  }
  std::uint32_t Number(std::uint32_t limit) {
    return static_cast<std::uint32_t>(m_random() % limit);
  }

 private:
  template <class Make>
  Bytes Maybe(Make make) {
    return Number(5) == 0 ? Bytes() : make();
  }
  template <class Make>
  Bytes Set(std::uint32_t set_id, std::uint32_t longest, Make make) {
    std::vector<Bytes> elements(Number(longest + 1));
    for (Bytes& element : elements) element = make();
    return SetChunk(set_id, elements);
  }
  Bytes Segments() {
    return Set(id::kMeshSegmentSet, 3, [&] { return SegmentBytes(Number(3), Layers()); });
  }
  Bytes Layers() {
    return Maybe(
        [&] { return Set(id::kLayerSet, 3, [&] { return LayerBytes(Number(3), ZIds()); }); });
  }
  Bytes ZIds() {
    return Maybe([&] {
      return Set(id::kZIdObjSet, 3, [&] {
        return ZIdBytes(Number(2) + 0xFFFFFFFFFFFFFFFEU, Maybe([&] { return ObjectSet(5); }));
      });
    });
  }
  Bytes Object() {
    const Bytes links = Number(4) == 0 ? InfoSetBytes(u"http://a.b/") : Bytes();
    switch (Number(4)) {
      case 0:
        return LabelBytes(Number(2) == 0 ? u"Bern" : u"Basel", links);
      case 1:
        return RasMMBytes({static_cast<std::int32_t>(Number(2)), 5}, links);
      default:
        return LineBytes({{static_cast<std::int32_t>(Number(3)), 1}, {2, 2}}, links);
    }
  }

  std::mt19937_64 m_random;
};

TEST(DiffAndApply, LeadFromAnySmallMapToAnyOtherAndBack) {
  for (std::uint64_t seed = 0; seed < 400; ++seed) {
    SCOPED_TRACE(seed);
    CSmallMaps maps(seed);
    const auto before = Map(maps.Document());
    const auto after = Map(maps.Document());
    ExpectChangedBothWays(*before, *after);
    if (HasFailure()) return;
  }
}

TEST(DiffAndApply, LeadFromAnyMapToAnyOtherAndBack) {
  for (std::uint64_t seed = 0; seed < 20; ++seed) {
    SCOPED_TRACE(seed);
    const auto before = Map(QenGenerator(seed).Document());
    const auto after = Map(QenGenerator(seed + 1000).Document());
    ExpectChangedBothWays(*before, *after);
    if (HasFailure()) return;
  }
}

TEST(DiffAndApply, LeadFromAnyDrawDataToAnyOtherAndBack) {
  for (std::uint64_t seed = 0; seed < 40; ++seed) {
    SCOPED_TRACE(seed);
    const auto before = ToDocument(*ZorGenerator(seed, ZorGenerator::Zids::kOneInABucket).Edit());
    const auto after =
        ToDocument(*ZorGenerator(seed + 1000, ZorGenerator::Zids::kOneInABucket).Edit());
    ExpectChangedBothWays(*before, *after);
    if (HasFailure()) return;
  }
}

TEST(Diff, TellsNothingOfEqualDocuments) {
  for (std::uint64_t seed = 0; seed < 10; ++seed) {
    const Bytes bytes = QenGenerator(seed).Document();
    EXPECT_EQ(ChangesOf(*Map(bytes), *Map(bytes)).Changes.size(), 0U);
    const auto edit = ZorGenerator(seed).Edit();
    const auto drawing = ToDocument(*edit);
    EXPECT_EQ(ChangesOf(*drawing, *CloneOf(*drawing)).Changes.size(), 0U);
  }
}

TEST(Diff, TellsBitsOfFloatsApart) {
  const std::vector<std::uint32_t> bits{0x00000000, 0x80000000, 0x7FC00000, 0x7FC00001,
                                        0xFF800000, 0x7F800000, 0x3DCCCCCD, 0x00000001};
  const auto label = [](std::uint32_t angle) {
    return QenInfoBytes().Add(MapDataBytes({Chunk(
        id::kCmbLblObj, Bytes().U16(1).U32(angle).I16(3).I16(4).F32(0.25F).F32(-2).Text(u"A"))}));
  };
  for (const std::uint32_t a : bits)
    for (const std::uint32_t b : bits) {
      const auto before = Map(label(a));
      const auto after = Map(label(b));
      EXPECT_EQ(ChangesOf(*before, *after).Changes.size(), a == b ? 0U : 1U);
      ExpectChangedBothWays(*before, *after);
    }
}

TEST(DiffAndApply, KeepHalvesOfSurrogatePairs) {
  const auto before = Map(QenInfoBytes().Add(MapDataBytes({LabelBytes(u"A")})));
  const auto after = Map(
      QenInfoBytes().Add(MapDataBytes({LabelBytes(std::u16string{u'\xD800', u'x', u'\xDC00'})})));
  ExpectChangedBothWays(*before, *after);
}

/// By the whole table of the lengths of common subsequences.
std::size_t LongestCommon(const std::vector<Bytes>& a, const std::vector<Bytes>& b) {
  std::vector<std::vector<std::size_t>> length(a.size() + 1,
                                               std::vector<std::size_t>(b.size() + 1));
  for (std::size_t i = 1; i <= a.size(); ++i)
    for (std::size_t j = 1; j <= b.size(); ++j)
      length[i][j] = a[i - 1] == b[j - 1] ? length[i - 1][j - 1] + 1
                                          : std::max(length[i - 1][j], length[i][j - 1]);
  return length[a.size()][b.size()];
}

TEST(Diff, KeepsAsManyObjectsInPlaceAsCanBe) {
  for (std::uint64_t seed = 0; seed < 300; ++seed) {
    std::mt19937_64 random(seed);
    const auto objects = [&] {
      std::vector<Bytes> row(random() % 12);
      for (Bytes& object : row)
        object = LineBytes({{static_cast<std::int32_t>(random() % 4), 0}, {9, 9}});
      return row;
    };
    const std::vector<Bytes> a = objects();
    const std::vector<Bytes> b = objects();
    const auto before = Map(QenInfoBytes().Add(MapDataBytes(a)));
    const auto after = Map(QenInfoBytes().Add(MapDataBytes(b)));
    std::set<std::uint64_t> touched;
    for (const Change& change : ChangesOf(*before, *after).Changes)
      if (change.Kind != ChangeKind::kAdd) touched.insert(change.Place.back().Number);
    EXPECT_EQ(a.size() - touched.size(), LongestCommon(a, b)) << seed;
  }
}

TEST(Diff, TellsAnOrderThatChangedAsAMove) {
  const Bytes first = LineBytes({{1, 1}, {2, 2}});
  const Bytes second = LabelBytes(u"A");
  const Bytes third = RasMMBytes({1, 2});
  const auto changes = ChangesOf(*Map(QenInfoBytes().Add(MapDataBytes({first, second, third}))),
                                 *Map(QenInfoBytes().Add(MapDataBytes({second, third, first}))));
  EXPECT_EQ(RenderChanges(changes),
            R"({"format":"qenzor-changes","version":1,"document":"qen","changes":[)"
            "\n"
            R"({"op":"move","segment":1,"layer":2,"zid":"7","index":0,"to":2})"
            "\n]}\n");
}

TEST(Diff, MatchesFarApartInLongListsOfWhichLittleChanged) {
  std::vector<Bytes> objects;
  for (std::int32_t i = 0; i < 30000; ++i) objects.push_back(LineBytes({{i, 0}, {i, 1}}));
  const auto before = Map(QenInfoBytes().Add(MapDataBytes(objects)));
  objects.erase(objects.begin() + 100);
  objects.insert(objects.begin() + 20000, LabelBytes(u"new"));
  std::swap(objects[500], objects[25000]);
  const auto after = Map(QenInfoBytes().Add(MapDataBytes(objects)));
  EXPECT_EQ(ChangesOf(*before, *after).Changes.size(), 4U);
  ExpectChangedBothWays(*before, *after);
}

TEST(Diff, MatchesListsThatDifferInMoreThanCanBeMatchedExactly) {
  std::vector<Bytes> objects;
  for (std::int32_t i = 0; i < 4400; ++i) objects.push_back(LineBytes({{i, 0}, {i, 1}}));
  const auto before = Map(QenInfoBytes().Add(MapDataBytes(objects)));
  for (std::size_t i = 0; i < objects.size(); i += 2)
    objects[i] = LabelBytes(u"label " + std::u16string(1, static_cast<char16_t>(0x4E00 + i)));
  const auto after = Map(QenInfoBytes().Add(MapDataBytes(objects)));
  EXPECT_EQ(ChangesOf(*before, *after).Changes.size(), 4400U);
  ExpectChangedBothWays(*before, *after);
}

TEST(Diff, EndsWhenItsSinkHasHadEnough) {
  const auto before = Map(QenGenerator(1).Document());
  const auto after = Map(QenGenerator(2).Document());
  int count = 0;
  EXPECT_TRUE(Diff(*before, *after, [&](const Change&) { return ++count < 2; }));
  EXPECT_EQ(count, 2);
}

TEST(Diff, TellsOnlyOfObjectsThatPassTheFilters) {
  const auto before =
      Map(QenInfoBytes().Add(MapDataBytes({LineBytes({{1, 1}}), LabelBytes(u"A")})));
  Bytes other = QenInfoBytes().Add(MapDataBytes({LineBytes({{1, 2}}), LabelBytes(u"B")}));
  other[15] = 9;  // the revision
  const auto after = Map(other);
  const auto fields_told = [&](const char* name, const char* text) {
    DiffOptions options;
    EXPECT_TRUE(options.Filters.Add(name, text));
    std::string told;
    EXPECT_TRUE(Diff(
        *before, *after,
        [&](const Change& change) {
          told += change.Field + ' ';
          return true;
        },
        options));
    return told;
  };
  EXPECT_EQ(ChangesOf(*before, *after).Changes.size(), 3U);
  EXPECT_EQ(fields_told("objects", "label"), "Text ");
  EXPECT_EQ(fields_told("objects", "line"), "Pt ");
  EXPECT_EQ(fields_told("layer", "2"), "Pt Text ");
  EXPECT_EQ(fields_told("zid", "8"), "");
}

TEST(Apply, TellsOfWhatDoesNotFitAndCarriesOutTheRest) {
  const auto base =
      Map(QenInfoBytes().Add(MapDataBytes({LabelBytes(u"Bern"), LineBytes({{1, 1}})})));
  const auto changes = ParseChanges(R"({"format":"qenzor-changes","version":1,"document":"qen",
    "changes":[
      {"op":"set","segment":1,"layer":2,"zid":7,"index":0,"field":"Text","from":"Biel","to":"A"},
      {"op":"set","segment":1,"layer":2,"zid":7,"index":0,"field":"Angel","to":1},
      {"op":"delete","segment":1,"layer":9},
      {"op":"add","segment":1,"layer":2,"value":{"LayerNo":2}},
      {"op":"move","segment":1,"layer":2,"zid":7,"index":1,"to":5},
      {"op":"set","segment":1,"layer":2,"zid":7,"index":9,"field":"Text","to":"B"},
      {"op":"set","segment":1,"field":"MeshSegmentNo","to":3},
      {"op":"set","segment":1,"layer":2,"zid":7,"index":0,"field":"Text","to":"Basel"}]})");
  ASSERT_TRUE(changes) << changes.GetFailure().Describe();
  const auto report = Apply(*base, *changes);
  ASSERT_TRUE(report) << report.GetFailure().Describe();
  std::vector<std::size_t> misfits;
  for (const Misfit& misfit : report->Misfits) misfits.push_back(misfit.Index);
  EXPECT_EQ(misfits, (std::vector<std::size_t>{0, 1, 2, 3, 4, 5, 6}));
  EXPECT_EQ(report->Applied, 1U);
  EXPECT_EQ(Stored(*base),
            QenInfoBytes().Add(MapDataBytes({LabelBytes(u"Basel"), LineBytes({{1, 1}})})));
}

TEST(Apply, CarriesAChangeOfAllOutWhereverItFits) {
  const auto map_of = [](const Bytes& layers) {
    return QenInfoBytes().Add(Chunk(
        id::kQenMapData, SetChunk(id::kMeshSegmentSet,
                                  {SegmentBytes(1, layers), SegmentBytes(2, layers),
                                   SegmentBytes(3, SetChunk(id::kLayerSet, {LayerBytes(5)}))})));
  };
  const auto base = Map(map_of(SetChunk(id::kLayerSet, {LayerBytes(4), LayerBytes(5)})));
  const auto changes =
      ParseChanges(R"({"format":"qenzor-changes","version":1,"document":"qen","changes":[
        {"op":"delete","segment":"all","layer":4},{"op":"delete","segment":"all","layer":6}]})");
  ASSERT_TRUE(changes) << changes.GetFailure().Describe();
  const auto report = Apply(*base, *changes);
  ASSERT_TRUE(report);
  EXPECT_EQ(report->Applied, 1U);
  ASSERT_FALSE(report->Misfits.empty());
  EXPECT_EQ(report->Misfits.front().Index, 1U);
  EXPECT_EQ(Stored(*base), map_of(SetChunk(id::kLayerSet, {LayerBytes(5)})));
  EXPECT_FALSE(ReverseChanges(*changes));
}

TEST(Apply, RefusesTheOtherKindOfDocument) {
  ChangeDocument changes;
  changes.Document = ClassFamily::kZor;
  CQen map;
  EXPECT_FALSE(Apply(map, changes));
}

TEST(Apply, GivesUpAtValuesThatMakeNoSenseAndPointsAtThem) {
  const auto reason = [](const std::string& change) {
    const auto base = Map(QenInfoBytes().Add(MapDataBytes({LineBytes({{1, 1}})})));
    const auto changes = ParseChanges(
        R"({"format":"qenzor-changes","version":1,"document":"qen","changes":[)" + change + "]}");
    EXPECT_TRUE(changes) << changes.GetFailure().Describe();
    const auto report = Apply(*base, *changes);
    return report ? CString() : report.GetFailure().Describe();
  };
  const std::string place = R"("segment":1,"layer":2,"zid":7)";
  EXPECT_EQ(reason(R"({"op":"set",)" + place + R"(,"index":0,"field":"Pt","to":[[1,2],[3]]})"),
            "/changes/0/to/1: is no list of 2 integers");
  EXPECT_EQ(reason(R"({"op":"set","field":"Revision","to":4294967296})"),
            "/changes/0/to: is no integer from 0 to 4294967295");
  EXPECT_EQ(reason(R"({"op":"add",)" + place + R"(,"index":"end","value":{"class":"UrlInfo"}})"),
            "/changes/0/value/class: is no class that may stand here");
  EXPECT_EQ(
      reason(R"({"op":"add",)" + place + R"(,"index":1,"value":{"class":"LineObj","Points":[]}})"),
      "/changes/0/value/Points: is no field of this class");
  EXPECT_EQ(reason(R"({"op":"add","segment":4,"value":{"MeshSegmentNo":5}})"),
            "/changes/0/value: has another number than its place");
}

}  // namespace
}  // namespace qenzor::testing
