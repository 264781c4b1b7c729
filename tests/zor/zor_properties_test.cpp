// What holds for all draw data, tried on generated ones.

#include <gtest/gtest.h>

#include <functional>

#include "tests/support/zor_bytes.h"
#include "tests/support/zor_generator.h"
#include "tests/support/zor_key_order.h"
#include "tests/support/zor_xml.h"

namespace qenzor::testing {
namespace {

constexpr std::uint64_t kSeeds = 300;

/// The z-ids of a document in the order in which it writes them.
Keys KeysOf(const CZor& doc) {
  Keys keys;
  if (doc.DrawData.DrawAtterSet != nullptr)
    for (const CDrawAtter* atter : doc.DrawData.DrawAtterSet->GetElems())
      keys.push_back(atter->ZId);
  return keys;
}

Keys Walked(Keys keys, std::initializer_list<std::uint32_t> bucket_counts) {
  for (const std::uint32_t buckets : bucket_counts) keys = ReferenceWalk(keys, buckets);
  return keys;
}

Bytes Damaged(Bytes bytes, ZorGenerator& random) {
  bytes[random.Number(bytes.size())] = static_cast<std::uint8_t>(random.Number(256));
  return bytes;
}

class ZorProperties : public ::testing::Test {
 protected:
  /// Calls expect with what generated documents write.
  static void ForEachSeed(ZorGenerator::Zids zids,
                          const std::function<void(const Bytes&)>& expect) {
    for (std::uint64_t seed = 0; seed < kSeeds && !HasFailure(); ++seed) {
      SCOPED_TRACE("seed " + std::to_string(seed));
      expect(WrittenZor(*ToZor(*ZorGenerator(seed, zids).Edit())));
    }
  }
};

TEST_F(ZorProperties, WithoutSharedBucketsReadingAndWritingKeepsEveryByte) {
  ForEachSeed(ZorGenerator::Zids::kOneInABucket, [](const Bytes& bytes) {
    const auto memory = ZorFromMemory(bytes);
    ASSERT_NE(memory, nullptr);
    EXPECT_TRUE(WrittenZor(*memory) == bytes);
    const auto file = ZorFromFile(bytes);
    ASSERT_NE(file, nullptr);
    EXPECT_TRUE(WrittenZor(*file) == bytes);
  });
}

TEST_F(ZorProperties, ReadingAndWritingTurnsBucketsRoundAndTheNextTimeBack) {
  int turned = 0;
  ForEachSeed(ZorGenerator::Zids::kAny, [&](const Bytes& bytes) {
    const auto doc = ZorFromMemory(bytes);
    ASSERT_NE(doc, nullptr);
    const Bytes once = WrittenZor(*doc);
    EXPECT_EQ(once.size(), bytes.size());
    const auto again = ZorFromMemory(once);
    ASSERT_NE(again, nullptr);
    EXPECT_TRUE(WrittenZor(*again) == bytes);
    EXPECT_EQ(KeysOf(*doc), Walked(KeysOf(*again), {kChunkBuckets}));
    turned += once == bytes ? 0 : 1;
  });
  EXPECT_GT(turned, 0);
}

TEST_F(ZorProperties, BothPathsAgree) {
  ForEachSeed(ZorGenerator::Zids::kAny, [](const Bytes& bytes) {
    const auto memory = ZorFromMemory(bytes);
    const auto file = ZorFromFile(bytes);
    ASSERT_NE(memory, nullptr);
    ASSERT_NE(file, nullptr);
    EXPECT_TRUE(WrittenZor(*file) == WrittenZor(*memory));
  });
}

TEST_F(ZorProperties, CloneIsEqualButForBucketsTurnedRound) {
  ForEachSeed(ZorGenerator::Zids::kAny, [](const Bytes& bytes) {
    const auto doc = ZorFromMemory(bytes);
    const std::unique_ptr<CZor> clone(doc->Clone());
    ASSERT_NE(clone, nullptr);
    // Reading turned them round, the copy turns them back.
    EXPECT_TRUE(WrittenZor(*clone) == bytes);
    const std::unique_ptr<CZor> second(clone->Clone());
    EXPECT_TRUE(WrittenZor(*second) == WrittenZor(*doc));
  });
}

TEST_F(ZorProperties, WithoutSharedBucketsTheEditFormKeepsEveryByte) {
  ForEachSeed(ZorGenerator::Zids::kOneInABucket, [](const Bytes& bytes) {
    CZorEdit edit;
    edit.ZorDataToEditData(ZorFromMemory(bytes).get());
    const auto doc = ToZor(edit);
    ASSERT_NE(doc, nullptr);
    EXPECT_EQ(doc->DrawData.GetHeader().DataSize, 0U);
    EXPECT_TRUE(WrittenZor(*doc) == bytes);
  });
}

TEST_F(ZorProperties, TheEditFormPassesKeysThroughItsOwnBuckets) {
  ForEachSeed(ZorGenerator::Zids::kAny, [](const Bytes& bytes) {
    const auto doc = ZorFromMemory(bytes);
    CZorEdit edit;
    edit.ZorDataToEditData(doc.get());
    const auto back = ToZor(edit);
    EXPECT_EQ(WrittenZor(*back).size(), bytes.size());
    EXPECT_EQ(KeysOf(*back), Walked(KeysOf(*doc), {kEditBuckets, kChunkBuckets, kChunkBuckets}));
  });
}

TEST_F(ZorProperties, WithoutSharedBucketsXmlKeepsEveryByte) {
  const TempFile file;
  ForEachSeed(ZorGenerator::Zids::kOneInABucket, [&](const Bytes& bytes) {
    CZorTextConverter converter;
    ASSERT_TRUE(converter.ConvertChunkToText(file.Path(), *ZorFromMemory(bytes), 0));
    const std::unique_ptr<CZorEdit> edit(converter.ConvertTextToZorEdit(file.Path()));
    ASSERT_NE(edit, nullptr);
    EXPECT_TRUE(WrittenZor(*ToZor(*edit)) == bytes);
  });
}

TEST_F(ZorProperties, XmlPassesKeysThroughTheBucketsOfTheEditFormTwice) {
  const TempFile file;
  ForEachSeed(ZorGenerator::Zids::kAny, [&](const Bytes& bytes) {
    const auto doc = ZorFromMemory(bytes);
    CZorTextConverter converter;
    ASSERT_TRUE(converter.ConvertChunkToText(file.Path(), *doc, 0));
    const std::unique_ptr<CZorEdit> edit(converter.ConvertTextToZorEdit(file.Path()));
    ASSERT_NE(edit, nullptr);
    EXPECT_EQ(KeysOf(*ToZor(*edit)),
              Walked(KeysOf(*doc), {kEditBuckets, kEditBuckets, kChunkBuckets, kChunkBuckets}));
  });
}

TEST_F(ZorProperties, XmlThatWasReadIsWrittenTheSame) {
  const TempFile first;
  const TempFile second;
  ForEachSeed(ZorGenerator::Zids::kOneInABucket, [&](const Bytes& bytes) {
    CZorTextConverter converter;
    ASSERT_TRUE(converter.ConvertChunkToText(first.Path(), *ZorFromMemory(bytes), 0));
    const std::unique_ptr<CZorEdit> edit(converter.ConvertTextToZorEdit(first.Path()));
    ASSERT_NE(edit, nullptr);
    ASSERT_TRUE(converter.ConvertChunkToText(second.Path(), *ToZor(*edit), 0));
    EXPECT_TRUE(first.Text() == second.Text());
  });
}

TEST_F(ZorProperties, WhatMemoryTakesAFileTakesToo) {
  // Not the other way round: a file skips the data of unknown chunks, which memory looks into.
  int taken = 0;
  ForEachSeed(ZorGenerator::Zids::kAny, [&](const Bytes& bytes) {
    ZorGenerator random(bytes.size());
    for (int i = 0; i < 20; ++i) {
      const Bytes damaged = Damaged(bytes, random);
      const auto memory = ZorFromMemory(damaged);
      if (memory == nullptr) continue;
      ++taken;
      const auto file = ZorFromFile(damaged);
      ASSERT_NE(file, nullptr);
      EXPECT_TRUE(WrittenZor(*file) == WrittenZor(*memory));
    }
  });
  EXPECT_GT(taken, 0);
}

TEST_F(ZorProperties, WhatIsDamagedSettlesInTwoOrders) {
  ForEachSeed(ZorGenerator::Zids::kAny, [](const Bytes& bytes) {
    ZorGenerator random(bytes.size());
    for (int i = 0; i < 20; ++i) {
      const auto doc = ZorFromMemory(Damaged(bytes, random));
      if (doc == nullptr) continue;
      const Bytes once = WrittenZor(*doc);
      const auto second = ZorFromMemory(once);
      ASSERT_NE(second, nullptr);
      const auto third = ZorFromMemory(WrittenZor(*second));
      ASSERT_NE(third, nullptr);
      EXPECT_TRUE(WrittenZor(*third) == once);
    }
  });
}

}  // namespace
}  // namespace qenzor::testing
