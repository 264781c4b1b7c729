#include "qenzor/platform/numbers.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <string_view>

namespace qenzor {
namespace {

constexpr std::int32_t kInt32Max = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kInt32Min = std::numeric_limits<std::int32_t>::min();
constexpr std::uint32_t kUInt32Max = std::numeric_limits<std::uint32_t>::max();
constexpr std::uint64_t kUInt64Max = std::numeric_limits<std::uint64_t>::max();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

// The room is exactly the promised one, in its own heap block, so that tools see any byte too many.
template <std::size_t kRoom, class Number, class Format>
std::string Text(Format format, Number value) {
  const std::unique_ptr<char[]> out(new char[kRoom]);
  return {out.get(), format(out.get(), value)};
}
std::string Int32Text(std::int32_t v) { return Text<kInt32MaxLength>(FormatInt32, v); }
std::string UInt32Text(std::uint32_t v) { return Text<kUInt32MaxLength>(FormatUInt32, v); }
std::string UInt64Text(std::uint64_t v) { return Text<kUInt64MaxLength>(FormatUInt64, v); }
std::string Fixed10Text(double v) { return Text<kFixed10MaxLength>(FormatFixed10, v); }

std::string Printed(double value) {
  std::array<char, kFixed10MaxLength + 1> out{};
  std::snprintf(out.data(), out.size(), "%.10f", value);
  return out.data();
}

std::uint32_t Bits(float value) { return std::bit_cast<std::uint32_t>(value); }

TEST(ParseInt32, SkipsWhiteSpaceTakesOneSignAndStopsAtTheFirstOtherCharacter) {
  EXPECT_EQ(ParseInt32("0"), 0);
  EXPECT_EQ(ParseInt32(" \t\n\v\f\r42abc"), 42);
  EXPECT_EQ(ParseInt32("-17 5"), -17);
  EXPECT_EQ(ParseInt32("+8.9"), 8);
  EXPECT_EQ(ParseInt32("000000000000000012"), 12);
  EXPECT_EQ(ParseInt32("0x10"), 0);
  EXPECT_EQ(ParseInt32(std::string_view("1\0002", 3)), 1);
}

TEST(ParseInt32, TextWithoutDigitsIsZero) {
  for (const char* text : {"", " ", "-", "+", "--1", "+-1", "-+1", "- 1", "abc", ".5",
                           "\xA0"
                           "1"}) {
    EXPECT_EQ(ParseInt32(text), 0) << text;
  }
}

TEST(ParseInt32, OutOfRangeIsTheNearestLimit) {
  EXPECT_EQ(ParseInt32("2147483647"), kInt32Max);
  EXPECT_EQ(ParseInt32("2147483648"), kInt32Max);
  EXPECT_EQ(ParseInt32("-2147483648"), kInt32Min);
  EXPECT_EQ(ParseInt32("-2147483649"), kInt32Min);
  EXPECT_EQ(ParseInt32("4294967297"), kInt32Max);
  EXPECT_EQ(ParseInt32("99999999999999999999999"), kInt32Max);
  EXPECT_EQ(ParseInt32("-99999999999999999999999"), kInt32Min);
}

TEST(ParseInt32, ReadsNoFurtherThanItsText) {
  const std::string text = "12345";
  EXPECT_EQ(ParseInt32(std::string_view(text).substr(0, 3)), 123);
}

TEST(ParseUInt32, MinusNegatesWithWrapAround) {
  EXPECT_EQ(ParseUInt32("7"), 7U);
  EXPECT_EQ(ParseUInt32(" +7x"), 7U);
  EXPECT_EQ(ParseUInt32("-1"), kUInt32Max);
  EXPECT_EQ(ParseUInt32("-4294967295"), 1U);
  EXPECT_EQ(ParseUInt32("-0"), 0U);
  EXPECT_EQ(ParseUInt32("-"), 0U);
  EXPECT_EQ(ParseUInt32("--1"), 0U);
}

TEST(ParseUInt32, OutOfRangeIsTheMaximumWhateverTheSign) {
  EXPECT_EQ(ParseUInt32("4294967295"), kUInt32Max);
  EXPECT_EQ(ParseUInt32("4294967296"), kUInt32Max);
  EXPECT_EQ(ParseUInt32("-4294967296"), kUInt32Max);
  EXPECT_EQ(ParseUInt32("-99999999999999999999999"), kUInt32Max);
}

TEST(ParseUInt64, FollowsTheSameRulesInSixtyFourBits) {
  EXPECT_EQ(ParseUInt64("\n18446744073709551615!"), kUInt64Max);
  EXPECT_EQ(ParseUInt64("18446744073709551616"), kUInt64Max);
  EXPECT_EQ(ParseUInt64("-18446744073709551616"), kUInt64Max);
  EXPECT_EQ(ParseUInt64("-1"), kUInt64Max);
  EXPECT_EQ(ParseUInt64("-18446744073709551615"), 1U);
  EXPECT_EQ(ParseUInt64("4294967296"), 4294967296U);
  EXPECT_EQ(ParseUInt64("x"), 0U);
}

TEST(ParseFloat, TakesDecimalsAndExponents) {
  EXPECT_EQ(ParseFloat("1.5"), 1.5F);
  EXPECT_EQ(ParseFloat(" \t+2.25abc"), 2.25F);
  EXPECT_EQ(ParseFloat("-.5"), -0.5F);
  EXPECT_EQ(ParseFloat("5."), 5.0F);
  EXPECT_EQ(ParseFloat("1e3"), 1000.0F);
  EXPECT_EQ(ParseFloat("1E+3"), 1000.0F);
  EXPECT_EQ(ParseFloat("25e-2"), 0.25F);
  EXPECT_EQ(ParseFloat("1.2.3"), 1.2F);
}

TEST(ParseFloat, AnUnfinishedExponentIsTextBehindTheNumber) {
  EXPECT_EQ(ParseFloat("3e"), 3.0F);
  EXPECT_EQ(ParseFloat("3e+"), 3.0F);
  EXPECT_EQ(ParseFloat("3e-x"), 3.0F);
}

TEST(ParseFloat, TextWithoutDigitsIsZero) {
  for (const char* text : {"", " ", "-", ".", "-.", ".e5", "e5", "--1", "+-1", "-+1", "abc"}) {
    EXPECT_EQ(Bits(ParseFloat(text)), Bits(0.0F)) << text;
  }
}

TEST(ParseFloat, NamesAndHexadecimalFormsAreNoNumbers) {
  for (const char* text : {"inf", "-inf", "infinity", "nan", "-nan", "nan(1)", "0x1p3", "0x"}) {
    EXPECT_EQ(ParseFloat(text), 0.0F) << text;
  }
}

TEST(ParseFloat, ZeroKeepsItsSign) {
  EXPECT_EQ(Bits(ParseFloat("-0")), Bits(-0.0F));
  EXPECT_EQ(Bits(ParseFloat("0e99999999999")), Bits(0.0F));
}

// By way of a double this would be rounded twice, and the second time the wrong way.
TEST(ParseFloat, RoundsOnce) {
  EXPECT_EQ(Bits(ParseFloat("1.000000059604644775390625")), Bits(1.0F));
  EXPECT_EQ(Bits(ParseFloat("1.000000059604644775390626")), Bits(std::nextafter(1.0F, 2.0F)));
  EXPECT_EQ(Bits(ParseFloat("16777217.0000000001")), Bits(16777218.0F));
}

TEST(ParseFloat, OverflowIsInfinityWithItsSign) {
  EXPECT_EQ(ParseFloat("3.4028235e38"), std::numeric_limits<float>::max());
  EXPECT_EQ(ParseFloat("3.4028236e38"), kInfinity);
  EXPECT_EQ(ParseFloat("-1e39"), -kInfinity);
  EXPECT_EQ(ParseFloat("1e99999999999999999999999"), kInfinity);
  EXPECT_EQ(ParseFloat("-1" + std::string(60, '0') + "e+"), -kInfinity);
  EXPECT_EQ(ParseFloat("0." + std::string(60, '0') + "1e+200"), kInfinity);
}

TEST(ParseFloat, UnderflowIsASubnormalOrZeroWithItsSign) {
  EXPECT_EQ(Bits(ParseFloat("1e-40")), 71362U);
  EXPECT_EQ(Bits(ParseFloat("1.4e-45")), 1U);
  EXPECT_EQ(Bits(ParseFloat("7.1e-46")), 1U);
  EXPECT_EQ(Bits(ParseFloat("7e-46")), 0U);
  EXPECT_EQ(Bits(ParseFloat("-1e-99999999999999999999999")), Bits(-0.0F));
  EXPECT_EQ(Bits(ParseFloat(std::string(60, '9') + "e-200")), 0U);
  EXPECT_EQ(Bits(ParseFloat("-0." + std::string(60, '0') + "1")), Bits(-0.0F));
}

TEST(ParseFloat, LongZerosCancelAgainstTheExponent) {
  EXPECT_EQ(ParseFloat("0." + std::string(400, '0') + "1e402"), 10.0F);
  EXPECT_EQ(ParseFloat("1" + std::string(400, '0') + "e-398"), 100.0F);
}

TEST(FormatInt32, AllSmallValuesReadBack) {
  for (std::int32_t value = -100100; value <= 100100; ++value) {
    ASSERT_EQ(Int32Text(value), std::to_string(value));
    ASSERT_EQ(ParseInt32(Int32Text(value)), value);
  }
}

TEST(FormatInt32, LimitsFitTheirRoom) {
  EXPECT_EQ(Int32Text(kInt32Max), "2147483647");
  EXPECT_EQ(Int32Text(kInt32Min), "-2147483648");
  EXPECT_EQ(Int32Text(kInt32Min).size(), kInt32MaxLength);
}

TEST(FormatUnsigned, EveryNumberOfDigitsIsRight) {
  EXPECT_EQ(UInt32Text(0), "0");
  EXPECT_EQ(UInt64Text(0), "0");
  for (std::uint64_t power = 1; power <= kUInt64Max / 10; power *= 10) {
    for (const std::uint64_t value : {power, power * 10 - 1, power + power / 2}) {
      EXPECT_EQ(UInt64Text(value), std::to_string(value));
      const auto low = static_cast<std::uint32_t>(value);
      EXPECT_EQ(UInt32Text(low), std::to_string(low));
    }
  }
  EXPECT_EQ(UInt32Text(kUInt32Max), "4294967295");
  EXPECT_EQ(UInt32Text(kUInt32Max).size(), kUInt32MaxLength);
  EXPECT_EQ(UInt64Text(kUInt64Max), "18446744073709551615");
  EXPECT_EQ(UInt64Text(kUInt64Max).size(), kUInt64MaxLength);
}

TEST(FormatFixed10, WritesTenDecimals) {
  EXPECT_EQ(Fixed10Text(0), "0.0000000000");
  EXPECT_EQ(Fixed10Text(-0.0), "-0.0000000000");
  EXPECT_EQ(Fixed10Text(1), "1.0000000000");
  EXPECT_EQ(Fixed10Text(-0.5), "-0.5000000000");
  EXPECT_EQ(Fixed10Text(static_cast<double>(0.1F)), "0.1000000015");
  EXPECT_EQ(Fixed10Text(123456.0625), "123456.0625000000");
}

TEST(FormatFixed10, RoundsExactHalvesToEven) {
  EXPECT_EQ(Fixed10Text(std::ldexp(1, -11)), "0.0004882812");
  EXPECT_EQ(Fixed10Text(std::ldexp(3, -11)), "0.0014648438");
  EXPECT_EQ(Fixed10Text(std::ldexp(1, -34)), "0.0000000001");
  EXPECT_EQ(Fixed10Text(std::ldexp(1, -35)), "0.0000000000");
}

TEST(FormatFixed10, InfinitiesAndNonNumbersHaveNames) {
  const double infinity = std::numeric_limits<double>::infinity();
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(Fixed10Text(infinity), "inf");
  EXPECT_EQ(Fixed10Text(-infinity), "-inf");
  EXPECT_EQ(Fixed10Text(nan), "nan");
  EXPECT_EQ(Fixed10Text(std::copysign(nan, -1)), "-nan");
}

TEST(FormatFixed10, TheLongestTextFitsItsRoom) {
  const std::string text = Fixed10Text(std::numeric_limits<double>::lowest());
  EXPECT_EQ(text, Printed(std::numeric_limits<double>::lowest()));
  EXPECT_EQ(text.size(), kFixed10MaxLength);
}

TEST(FormatFixed10, PrintsSinglesOfAnyBitsAsPrintfDoes) {
  std::mt19937 random(20);
  for (int i = 0; i < 100000; ++i) {
    const auto value =
        static_cast<double>(std::bit_cast<float>(static_cast<std::uint32_t>(random())));
    ASSERT_EQ(Fixed10Text(value), Printed(value));
  }
}

TEST(FormatFixed10, PrintsFewBitsAtEveryPowerOfTwoAsPrintfDoes) {
  for (int power = -1100; power < 1019; ++power) {
    for (const int factor : {1, 3, 5, 7, 11, 13, 25, 31}) {
      const double value = std::ldexp(factor, power);
      ASSERT_EQ(Fixed10Text(value), Printed(value));
      ASSERT_EQ(Fixed10Text(-value), Printed(-value));
    }
  }
}

}  // namespace
}  // namespace qenzor
