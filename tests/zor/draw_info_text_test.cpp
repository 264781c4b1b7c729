// What the seven kinds of draw info have in common in their text form.

#include <gtest/gtest.h>

#include "tests/support/chunk_io.h"
#include "tests/support/class_names.h"
#include "tests/support/zor_draw_infos.h"
#include "tests/support/zor_xml.h"

namespace qenzor::testing {
namespace {

const std::string kOneRecord = "<ScData><DenomMax>1</DenomMax></ScData>";

template <class T>
class DrawInfoText : public ::testing::Test {
 protected:
  static std::string Xml(CAbstractChunk* chunk) {
    typename T::ConverterClass converter;
    return XmlOf(converter, chunk, 1);
  }
  /// The chunk that an element with this content gives, as bytes.
  static Bytes Read(const std::string& content) {
    return Written(*ToChunk<T>(*DrawInfoFrom<T>(content)));
  }
};

TYPED_TEST_SUITE(DrawInfoText, EveryDrawInfo, ClassNames);

TYPED_TEST(DrawInfoText, WritesTheCommonFieldsThenEveryRecord) {
  for (const std::vector<std::uint32_t>& denoms :
       {std::vector<std::uint32_t>{}, std::vector<std::uint32_t>{4000000000, 0, 12}}) {
    const auto info = FromMemory<TypeParam>(DrawInfoBytes<TypeParam>(denoms));
    ASSERT_NE(info, nullptr);
    EXPECT_EQ(this->Xml(info.get()), DrawInfoXml<TypeParam>(denoms));
  }
}

TYPED_TEST(DrawInfoText, ItsElementBearsTheNameOfItsClass) {
  CDrawInfoSet set;
  set.SubChunkSet(0, FromMemory<TypeParam>(DrawInfoBytes<TypeParam>({5})).release());
  CDrawInfoSetTextConverter converter;
  const std::string tag(TypeParam::kTag);
  EXPECT_EQ(XmlOf(converter, &set, 0),
            "<" + tag + ">\r\n" + DrawInfoXml<TypeParam>({5}) + "</" + tag + ">\r\n");
}

TYPED_TEST(DrawInfoText, WritesNothingOfAnotherClass) {
  CMarkData other;
  EXPECT_EQ(this->Xml(&other), "");
  EXPECT_EQ(this->Xml(nullptr), "");
}

TYPED_TEST(DrawInfoText, ReadsWhatItWrites) {
  EXPECT_EQ(this->Read(DrawInfoXml<TypeParam>({})), DrawInfoBytes<TypeParam>({}));
  EXPECT_EQ(this->Read(DrawInfoXml<TypeParam>({4000000000, 0, 12})),
            DrawInfoBytes<TypeParam>({4000000000, 0, 12}));
}

TYPED_TEST(DrawInfoText, CommonFieldsMayComeBehindTheRecords) {
  const std::string com = "<ComData>" + DrawInfoSample<TypeParam>::ComXml() + "</ComData>";
  const std::string sc = "<ScData><DenomMax>3</DenomMax>" + DrawInfoSample<TypeParam>::ScXml();
  EXPECT_EQ(this->Read(sc + "</ScData>" + com), DrawInfoBytes<TypeParam>({3}));
}

TYPED_TEST(DrawInfoText, AnEmptyCommonElementChangesNothing) {
  const std::string com = "<ComData>" + DrawInfoSample<TypeParam>::ComXml() + "</ComData>";
  EXPECT_EQ(this->Read(com + "<ComData/><ComData><Unknown>3</Unknown></ComData>"),
            DrawInfoBytes<TypeParam>({}));
}

TYPED_TEST(DrawInfoText, ARecordElementWithoutChildrenAddsARecordOfZeroes) {
  const Bytes zeroes(std::vector<std::uint8_t>(DrawInfoSample<TypeParam>::kRecordSize * 2));
  const Bytes expected = Chunk(DrawInfoSample<TypeParam>::kId,
                               DrawInfoSample<TypeParam>::FreshEditCom().U16(2).Add(zeroes));
  EXPECT_EQ(this->Read("<ScData/><ScData><Unknown>3</Unknown></ScData>"), expected);
}

TYPED_TEST(DrawInfoText, ARecordDoesNotTakeOverWhatTheOneBeforeHeld) {
  const auto edit = DrawInfoFrom<TypeParam>(
      "<ScData><DenomMax>3</DenomMax><DenomMin>2</DenomMin></ScData><ScData><DenomMin>4</DenomMin>"
      "</ScData>");
  ASSERT_EQ(edit->ScData.size(), 2U);
  EXPECT_EQ(edit->ScData[1].DenomMax, 0U);
  EXPECT_EQ(edit->ScData[1].DenomMin, 4U);
}

TYPED_TEST(DrawInfoText, TheLastOfARepeatedFieldWins) {
  const auto edit =
      DrawInfoFrom<TypeParam>("<ScData><DenomMax>3</DenomMax><DenomMax>5</DenomMax></ScData>");
  ASSERT_EQ(edit->ScData.size(), 1U);
  EXPECT_EQ(edit->ScData[0].DenomMax, 5U);
}

TYPED_TEST(DrawInfoText, DenominatorsAreReadAsUnsignedDecimals) {
  const auto denom_of = [](const std::string& text) {
    return DrawInfoFrom<TypeParam>("<ScData><DenomMax>" + text + "</DenomMax><DenomMin>" + text +
                                   "</DenomMin></ScData>")
        ->ScData[0];
  };
  const std::vector<std::pair<std::string, std::uint32_t>> cases = {{"4294967295", 4294967295U},
                                                                    {"4294967296", 4294967295U},
                                                                    {"-1", 4294967295U},
                                                                    {" \t\n 12abc", 12},
                                                                    {"0x10", 0},
                                                                    {"words", 0},
                                                                    {"", 0},
                                                                    {"+7", 7}};
  for (const auto& [text, value] : cases) {
    EXPECT_EQ(denom_of(text).DenomMax, value) << text;
    EXPECT_EQ(denom_of(text).DenomMin, value) << text;
  }
}

TYPED_TEST(DrawInfoText, OtherTagsAreSkipped) {
  EXPECT_EQ(this->Read("<scdata/><SCDATA/><comData><DenomMax>1</DenomMax></comData>"
                       "<DenomMax>3</DenomMax>text<Unknown><ScData/></Unknown>"),
            DrawInfoBytes<TypeParam>({}, DrawInfoSample<TypeParam>::FreshEditCom()));
  EXPECT_EQ(DrawInfoFrom<TypeParam>("<ScData><denommax>3</denommax></ScData>")->ScData[0].DenomMax,
            0U);
}

TYPED_TEST(DrawInfoText, RecordsAreAppendedToThoseThere) {
  const auto edit = DrawInfoFrom<TypeParam>(kOneRecord + "<ComData/>" + kOneRecord);
  EXPECT_EQ(edit->ScData.size(), 2U);
}

TYPED_TEST(DrawInfoText, WithoutAnElementNothingIsRead) {
  typename TypeParam::EditClass edit;
  edit.ScData.resize(1);
  typename TypeParam::ConverterClass converter;
  converter.SetChunkEditParam(&edit, nullptr);
  EXPECT_EQ(edit.ScData.size(), 1U);
  EXPECT_EQ(converter.ConvertStringToChunkEdit(nullptr), nullptr);
}

}  // namespace
}  // namespace qenzor::testing
