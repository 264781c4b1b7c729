// What holds of checks whatever the document: over generated ones and their mutations.

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "qenzor/platform/numbers.h"
#include "tests/support/check_kinds.h"
#include "tests/support/findings.h"
#include "tests/support/qen_generator.h"
#include "tests/support/zor_generator.h"

namespace {

using namespace qenzor;
using namespace qenzor::testing;

constexpr std::uint64_t kSeeds = 12;

template <class Kind>
Bytes Generated(std::uint64_t seed) {
  if constexpr (Kind::kKind == BinaryKind::kQen) {
    return QenGenerator(seed, QenGenerator::Urls::kEmpty).Document();
  } else {
    const std::unique_ptr<CZor> document(
        ZorGenerator(seed, ZorGenerator::Zids::kOneInABucket).Edit()->EditDataToZorData());
    return BytesOf(*document);
  }
}

template <class Kind>
std::string XmlOf(const Bytes& bytes) {
  typename Kind::Document document;
  EXPECT_TRUE(document.Read(bytes.data(), bytes.size()));
  return *Kind::ToXml(document);
}

/// How many findings there are of each kind; of errors in all.
struct Counted {
  std::map<std::string, std::uint64_t> Kinds;
  std::uint64_t Errors = 0;
};

Counted Count(const CCheckCounts& counts) {
  Counted counted;
  for (const FindingKind& kind : FindingKinds())
    if (counts.Of(kind) > 0) counted.Kinds[std::string(kind.Name)] = counts.Of(kind);
  counted.Errors = counts.Of(Severity::kError);
  return counted;
}
Counted CheckedXml(const std::string& xml, BinaryKind kind) {
  FoundSink sink;
  return Count(CheckXml(xml, kind, {}, sink));
}
Counted CheckedBinary(const Bytes& bytes, BinaryKind kind, const CheckOptions& options = {}) {
  FoundSink sink;
  return Count(CheckBinary({bytes.data(), bytes.size()}, kind, options, sink));
}

template <class Kind>
class CheckProperty : public ::testing::Test {};
using Kinds = ::testing::Types<QenChecked, ZorChecked>;
TYPED_TEST_SUITE(CheckProperty, Kinds);

TYPED_TEST(CheckProperty, WhatIsNotSaidToBeLostComesBackFromXml) {
  std::uint64_t silent = 0;
  for (std::uint64_t seed = 0; seed < kSeeds; ++seed) {
    const Bytes bytes = Generated<TypeParam>(seed);
    CheckOptions options;
    options.RoundTrip = true;
    bool is_silent = true;
    for (const auto& [name, count] : CheckedBinary(bytes, TypeParam::kKind, options).Kinds)
      is_silent = is_silent && !name.starts_with("roundtrip-");
    if (!is_silent) continue;
    ++silent;
    const auto back = MakeOf<TypeParam>(XmlOf<TypeParam>(bytes));
    ASSERT_NE(back, nullptr) << seed;
    EXPECT_EQ(BytesOf(*back), bytes) << seed;
  }
  EXPECT_GT(silent, 5U);
}

TYPED_TEST(CheckProperty, WhatReadRefusesIsAnErrorAndNothingElseIs) {
  std::mt19937_64 random(7);
  std::uint64_t refused = 0;
  for (std::uint64_t seed = 0; seed < kSeeds; ++seed) {
    const Bytes good = Generated<TypeParam>(seed);
    for (int i = 0; i < 40; ++i) {
      Bytes bytes = good;
      for (std::uint64_t changes = 1 + random() % 3; changes > 0; --changes)
        bytes[random() % bytes.size()] = static_cast<std::uint8_t>(random());
      if (random() % 4 == 0)
        bytes = bytes.Front(static_cast<std::uint32_t>(random() % bytes.size()));
      const bool is_read = IsRead(bytes, TypeParam::kKind);
      refused += is_read ? 0 : 1;
      ASSERT_EQ(CheckedBinary(bytes, TypeParam::kKind).Errors == 0, is_read) << seed << ' ' << i;
    }
  }
  EXPECT_GT(refused, 100U);
}

TYPED_TEST(CheckProperty, WhatFromXmlRefusesIsAnErrorAndNothingElseIs) {
  constexpr std::string_view kMarks = "<>&\"'/= !-?x0";
  std::mt19937_64 random(8);
  std::uint64_t refused = 0;
  for (std::uint64_t seed = 0; seed < kSeeds; ++seed) {
    const std::string good = XmlOf<TypeParam>(Generated<TypeParam>(seed));
    for (int i = 0; i < 10; ++i) {
      std::string xml = good;
      for (std::uint64_t changes = 1 + random() % 2; changes > 0; --changes)
        xml[random() % xml.size()] = kMarks[random() % kMarks.size()];
      const bool is_taken = IsXmlTaken<TypeParam>(xml);
      refused += is_taken ? 0 : 1;
      ASSERT_EQ(CheckedXml(xml, TypeParam::kKind).Errors == 0, is_taken) << seed << ' ' << i;
    }
  }
  EXPECT_GT(refused, 50U);
}

std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = text.find('\n', at) + 1;
    lines.push_back(text.substr(at, end - at));
    at = end;
  }
  return lines;
}

std::size_t IndentOf(const std::string& line) { return line.find_first_not_of('\t'); }

/// Behind the element that begins in a line: the line after its end tag.
std::size_t EndOf(const std::vector<std::string>& lines, std::size_t from) {
  const bool is_whole =
      lines[from].find("</") != std::string::npos || lines[from].find("/>") != std::string::npos;
  std::size_t end = from + 1;
  while (!is_whole && IndentOf(lines[end]) > IndentOf(lines[from])) ++end;
  return is_whole ? end : end + 1;
}

bool BeginsElement(const std::string& line) {
  const std::size_t at = IndentOf(line);
  return line[at] == '<' && line[at + 1] != '/' && line[at + 1] != '?';
}

/// One change to the lines of a text as it is written: a name, an element less, one twice, a digit.
bool Mutate(std::vector<std::string>& lines, std::mt19937_64& random) {
  const std::size_t at = 2 + random() % (lines.size() - 3);
  std::string& line = lines[at];
  if (!BeginsElement(line)) return false;
  const auto from = lines.begin() + static_cast<std::ptrdiff_t>(at);
  const auto to = lines.begin() + static_cast<std::ptrdiff_t>(EndOf(lines, at));
  switch (random() % 4) {
    case 0: {
      const std::size_t name = IndentOf(line) + 1;
      const std::string tag = line.substr(name, line.find_first_of(" >", name) - name);
      const std::string other = random() % 2 == 0 ? tag + 'x' : tag.substr(1) + tag[0];
      line.replace(name, tag.size(), other);
      std::string& last = *(to - 1);
      const std::size_t end = last.rfind("</" + tag + '>');
      if (end != std::string::npos) last.replace(end + 2, tag.size(), other);
      return true;
    }
    case 1:
      lines.erase(from, to);
      return true;
    case 2: {
      const std::vector<std::string> copy(from, to);
      lines.insert(to, copy.begin(), copy.end());
      return true;
    }
    default: {
      const std::size_t digit = line.find_first_of("0123456789", line.find_first_of(">= "));
      if (digit == std::string::npos) return false;
      line[digit] = static_cast<char>('0' + random() % 10);
      return true;
    }
  }
}

/// A number as it is read: without zeros in front, with decimals as a single.
std::string AsRead(std::string word) {
  if (word.find('.') != std::string::npos)
    return std::to_string(std::bit_cast<std::uint32_t>(ParseFloat(word)));
  const std::size_t digits = word.starts_with('-') ? 1 : 0;
  while (word.size() > digits + 1 && word[digits] == '0') word.erase(digits, 1);
  return word == "-0" ? "0" : word;
}

/// The lines of a text with their numbers as they are read, in an order of their own: draw
/// attributes are not kept in theirs.
std::vector<std::string> Content(const std::string& text) {
  std::vector<std::string> lines{""};
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find_first_not_of("-0123456789.", at), text.size());
    lines.back() += AsRead(text.substr(at, end - at));
    if (end < text.size()) lines.back() += text[end];
    if (end < text.size() && text[end] == '\n') lines.emplace_back();
    at = end + 1;
  }
  std::ranges::sort(lines);
  return lines;
}

TYPED_TEST(CheckProperty, AChangeToXmlIsNoticedOrTakesFullEffect) {
  std::mt19937_64 random(9);
  std::uint64_t noticed = 0;
  std::uint64_t effective = 0;
  for (std::uint64_t seed = 0; seed < kSeeds; ++seed) {
    const Bytes bytes = Generated<TypeParam>(seed);
    const std::string good = XmlOf<TypeParam>(bytes);
    const Counted before = CheckedXml(good, TypeParam::kKind);
    ASSERT_EQ(before.Errors, 0U) << seed;
    for (int i = 0; i < 24; ++i) {
      std::vector<std::string> lines = LinesOf(good);
      if (!Mutate(lines, random)) continue;
      std::string xml;
      for (const std::string& line : lines) xml += line;
      if (CheckedXml(xml, TypeParam::kKind).Kinds != before.Kinds) {
        ++noticed;
        continue;
      }
      const auto document = MakeOf<TypeParam>(xml);
      ASSERT_NE(document, nullptr);
      if (BytesOf(*document) == bytes) continue;
      ASSERT_EQ(Content(*TypeParam::ToXml(*document)), Content(xml)) << seed << ' ' << i;
      ++effective;
    }
  }
  EXPECT_GT(noticed, 50U);
  EXPECT_GT(effective, 10U);
}

}  // namespace
