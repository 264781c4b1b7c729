#include <gtest/gtest.h>

#include <memory>

#include "qenzor/catalogue.h"
#include "qenzor/core/unknown_chunk.h"
#include "tests/support/every_class.h"

namespace qenzor::testing {
namespace {

template <class Chunk>
class EqualOfEveryClass : public ::testing::Test {};
TYPED_TEST_SUITE(EqualOfEveryClass, EveryClass, ClassNames);

TYPED_TEST(EqualOfEveryClass, HoldsForNewOnesAndTheirCopies) {
  const TypeParam chunk;
  EXPECT_TRUE(chunk == TypeParam());
  EXPECT_TRUE(*CloneOf(chunk) == chunk);
  const typename TypeParam::EditClass edit;
  EXPECT_TRUE(edit == typename TypeParam::EditClass());
  EXPECT_TRUE(*CloneOf(edit) == edit);
}

TYPED_TEST(EqualOfEveryClass, FailsForAnotherClass) {
  const TypeParam chunk;
  ForEachClass([&]<class Row>(Row) {
    const typename Row::Chunk other;
    EXPECT_EQ(chunk == other, (std::is_same_v<typename Row::Chunk, TypeParam>)) << Row::kTag;
  });
}

TEST(Equal, LooksAtValuesTextsArraysAndRecords) {
  CPolyObj a;
  CPolyObj b;
  a.Height = 1;
  EXPECT_FALSE(a == b);
  b.Height = 1;
  EXPECT_TRUE(a == b);
  a.Pt.Reset(2);
  EXPECT_FALSE(a == b);
  b.Pt.Reset(2);
  EXPECT_TRUE(a == b);
  b.Pt[1].y = 4;
  EXPECT_FALSE(a == b);

  CUrlInfo url;
  url.Text = u"x";
  EXPECT_FALSE(url == CUrlInfo());

  CMarkDataEdit mark;
  mark.MarkElem.push_back(std::make_unique<CMarkElemEdit>());
  const auto copy = CloneOf(mark);
  EXPECT_TRUE(mark == *copy);
  copy->MarkElem[0]->Pt.push_back({});
  EXPECT_FALSE(mark == *copy);

  CLineDrawInfo info;
  info.ScData.Reset(1);
  const auto same = CloneOf(info);
  EXPECT_TRUE(info == *same);
  same->ScData[0].Extension = 1;
  EXPECT_FALSE(info == *same);
}

TEST(Equal, LooksIntoSubChunksAndSets) {
  CZIdObjEdit a;
  EXPECT_TRUE(a == CZIdObjEdit());
  a.ObjSet = std::make_unique<CObjSetEdit>();
  EXPECT_FALSE(a == CZIdObjEdit());
  auto& line = a.ObjSet->Append(std::make_unique<CLineObjEdit>());
  const auto b = CloneOf(a);
  const auto chunk = ToChunk(a);
  EXPECT_TRUE(a == *b);
  EXPECT_TRUE(*chunk == *ToChunk(*b));
  line.Pt.push_back({1, 2});
  EXPECT_FALSE(a == *b);
  EXPECT_FALSE(*ToChunk(a) == *chunk);
}

TEST(Equal, LooksAtWhatAKeyedSetHoldsUnderEachKey) {
  // 20 and 3 share a bucket of the edit form, whose order is that of adding.
  const auto set_of = [](std::initializer_list<std::uint64_t> keys, CDrawAtterSetEdit& set) {
    for (const std::uint64_t key : keys) {
      auto elem = std::make_unique<CDrawAtterEdit>();
      elem->ZId = key;
      set.Insert(std::move(elem));
    }
  };
  CDrawAtterSetEdit a;
  CDrawAtterSetEdit b;
  set_of({3, 20}, a);
  set_of({20, 3}, b);
  EXPECT_TRUE(a == b);
  EXPECT_TRUE(*ToChunk(a) == *ToChunk(b));
  b.GetElem(3)->DrawInfoIdxSet = std::make_unique<CDrawInfoIdxSetEdit>();
  EXPECT_FALSE(a == b);
  EXPECT_FALSE(*ToChunk(a) == *ToChunk(b));
}

TEST(Equal, KnowsUnknownChunksByTheirIds) {
  CUnKnownChunk a;
  CUnKnownChunk b;
  EXPECT_TRUE(a == b);
  b.SetHeader({28, 0});
  EXPECT_FALSE(a == b);
  EXPECT_FALSE(a == CLineObj());
}

TEST(Equal, ComparesDocumentsWithTheirFileInfos) {
  CQen map;
  CQen other;
  EXPECT_TRUE(map == other);
  static_cast<QenFileInfo&>(map) = QenFileInfo::Default();
  EXPECT_FALSE(map == other);
  EXPECT_TRUE(*CloneOf(map) == map);
  EXPECT_TRUE(*ToEdit(map) == *ToEdit(*ToDocument(*ToEdit(map))));
  other.DeepCopy(&map);
  other.MapData = std::make_unique<CQenMapData>();
  EXPECT_FALSE(map == other);

  CZor style;
  CZor plain;
  EXPECT_TRUE(style == plain);
  style.DrawData.MarkDataSet = std::make_unique<CMarkDataSet>();
  EXPECT_FALSE(style == plain);
  EXPECT_TRUE(*ToDocument(*ToEdit(style)) == style);
}

}  // namespace
}  // namespace qenzor::testing
