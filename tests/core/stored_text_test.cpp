#include "qenzor/core/stored_text.h"

#include <gtest/gtest.h>

#include "tests/support/bytes.h"

namespace qenzor::testing {
namespace {

CStringW Decoded(const Bytes& bytes) {
  CStringW text = u"before";
  DecodeStoredText(bytes.data(), bytes.size(), text);
  return text;
}

TEST(StoredText, LittleEndianBehindItsMark) {
  EXPECT_EQ(Decoded(Bytes{0xFF, 0xFE, 0x41, 0x00, 0x30, 0x57}), u"A\u5730");
}

TEST(StoredText, BigEndianBehindTheOtherMark) {
  EXPECT_EQ(Decoded(Bytes{0xFE, 0xFF, 0x00, 0x41, 0x57, 0x30}), u"A\u5730");
}

TEST(StoredText, AnyOtherMarkGivesAnEmptyText) {
  EXPECT_EQ(Decoded(Bytes{0x41, 0x00, 0x42, 0x00}), u"");
  EXPECT_EQ(Decoded(Bytes{0xEF, 0xBB, 0xBF, 0x41}), u"");
}

TEST(StoredText, FewerThanTwoBytesGiveAnEmptyText) {
  EXPECT_EQ(Decoded({}), u"");
  EXPECT_EQ(Decoded(Bytes{0xFF}), u"");
}

TEST(StoredText, TheMarkAloneGivesAnEmptyText) {
  EXPECT_EQ(Decoded(Bytes{0xFF, 0xFE}), u"");
  EXPECT_EQ(Decoded(Bytes{0xFE, 0xFF}), u"");
}

TEST(StoredText, EndsAtTheFirstZeroUnit) {
  EXPECT_EQ(Decoded(Bytes{0xFF, 0xFE, 0x41, 0x00, 0x00, 0x00, 0x42, 0x00}), u"A");
  EXPECT_EQ(Decoded(Bytes{0xFE, 0xFF, 0x00, 0x41, 0x00, 0x00, 0x00, 0x42}), u"A");
  EXPECT_EQ(Decoded(Bytes{0xFF, 0xFE, 0x00, 0x00}), u"");
}

TEST(StoredText, AZeroByteIsNoZeroUnit) {
  EXPECT_EQ(Decoded(Bytes{0xFF, 0xFE, 0x00, 0x30, 0x41, 0x00}), u"\u3000A");
}

TEST(StoredText, AnOddLastByteIsNoUnit) {
  EXPECT_EQ(Decoded(Bytes{0xFF, 0xFE, 0x41, 0x00, 0x42}), u"A");
}

TEST(StoredText, KeepsUnpairedSurrogates) {
  EXPECT_EQ(Decoded(Bytes{0xFF, 0xFE, 0x00, 0xD8, 0x41, 0x00}), (CStringW{0xD800, u'A'}));
}

TEST(StoredText, BytesOfATextCountItsMark) {
  EXPECT_EQ(StoredTextBytes(0), 0U);
  EXPECT_EQ(StoredTextBytes(1), 4U);
  EXPECT_EQ(StoredTextBytes(10), 22U);
  EXPECT_EQ(StoredTextBytes(kMaxStoredTextUnits), 65534U);
}

}  // namespace
}  // namespace qenzor::testing
