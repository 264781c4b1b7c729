#include "qenzor/platform/code_page.h"

#include <gtest/gtest.h>
#include <iconv.h>
#include <sys/resource.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "qenzor/platform/strings.h"
#include "tests/support/resident_memory.h"

namespace qenzor {
namespace {

struct Pair {
  char16_t Unit;
  std::string_view Narrow;
};

void ExpectBothWays(const std::vector<Pair>& pairs) {
  for (const auto& [unit, narrow] : pairs) {
    const std::u16string_view wide(&unit, 1);
    EXPECT_EQ(NarrowText(wide), narrow) << std::hex << static_cast<unsigned>(unit);
    EXPECT_EQ(WidenText(narrow), wide) << std::hex << static_cast<unsigned>(unit);
  }
}

TEST(CodePage, EmptyTextStaysEmpty) {
  EXPECT_EQ(NarrowText(u""), "");
  EXPECT_EQ(WidenText(""), u"");
}

TEST(CodePage, AsciiIsItselfIncludingZeroBackslashAndTilde) {
  for (unsigned i = 0; i < 0x80; ++i) {
    ExpectBothWays({{static_cast<char16_t>(i), std::string(1, static_cast<char>(i))}});
  }
}

TEST(CodePage, KanjiAndKanaTakeTwoBytes) {
  ExpectBothWays({{u'亜', "\x88\x9F"},
                  {u'熙', "\xEA\xA4"},
                  {u'あ', "\x82\xA0"},
                  {u'ヶ', "\x83\x96"},
                  {u'\u3000', "\x81\x40"}});
}

TEST(CodePage, TrailBytesThatLookLikeAsciiBelongToTheirLead) {
  ExpectBothWays({{u'ソ', "\x83\x5C"}, {u'表', "\x95\x5C"}, {u'ポ', "\x83\x7C"}});
  EXPECT_EQ(WidenText("<\x95\x5C>"), u"<表>");
}

TEST(CodePage, HalfWidthKanaTakeOneByte) {
  ExpectBothWays({{u'\uFF61', "\xA1"}, {u'\uFF71', "\xB1"}, {u'\uFF9F', "\xDF"}});
}

TEST(CodePage, FullWidthFormsOwnTheSigns) {
  ExpectBothWays({{u'\uFF5E', "\x81\x60"},
                  {u'\u2225', "\x81\x61"},
                  {u'\uFF0D', "\x81\x7C"},
                  {u'\uFFE0', "\x81\x91"},
                  {u'\uFFE1', "\x81\x92"},
                  {u'\uFFE2', "\x81\xCA"},
                  {u'\uFF3C', "\x81\x5F"}});
}

TEST(CodePage, LookAlikesBecomeQuestionMarks) {
  for (const char16_t unit : {u'\u301C', u'\u2016', u'\u2212', u'\u00A2', u'\u00A3', u'\u00AC',
                              u'\u00A5', u'\u203E', u'\u00E9', u'\u3094'}) {
    EXPECT_EQ(NarrowText({&unit, 1}), "?") << std::hex << static_cast<unsigned>(unit);
  }
}

TEST(CodePage, UserDefinedAreaIsThePrivateUseArea) {
  ExpectBothWays({{u'\uE000', "\xF0\x40"},
                  {u'\uE03E', "\xF0\x7E"},
                  {u'\uE03F', "\xF0\x80"},
                  {u'\uE0BC', "\xF1\x40"},
                  {u'\uE757', "\xF9\xFC"}});
  EXPECT_EQ(NarrowText(u"\uE758"), "?");
}

TEST(CodePage, BytesWithoutMeaningPassThrough) {
  ExpectBothWays({{u'\u0080', "\x80"},
                  {u'\uF8F0', "\xA0"},
                  {u'\uF8F1', "\xFD"},
                  {u'\uF8F2', "\xFE"},
                  {u'\uF8F3', "\xFF"}});
}

TEST(CodePage, OfTheVendorDuplicatesOneIsWrittenAndAllAreRead) {
  ExpectBothWays({{u'Ⅰ', "\x87\x54"},
                  {u'№', "\x87\x82"},
                  {u'㈱', "\x87\x8A"},
                  {u'ⅰ', "\xFA\x40"},
                  {u'￤', "\xFA\x55"},
                  {u'髙', "\xFB\xFC"},
                  {u'黑', "\xFC\x4B"},
                  {u'∪', "\x81\xBE"},
                  {u'∵', "\x81\xE6"},
                  {u'≒', "\x81\xE0"}});
  EXPECT_EQ(WidenText("\xFA\x4A\xFA\x59\xFA\x58"), u"Ⅰ№㈱");
  EXPECT_EQ(WidenText("\xEE\xEF\xEE\xFA\xEE\xE0\xEE\xEC"), u"ⅰ￤髙黑");
  EXPECT_EQ(WidenText("\x87\x9C\x87\x9A\x87\x90\xFA\x54"), u"∪∵≒￢");
}

/// What the system's converter makes of the text, or nothing where it refuses it.
std::string Converted(iconv_t converter, std::string text) {
  std::string result(4, '\0');
  char* in = text.data();
  char* out = result.data();
  std::size_t in_left = text.size();
  std::size_t out_left = result.size();
  iconv(converter, nullptr, nullptr, nullptr, nullptr);
  const bool exact = iconv(converter, &in, &in_left, &out, &out_left) == 0 && in_left == 0;
  return exact ? result.substr(0, result.size() - out_left) : "";
}

std::string Narrow(unsigned code) {
  const std::string bytes{static_cast<char>(code >> 8U), static_cast<char>(code)};
  return code < 0x100 ? bytes.substr(1) : bytes;
}

TEST(CodePage, IsThatOfTheSystem) {
  const iconv_t decoder = iconv_open("UTF-16LE", "CP932");
  const iconv_t encoder = iconv_open("CP932", "UTF-16LE");
  if (reinterpret_cast<std::intptr_t>(decoder) == -1) GTEST_SKIP() << "it has none";
  int known = 0;
  for (unsigned code = 0x80; code < 0x10000; ++code) {
    const std::string unit = Converted(decoder, Narrow(code));
    if (unit.size() != 2) continue;
    ++known;
    const std::u16string wide{static_cast<char16_t>(static_cast<unsigned char>(unit[1]) << 8U |
                                                    static_cast<unsigned char>(unit[0]))};
    ASSERT_EQ(WidenText(Narrow(code)), wide) << std::hex << code;
    ASSERT_EQ(NarrowText(wide), Converted(encoder, unit)) << std::hex << code;
  }
  EXPECT_GT(known, 9600);
  iconv_close(decoder);
  iconv_close(encoder);
}

TEST(CodePage, NeedsNoFileDescriptor) {
  const auto right = testing::InChild([] {
    const rlimit none{};
    return std::ptrdiff_t{::setrlimit(RLIMIT_NOFILE, &none) == 0 &&
                          NarrowText(u"亜") == "\x88\x9F"};
  });
  EXPECT_EQ(right, std::ptrdiff_t{1});
}

TEST(CodePage, EachUnitOfASurrogatePairBecomesAQuestionMark) {
  EXPECT_EQ(NarrowText(u"a\U00020B9Fb"), "a??b");
  const std::u16string lone{u'x', char16_t{0xDC00}, u'y', char16_t{0xD800}};
  EXPECT_EQ(NarrowText(lone), "x?y?");
}

TEST(CodePage, LeadByteAtTheEndBecomesTheReplacementCharacter) {
  EXPECT_EQ(WidenText("ab\x82"), u"ab\uFFFD");
  EXPECT_EQ(WidenText("\x82\xA0\xF9"), u"あ\uFFFD");
}

TEST(CodePage, ReadingGoesOnAtTheByteAfterAnUndecodableOne) {
  EXPECT_EQ(WidenText("\x82<b>"), u"\uFFFD<b>");
  EXPECT_EQ(WidenText("\x82\x7F"), u"\uFFFD\x7F");
  EXPECT_EQ(WidenText(std::string_view("\x82\0z", 3)), std::u16string_view(u"\uFFFD\0z", 3));
  EXPECT_EQ(WidenText("\x85\x82\xA0"), u"\uFFFDあ");
  EXPECT_EQ(WidenText("\x82\x82\xA0"), u"ｂ\uF8F0");
  EXPECT_EQ(WidenText("\xFC\x4C\xFA"), u"\uFFFDL\uFFFD");
  EXPECT_EQ(WidenText("\x81\xFF"), u"\uFFFD\uF8F3");
}

// Besides the question mark itself: 127 other ASCII characters, 63 kana, 5 bytes without meaning,
// 1880 characters of the user and 7326 of the standard and the vendors, duplicates counted once.
TEST(CodePage, WhatIsNotAQuestionMarkWidensToItself) {
  unsigned known = 0;
  for (unsigned i = 0; i < 0x10000; ++i) {
    const auto unit = static_cast<char16_t>(i);
    const CString narrow = NarrowText({&unit, 1});
    if (narrow == "?") {
      continue;
    }
    ++known;
    ASSERT_EQ(WidenText(narrow), std::u16string(1, unit)) << std::hex << i;
  }
  EXPECT_EQ(known, 9401U);
}

TEST(CodePage, EveryByteThatCanBeReadCanBeWritten) {
  for (unsigned i = 0x8000; i < 0x10000; ++i) {
    const CString bytes{static_cast<char>(i >> 8U), static_cast<char>(i)};
    const CStringW wide = WidenText(bytes);
    if (wide.find(u'\uFFFD') == CStringW::npos) {
      ASSERT_EQ(WidenText(NarrowText(wide)), wide) << std::hex << i;
    }
  }
}

TEST(CodePage, LongTextsMixAsciiAndOtherCharactersAtEveryOffset) {
  for (std::size_t length = 0; length < 40; ++length) {
    for (std::size_t at = 0; at < length; ++at) {
      CStringW wide(length, u'x');
      wide[at] = u'あ';
      CString narrow(length + 1, 'x');
      narrow.replace(at, 2, "\x82\xA0");
      ASSERT_EQ(NarrowText(wide), narrow);
      ASSERT_EQ(WidenText(narrow), wide);
    }
  }
}

TEST(CodePage, AppendingKeepsWhatIsThere) {
  CString text = "name: ";
  AppendNarrow(text, u"亜x");
  AppendNarrow(text, u"");
  AppendNarrow(text, u"!");
  EXPECT_EQ(text, "name: \x88\x9Fx!");
}

TEST(CodePage, SeveralThreadsMayConvertAtOnce) {
  std::vector<CString> results(4);
  std::vector<std::thread> threads;
  threads.reserve(results.size());
  for (CString& result : results) {
    threads.emplace_back([&result] { result = NarrowText(WidenText("\x88\x9F z \xB1")); });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  for (const CString& result : results) {
    EXPECT_EQ(result, "\x88\x9F z \xB1");
  }
}

TEST(ReplaceAll, ReplacesEveryOccurrenceFromLeftToRight) {
  CString text = "a<br />b<br /><br />";
  ReplaceAll(text, "<br />", "\n");
  EXPECT_EQ(text, "a\nb\n\n");
  CStringW wide = u"aaa";
  ReplaceAll(wide, u"aa", u"b");
  EXPECT_EQ(wide, u"ba");
}

TEST(ReplaceAll, DoesNotSearchWhatItPutIn) {
  CString text = "a&b";
  ReplaceAll(text, "&", "&amp;");
  EXPECT_EQ(text, "a&amp;b");
}

TEST(ReplaceAll, LeavesTheTextAloneWithoutAMatch) {
  CString text = "abc";
  ReplaceAll(text, "x", "y");
  EXPECT_EQ(text, "abc");
  ReplaceAll(text, "", "y");
  EXPECT_EQ(text, "abc");
  CString nothing;
  ReplaceAll(nothing, "x", "y");
  EXPECT_EQ(nothing, "");
}

}  // namespace
}  // namespace qenzor
