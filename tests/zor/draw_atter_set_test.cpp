// The draw attributes of a document and the order in which their set walks them.

#include "qenzor/zor/draw_atter_set.h"

#include <gtest/gtest.h>

#include "tests/support/chunk_io.h"
#include "tests/support/counted.h"
#include "tests/support/faulty_file.h"
#include "tests/support/qen_bytes.h"
#include "tests/support/zor_bytes.h"
#include "tests/support/zor_key_order.h"
#include "tests/support/zor_xml.h"

namespace qenzor::testing {
namespace {

constexpr std::uint64_t kHigh = 1ULL << 32U;  // the high half of a key does not choose the bucket

/// Draw attributes of these keys, each with its place in the list as its one index.
Bytes SetBytes(const Keys& keys, const std::vector<std::uint32_t>& indices) {
  std::vector<Bytes> elements;
  for (std::size_t i = 0; i < keys.size(); ++i)
    elements.push_back(AtterBytes(keys[i], {indices[i]}));
  return SetChunk(id::kDrawAtterSet, elements);
}

Bytes SetBytes(const Keys& keys) {
  return SetBytes(keys, std::vector<std::uint32_t>(keys.size(), 7));
}

Keys KeysOf(const CDrawAtterSet& set) {
  Keys keys;
  for (const CDrawAtter* atter : set.GetElems()) keys.push_back(atter->ZId);
  return keys;
}

Keys KeysOf(const CDrawAtterSetEdit& set) {
  Keys keys;
  for (const CDrawAtterEdit* atter : set.GetElems()) keys.push_back(atter->ZId);
  return keys;
}

std::unique_ptr<CDrawAtterSet> SetOf(const Keys& keys) {
  auto set = std::make_unique<CDrawAtterSet>();
  for (const std::uint64_t key : keys) {
    auto* atter = new CDrawAtter;
    atter->ZId = key;
    set->AddElem(0, atter);
  }
  return set;
}

std::unique_ptr<CDrawAtterSetEdit> EditOf(const Keys& keys) {
  auto set = std::make_unique<CDrawAtterSetEdit>();
  for (const std::uint64_t key : keys) {
    auto* atter = new CDrawAtterEdit;
    atter->ZId = key;
    set->AddElem(atter);
  }
  return set;
}

/// Keys of every kind: small, great, negative in their low half, and many that share a bucket.
Keys ManyKeys() {
  Keys keys;
  for (std::uint64_t i = 0; i < 400; ++i) {
    keys.push_back(i * 0x9E3779B97F4A7C15);
    keys.push_back(i % 7 + kHigh * i);
    keys.push_back(i % 5 + 8191 * i);
    keys.push_back(0xFFFFFFFF - 17 * i);
  }
  return keys;
}

TEST(DrawAtterSet, WalksTheBucketsOfItsKeysUpwards) {
  // Buckets 16807 k mod 8191: 0, 425, 850 and so on up to 8075 for 19, then 309 for 20.
  EXPECT_EQ(KeysOf(*SetOf({20, 19, 2, 1, 0})), (Keys{0, 20, 1, 2, 19}));
}

TEST(DrawAtterSet, WalksKeysOfOneBucketFromTheLatestToTheEarliest) {
  EXPECT_EQ(KeysOf(*SetOf({5, kHigh + 5, 5 + 8191})), (Keys{5 + 8191, kHigh + 5, 5}));
}

TEST(DrawAtterSet, TheOrderOfManyKeysIsThatOfTheReference) {
  const Keys keys = ManyKeys();
  EXPECT_EQ(KeysOf(*SetOf(keys)), ReferenceWalk(keys, kChunkBuckets));
}

TEST(DrawAtterSet, AKeyThatComesAgainKeepsItsPlace) {
  const Bytes bytes = SetBytes({5, kHigh + 5, 5}, {1, 2, 3});
  for (const auto& set : {FromMemory<CDrawAtterSet>(bytes), FromFile<CDrawAtterSet>(bytes)}) {
    ASSERT_NE(set, nullptr);
    EXPECT_EQ(set->GetElemCount(), 2U);
    EXPECT_EQ(Written(*set), SetBytes({kHigh + 5, 5}, {2, 3}));
  }
}

TEST(DrawAtterSet, OfTwoDrawAttributesWithOneZIdTheLaterIsRead) {
  const Bytes bytes = SetBytes({5, 5}, {1, 2});
  for (const auto& set : {FromMemory<CDrawAtterSet>(bytes), FromFile<CDrawAtterSet>(bytes)}) {
    ASSERT_NE(set, nullptr);
    EXPECT_EQ(set->GetElemCount(), 1U);
    EXPECT_EQ(set->GetElem(5)->DrawInfoIdxSet->DrawInfoIdx[0], 2U);
    EXPECT_EQ(Written(*set), SetBytes({5}, {2}));
  }
}

TEST(DrawAtterSet, WritingAReadSetTurnsTheKeysOfABucketRound) {
  const Bytes bytes = SetBytes({5, kHigh + 5, 2 * kHigh + 5});
  const Bytes turned = SetBytes({2 * kHigh + 5, kHigh + 5, 5});
  EXPECT_EQ(Written(*FromMemory<CDrawAtterSet>(bytes)), turned);
  EXPECT_EQ(Written(*FromFile<CDrawAtterSet>(turned)), bytes);
}

TEST(DrawAtterSet, CloneTurnsTheKeysOfABucketRound) {
  const auto set = SetOf({5, kHigh + 5});
  EXPECT_EQ(KeysOf(*ClonedFrom(*set)), (Keys{5, kHigh + 5}));
}

TEST(DrawAtterSet, TheKeysThatArriveAreCountedNotTheDeclared) {
  for (const std::uint32_t declared : {0U, 9U, 0xFFFFFFFFU}) {
    const Bytes bytes = Chunk(id::kDrawAtterSet, Bytes().U32(declared).Add(AtterBytes(5, {7})));
    for (const auto& set : {FromMemory<CDrawAtterSet>(bytes), FromFile<CDrawAtterSet>(bytes)}) {
      ASSERT_NE(set, nullptr) << declared;
      EXPECT_EQ(Written(*set), SetBytes({5}));
    }
  }
}

/// Tells the indices that elements are added with.
class IndexedSet : public CDrawAtterSet {
 public:
  std::vector<std::uint32_t> Indices;
  void AddElem(std::uint32_t index, CDrawAtter* elem) override {
    Indices.push_back(index);
    CDrawAtterSet::AddElem(index, elem);
  }
};

TEST(DrawAtterSet, ElementsAreAddedWithTheirPlacesAmongTheSubChunks) {
  const Bytes bytes = SetChunk(id::kDrawAtterSet, {AtterBytes(5, {1}), LineBytes({}),
                                                   AtterBytes(6, {2}), AtterBytes(7, {})});
  IndexedSet memory;
  ASSERT_TRUE(memory.Read(bytes.data(), bytes.size()));
  EXPECT_EQ(memory.Indices, (std::vector<std::uint32_t>{0, 2, 3}));
  CMemFile source(bytes.vector());
  IndexedSet file;
  ASSERT_TRUE(file.Read(&source));
  EXPECT_EQ(file.Indices, (std::vector<std::uint32_t>{0, 2, 3}));
}

TEST(DrawAtterSet, KeepsWhatItHasReadWhenTheFileThrows) {
  const Bytes bytes = SetBytes({1, 2, 3});
  for (std::uint32_t call = 0;; ++call) {
    ThrowingFile file(bytes, call);
    CDrawAtterSet set;
    try {
      ASSERT_TRUE(set.Read(&file));
      EXPECT_EQ(set.GetElemCount(), 3U);
      return;
    } catch (const ThrowingFile::Thrown&) {
      // The front of the set, then whole elements.
      const auto whole =
          file.GetPosition() < 12 ? 0 : (file.GetPosition() - 12) / AtterBytes(1, {7}).size();
      EXPECT_EQ(set.GetElemCount(), whole) << call;
    }
  }
}

TEST(DrawAtterSet, WithoutElementsHasFourBytes) {
  CDrawAtterSet set;
  EXPECT_EQ(Written(set), (Bytes{2, 0, 0, 0, 4, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(DrawAtterSetEdit, WalksItsSeventeenBucketsUpwards) {
  const Keys keys = ManyKeys();
  EXPECT_EQ(KeysOf(*EditOf(keys)), ReferenceWalk(keys, kEditBuckets));
  EXPECT_NE(ReferenceWalk(keys, kEditBuckets), ReferenceWalk(keys, kChunkBuckets));
}

TEST(DrawAtterSetEdit, AKeyThatComesAgainKeepsItsPlace) {
  // 5 and 22 share a bucket of seventeen.
  EXPECT_EQ(KeysOf(*EditOf({5, 22, 39, 22})), (Keys{39, 22, 5}));
}

TEST(DrawAtterSetEdit, AKeyThatWasTakenOutComesBackInFrontOfItsBucket) {
  const auto set = EditOf({5, 22, 39});
  std::unique_ptr<CDrawAtterEdit> taken(set->DelElem(5));
  ASSERT_NE(taken, nullptr);
  EXPECT_EQ(KeysOf(*set), (Keys{39, 22}));
  set->AddElem(taken.release());
  EXPECT_EQ(KeysOf(*set), (Keys{5, 39, 22}));
}

TEST(DrawAtterSetEdit, WhatDelElemTakesOutIsTheCallers) {
  auto set = std::make_unique<CDrawAtterSetEdit>();
  auto* atter = new Counted<CDrawAtterEdit>;
  atter->ZId = 5;
  set->AddElem(atter);
  std::unique_ptr<CDrawAtterEdit> taken(set->DelElem(5));
  EXPECT_EQ(taken.get(), atter);
  EXPECT_EQ(set->GetElemCount(), 0U);
  EXPECT_EQ(set->DelElem(5), nullptr);
  set.reset();
  EXPECT_EQ(Counted<CDrawAtterEdit>::Alive(), 1);
  taken.reset();
  EXPECT_EQ(Counted<CDrawAtterEdit>::Alive(), 0);
}

TEST(DrawAtterSetEdit, TheChunkGetsItsElementsInTheOrderOfTheEdit) {
  // All in one of the chunk's buckets, in three of the edit form's.
  const Keys keys = {5, kHigh + 5, 5 + 8191, kHigh + 5 + 8191, 5 + 2 * 8191};
  const auto edit = EditOf(keys);
  const Keys expected = ReferenceWalk(ReferenceWalk(keys, kEditBuckets), kChunkBuckets);
  EXPECT_EQ(KeysOf(*ToChunk<CDrawAtterSet>(*edit)), expected);
}

TEST(DrawAtterSetEdit, ManyKeysPassThroughBothOrders) {
  const auto set = SetOf(ManyKeys());
  CDrawAtterSetEdit edit;
  edit.ChunkDataToEditData(set.get());
  const Keys in_edit = ReferenceWalk(KeysOf(*set), kEditBuckets);
  EXPECT_EQ(KeysOf(edit), in_edit);
  const std::unique_ptr<CAbstractChunkEdit> clone(edit.Clone());
  EXPECT_EQ(KeysOf(static_cast<CDrawAtterSetEdit&>(*clone)), ReferenceWalk(in_edit, kEditBuckets));
  EXPECT_EQ(KeysOf(*ToChunk<CDrawAtterSet>(edit)), ReferenceWalk(in_edit, kChunkBuckets));
}

TEST(DrawAtterSetText, WritesTheChunksOrderAndNoKeyOfItsOwn) {
  const auto set = FromMemory<CDrawAtterSet>(SetBytes({2, 0, 1}, {7, 8, 9}));
  EXPECT_EQ(XmlElement("DrawAtterSet", set.get(), 2),
            "\t\t<DrawAtterSet>\r\n"
            "\t\t\t<DrawAtter>\r\n"
            "\t\t\t\t<ZId>0</ZId>\r\n"
            "\t\t\t\t<DrawInfoIdxSet>\r\n"
            "\t\t\t\t\t<DrawInfoIdx>8</DrawInfoIdx>\r\n"
            "\t\t\t\t</DrawInfoIdxSet>\r\n"
            "\t\t\t</DrawAtter>\r\n"
            "\t\t\t<DrawAtter>\r\n"
            "\t\t\t\t<ZId>1</ZId>\r\n"
            "\t\t\t\t<DrawInfoIdxSet>\r\n"
            "\t\t\t\t\t<DrawInfoIdx>9</DrawInfoIdx>\r\n"
            "\t\t\t\t</DrawInfoIdxSet>\r\n"
            "\t\t\t</DrawAtter>\r\n"
            "\t\t\t<DrawAtter>\r\n"
            "\t\t\t\t<ZId>2</ZId>\r\n"
            "\t\t\t\t<DrawInfoIdxSet>\r\n"
            "\t\t\t\t\t<DrawInfoIdx>7</DrawInfoIdx>\r\n"
            "\t\t\t\t</DrawInfoIdxSet>\r\n"
            "\t\t\t</DrawAtter>\r\n"
            "\t\t</DrawAtterSet>\r\n");
}

TEST(DrawAtterSetText, TheLaterOfTwoEqualZIdsWins) {
  const auto edit = ZorEditFromDrawDataXml(
      "<DrawAtterSet><DrawAtter><ZId>5</ZId></DrawAtter><DrawAtter><DrawInfoIdxSet>"
      "<DrawInfoIdx>3</DrawInfoIdx></DrawInfoIdxSet><ZId>5</ZId></DrawAtter></DrawAtterSet>");
  const CDrawAtterSetEdit& set = *edit->DrawData.DrawAtterSet;
  EXPECT_EQ(set.GetElemCount(), 1U);
  ASSERT_NE(set.GetElem(5), nullptr);
  EXPECT_EQ(set.GetElem(5)->DrawInfoIdxSet->DrawInfoIdx, (CList<std::uint32_t>{3}));
}

TEST(DrawAtterSetText, OtherElementsAreLeftOut) {
  const auto edit = ZorEditFromDrawDataXml(
      "<DrawAtterSet><ZId>5</ZId><drawatter><ZId>6</ZId></drawatter><MarkData/><SetElem/>"
      "<DrawAtter><ZId>7</ZId></DrawAtter></DrawAtterSet>");
  EXPECT_EQ(KeysOf(*edit->DrawData.DrawAtterSet), (Keys{7}));
}

}  // namespace
}  // namespace qenzor::testing
