// What the two raster draw infos have alike: the raster's file name and the transparent colour.

#include <gtest/gtest.h>

#include "tests/support/chunk_io.h"
#include "tests/support/class_names.h"
#include "tests/support/zor_draw_infos.h"
#include "tests/support/zor_xml.h"

namespace qenzor::testing {
namespace {

template <class T>
class RasDrawInfo : public ::testing::Test {
 protected:
  /// A raster draw info of this name block, without records.
  static Bytes Named(const Bytes& name) {
    return DrawInfoBytes<T>({}, Bytes(name).U32(0x01020304));
  }
  static void ExpectName(const Bytes& name, const CStringW& expected) {
    for (const auto& info : {FromMemory<T>(Named(name)), FromFile<T>(Named(name))}) {
      ASSERT_NE(info, nullptr);
      EXPECT_TRUE(info->RasFileName == expected);
      EXPECT_EQ(info->ColorKey, 0x01020304U);
      EXPECT_TRUE(Written(*info) == Named(Bytes().Text(expected)));
    }
  }
  static std::unique_ptr<typename T::EditClass> FromCom(const std::string& content) {
    return DrawInfoFrom<T>("<ComData>" + content + "</ComData>");
  }
};

using RasDrawInfos = ::testing::Types<CRasLLDrawInfo, CRasMMDrawInfo>;
TYPED_TEST_SUITE(RasDrawInfo, RasDrawInfos, ClassNames);

TYPED_TEST(RasDrawInfo, IsEmptyWhenConstructed) {
  TypeParam info;
  EXPECT_EQ(info.RasFileName, u"");
  EXPECT_EQ(info.ColorKey, 0U);
  EXPECT_EQ(Written(info), Chunk(TypeParam::kChunkId, Bytes().U64(0)));
  typename TypeParam::EditClass edit;
  EXPECT_EQ(edit.RasFileName, "");
  EXPECT_EQ(edit.ColorKey, 0U);
}

TYPED_TEST(RasDrawInfo, ReadsNamesInBothByteOrders) {
  this->ExpectName(Bytes().Text(u"\u5730/a.png"), u"\u5730/a.png");
  this->ExpectName(Bytes().SwappedText(u"\u5730/a.png"), u"\u5730/a.png");
}

TYPED_TEST(RasDrawInfo, AnUnknownMarkOrNoneGivesAnEmptyNameNotAnError) {
  this->ExpectName(Bytes().U16(6).U16(0x1234).U16('a').U16('b'), u"");
  this->ExpectName(Bytes().U16(0), u"");
  this->ExpectName(Bytes().U16(1).U8(0xFF), u"");
  this->ExpectName(Bytes().U16(2).U16(0xFEFF), u"");
}

TYPED_TEST(RasDrawInfo, ANameEndsAtItsFirstZero) {
  this->ExpectName(Bytes().U16(8).U16(0xFEFF).U16('a').U16(0).U16('b'), u"a");
}

TYPED_TEST(RasDrawInfo, BothPathsReadNamesUpTo32762Characters) {
  // 65,526 bytes of name and 8 more are the most that sixteen bits count.
  const CStringW name(32762, u'x');
  this->ExpectName(Bytes().Text(name), name);
}

TYPED_TEST(RasDrawInfo, FromAFileTheLongestNamesReadToo) {
  for (const std::size_t length : {32763U, 32766U}) {
    const CStringW name(length, u'x');
    const Bytes bytes = this->Named(Bytes().Text(name));
    const auto info = FromFile<TypeParam>(bytes);
    ASSERT_NE(info, nullptr);
    EXPECT_TRUE(info->RasFileName == name);
    EXPECT_TRUE(Written(*info) == bytes);
  }
}

TYPED_TEST(RasDrawInfo, InMemoryTheBytesOfALongerNameAreTakenForSubChunks) {
  for (const std::size_t length : {32763U, 32766U}) {
    const Bytes bytes = this->Named(Bytes().Text(CStringW(length, u'x')));
    EXPECT_EQ(FromMemory<TypeParam>(bytes), nullptr) << length;
  }
}

TYPED_TEST(RasDrawInfo, InMemoryALongerNameReadsWhenItsBytesAreAWholeSubChunk) {
  // Of a name block of 65,534 bytes six fixed bytes are counted and 65,536 are left, which begin
  // inside the name: here with an index set of just that length, dropped like any sub-chunk.
  constexpr std::uint32_t kIndices = 16381;
  Bytes bytes = Bytes().U32(TypeParam::kChunkId).U32(65542).U16(65534).U16(0xFEFF).U16('x');
  bytes.U32(id::kDrawInfoIdxSet).U32(4 + 4 * kIndices).U32(kIndices);
  const std::size_t end = 8 + 65542;
  bytes.Add(Bytes(std::vector<std::uint8_t>(end - bytes.size())));
  const auto info = FromMemory<TypeParam>(bytes);
  ASSERT_NE(info, nullptr);
  EXPECT_EQ(info->RasFileName, CStringW({u'x', id::kDrawInfoIdxSet}));
  EXPECT_TRUE(info->ScData.empty());
}

TYPED_TEST(RasDrawInfo, AWrappedLengthNeverReadsBehindTheBlock) {
  for (const std::uint32_t name_bytes : {65528U, 65534U, 65535U})
    for (const std::size_t there : {2U, 8U, 30U}) {
      Bytes bytes = Bytes().U32(TypeParam::kChunkId).U32(8).U16(name_bytes).U16(0xFEFF);
      bytes.Add(Bytes(std::vector<std::uint8_t>(40)));
      EXPECT_EQ(FromMemory<TypeParam>(bytes.Front(8 + there)), nullptr);
      EXPECT_EQ(FromFile<TypeParam>(bytes.Front(8 + there)), nullptr);
    }
}

TYPED_TEST(RasDrawInfo, MissingRecordsLeaveNameAndColourAssigned) {
  const Bytes bytes =
      Chunk(TypeParam::kChunkId, Bytes().Text(u"a.png").U32(0x01020304).U16(3).U32(1));
  TypeParam info;
  EXPECT_FALSE(info.Read(bytes.data(), bytes.size()));
  EXPECT_EQ(info.RasFileName, u"a.png");
  EXPECT_EQ(info.ColorKey, 0x01020304U);
}

TYPED_TEST(RasDrawInfo, TheByteCountOfALongerNameWraps) {
  TypeParam info;
  info.RasFileName.assign(32768, u'x');
  const Bytes written = Written(info);
  EXPECT_EQ(written.size(), 8U + 32768 * 2 + 4 + 6);
  EXPECT_EQ(info.GetHeader().DataSize, 32768U * 2 + 4 + 6);
  EXPECT_EQ(written.vector()[8], 2);
  EXPECT_EQ(written.vector()[9], 0);
}

TYPED_TEST(RasDrawInfo, TheEditHoldsTheNameInTheCodePage) {
  const auto info = FromMemory<TypeParam>(this->Named(Bytes().Text(u"\u5730\uFF71\u00E9")));
  typename TypeParam::EditClass edit;
  edit.ChunkDataToEditData(info.get());
  EXPECT_EQ(edit.RasFileName, "\x92\x6E\xB1?");
  EXPECT_EQ(edit.ColorKey, 0x01020304U);
  EXPECT_EQ(Written(*ToChunk<TypeParam>(edit)), this->Named(Bytes().Text(u"\u5730\uFF71?")));
  edit.Release();
  EXPECT_EQ(edit.RasFileName, "\x92\x6E\xB1?");
}

TYPED_TEST(RasDrawInfo, WritesTheNameEscapedAndTheColour) {
  TypeParam info;
  info.RasFileName = u"a b<&>\n\u5730";
  info.ColorKey = 0x80FF0001;
  EXPECT_EQ(XmlElement("Tag", &info),
            "<Tag>\r\n"
            "\t<ComData>\r\n"
            "\t\t<RasFileName>a&amp;nbsp;b&lt;&amp;&gt;&lt;br /&gt;\x92\x6E</RasFileName>\r\n"
            "\t\t<ColorKey A=\"128\" R=\"255\" G=\"0\" B=\"1\" />\r\n"
            "\t</ComData>\r\n"
            "</Tag>\r\n");
}

TYPED_TEST(RasDrawInfo, ASpaceInTheNameComesBackFromXmlAsItsEscape) {
  const auto edit = this->FromCom("<RasFileName>a&amp;nbsp;b&lt;br /&gt;c</RasFileName>");
  EXPECT_EQ(edit->RasFileName, "a&nbsp;b<br />c");
}

TYPED_TEST(RasDrawInfo, AnElementWithoutTextEmptiesTheName) {
  EXPECT_EQ(this->FromCom("<RasFileName>a</RasFileName><RasFileName/>")->RasFileName, "");
}

TYPED_TEST(RasDrawInfo, ALaterCommonElementOverridesTheFieldsThatItNames) {
  const auto edit = DrawInfoFrom<TypeParam>(
      "<ComData><RasFileName>a</RasFileName><ColorKey A='1' R='2' G='3' B='4'/></ComData><ScData/>"
      "<ComData><ColorKey A='257' G='511'/></ComData>");
  EXPECT_EQ(edit->RasFileName, "a");
  EXPECT_EQ(edit->ColorKey, 0x0100FF00U);
}

TYPED_TEST(RasDrawInfo, OtherTagsAreSkipped) {
  const auto edit =
      this->FromCom("<rasfilename>a</rasfilename><Color A='1'/><BrushFileName>b</BrushFileName>");
  EXPECT_EQ(edit->RasFileName, "");
  EXPECT_EQ(edit->ColorKey, 0U);
}

}  // namespace
}  // namespace qenzor::testing
