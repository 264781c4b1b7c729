// Mesh segments and layers: a number and one set below it.

#include <gtest/gtest.h>

#include "qenzor/qen/obj_set.h"
#include "tests/support/chunk_io.h"
#include "tests/support/counted.h"
#include "tests/support/qen_bytes.h"
#include "tests/support/qen_xml.h"

namespace qenzor::testing {
namespace {

struct Segment {
  using Level = CMeshSegment;
  using Sub = CLayerSet;
  using OtherSub = CZIdObjSet;
  static constexpr std::uint32_t kId = 30;
  static constexpr std::uint32_t kSubId = 8;
  static constexpr const char* kNumberTag = "MeshSegmentNo";
  template <class T>
  static std::uint16_t& Number(T& level) {
    return level.MeshSegmentNo;
  }
  template <class T>
  static auto& Slot(T& level) {
    return level.LayerSet;
  }
  static CMeshSegmentEdit* First(CQenEdit& edit) { return FirstSegment(edit); }
  static std::string Xml(const std::string& inner) {
    return "<Qen><QenMapData><MeshSegmentSet><MeshSegment>" + inner +
           "</MeshSegment></MeshSegmentSet></QenMapData></Qen>";
  }
};

struct Layer {
  using Level = CLayerData;
  using Sub = CZIdObjSet;
  using OtherSub = CLayerSet;
  static constexpr std::uint32_t kId = 7;
  static constexpr std::uint32_t kSubId = 20;
  static constexpr const char* kNumberTag = "LayerNo";
  template <class T>
  static std::uint16_t& Number(T& level) {
    return level.LayerNo;
  }
  template <class T>
  static auto& Slot(T& level) {
    return level.ZIdObjSet;
  }
  static CLayerDataEdit* First(CQenEdit& edit) { return FirstLayer(edit); }
  static std::string Xml(const std::string& inner) {
    return Segment::Xml("<LayerSet><LayerData>" + inner + "</LayerData></LayerSet>");
  }
};

template <class Kind>
class NumberedLevel : public ::testing::Test {
 protected:
  using LevelEdit = typename Kind::Level::EditClass;
  using SubEdit = typename Kind::Sub::EditClass;
  using OtherSubEdit = typename Kind::OtherSub::EditClass;

  const Bytes m_bare = Chunk(Kind::kId, Bytes().U16(0xFEDC));
  const Bytes m_sub = SetChunk(Kind::kSubId, {});
  const Bytes m_full = Chunk(Kind::kId, Bytes().U16(0xFEDC).Add(m_sub));
};

using Kinds = ::testing::Types<Segment, Layer>;
struct KindNames {
  template <class Kind>
  static std::string GetName(int /*index*/) {
    return std::string(Kind::Level::kTag);
  }
};
TYPED_TEST_SUITE(NumberedLevel, Kinds, KindNames);

TYPED_TEST(NumberedLevel, WithoutASetHasDataSizeTwo) {
  const auto level = FromMemory<typename TypeParam::Level>(this->m_bare);
  ASSERT_NE(level, nullptr);
  EXPECT_EQ(TypeParam::Number(*level), 0xFEDC);
  EXPECT_EQ(TypeParam::Slot(*level), nullptr);
  EXPECT_EQ(Written(*level), this->m_bare);
  EXPECT_EQ(level->GetHeader().DataSize, 2U);
}

TYPED_TEST(NumberedLevel, WithASetHasTheSetsDataSizeAndTen) {
  const auto level = FromFile<typename TypeParam::Level>(this->m_full);
  ASSERT_NE(level, nullptr);
  EXPECT_EQ(Written(*level), this->m_full);
  EXPECT_EQ(level->GetHeader().DataSize, TypeParam::Slot(*level)->GetHeader().DataSize + 10);
}

TYPED_TEST(NumberedLevel, ANumberCutShortFails) {
  for (std::uint32_t size = 0; size < 2; ++size) {
    const Bytes cut =
        Bytes().U32(TypeParam::kId).U32(2).Add(Bytes(std::vector<std::uint8_t>(size)));
    EXPECT_EQ(FromMemory<typename TypeParam::Level>(cut), nullptr);
    EXPECT_EQ(FromFile<typename TypeParam::Level>(cut), nullptr);
  }
}

TYPED_TEST(NumberedLevel, DropsASetOfAnotherClass) {
  const Bytes wrong =
      Chunk(TypeParam::kId, Bytes().U16(0xFEDC).Add(SetChunk(id::kObjSet, {LineBytes({{1, 1}})})));
  for (const auto& level :
       {FromMemory<typename TypeParam::Level>(wrong), FromFile<typename TypeParam::Level>(wrong)}) {
    ASSERT_NE(level, nullptr);
    EXPECT_EQ(Written(*level), this->m_bare);
  }
}

TYPED_TEST(NumberedLevel, TheLaterOfTwoSetsStaysWhateverItsIndex) {
  typename TypeParam::Level level;
  level.SubChunkSet(3, new Counted<typename TypeParam::Sub>);
  auto* later = new typename TypeParam::Sub;
  level.SubChunkSet(1, later);
  EXPECT_EQ(TypeParam::Slot(level).get(), later);
  EXPECT_EQ(Counted<typename TypeParam::Sub>::Alive(), 0);
  level.SubChunkSet(2, new Counted<typename TypeParam::OtherSub>);
  EXPECT_EQ(Counted<typename TypeParam::OtherSub>::Alive(), 0);
  EXPECT_EQ(TypeParam::Slot(level).get(), later);
}

TYPED_TEST(NumberedLevel, CloneCopiesHeaderNumberAndSet) {
  const auto level = FromMemory<typename TypeParam::Level>(this->m_full);
  ASSERT_NE(level, nullptr);
  const auto clone = ClonedFrom(*level);
  ASSERT_NE(clone, nullptr);
  EXPECT_NE(TypeParam::Slot(*clone), TypeParam::Slot(*level));
  EXPECT_EQ(Written(*clone, false), this->m_full);
}

TYPED_TEST(NumberedLevel, EditRoundTripKeepsEveryByte) {
  const auto level = FromMemory<typename TypeParam::Level>(this->m_full);
  ASSERT_NE(level, nullptr);
  typename TestFixture::LevelEdit edit;
  edit.ChunkDataToEditData(level.get());
  EXPECT_EQ(TypeParam::Number(edit), 0xFEDC);
  const auto back = ToChunk<typename TypeParam::Level>(edit);
  EXPECT_EQ(back->GetHeader().DataSize, 0U);
  EXPECT_EQ(Written(*back), this->m_full);
}

TYPED_TEST(NumberedLevel, ReleaseOfTheEditObjectZeroesItsNumber) {
  typename TestFixture::LevelEdit edit;
  TypeParam::Number(edit) = 7;
  edit.SetSubChunkEdit(new Counted<typename TestFixture::SubEdit>);
  edit.Release();
  EXPECT_EQ(TypeParam::Number(edit), 0);
  EXPECT_EQ(Counted<typename TestFixture::SubEdit>::Alive(), 0);
  TypeParam::Number(edit) = 7;
  CObjSet other;
  edit.ChunkDataToEditData(&other);
  EXPECT_EQ(TypeParam::Number(edit), 0);
}

TYPED_TEST(NumberedLevel, TheEditObjectTakesItsSetOnly) {
  typename TestFixture::LevelEdit edit;
  EXPECT_TRUE(edit.SetSubChunkEdit(new Counted<typename TestFixture::SubEdit>));
  EXPECT_TRUE(edit.SetSubChunkEdit(new typename TestFixture::SubEdit));
  EXPECT_EQ(Counted<typename TestFixture::SubEdit>::Alive(), 0);
  EXPECT_FALSE(edit.SetSubChunkEdit(new Counted<typename TestFixture::OtherSubEdit>));
  EXPECT_EQ(Counted<typename TestFixture::OtherSubEdit>::Alive(), 0);
}

TYPED_TEST(NumberedLevel, TheEditObjectsCloneCopiesNumberAndSet) {
  typename TestFixture::LevelEdit edit;
  TypeParam::Number(edit) = 7;
  edit.SetSubChunkEdit(new typename TestFixture::SubEdit);
  const std::unique_ptr<CAbstractChunkEdit> clone(edit.Clone());
  auto* copy = dynamic_cast<typename TestFixture::LevelEdit*>(clone.get());
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(TypeParam::Number(*copy), 7);
  EXPECT_NE(TypeParam::Slot(*copy), nullptr);
  EXPECT_NE(TypeParam::Slot(*copy), TypeParam::Slot(edit));
}

TYPED_TEST(NumberedLevel, WritesItsNumberThenItsSet) {
  const std::string tag = TypeParam::kNumberTag;
  const std::string number = "\t<" + tag + ">65244</" + tag + ">\r\n";
  typename TypeParam::Level::ConverterClass converter;
  const auto bare = FromMemory<typename TypeParam::Level>(this->m_bare);
  EXPECT_EQ(XmlOf(converter, bare.get(), 1), number);
  const auto full = FromMemory<typename TypeParam::Level>(this->m_full);
  const std::string sub(TypeParam::Sub::kTag);
  EXPECT_EQ(XmlOf(converter, full.get(), 1), number + "\t<" + sub + ">\r\n\t</" + sub + ">\r\n");
}

TYPED_TEST(NumberedLevel, ReadsItsNumberCutToSixteenBits) {
  const auto number_of = [](const std::string& text) {
    const std::string tag = TypeParam::kNumberTag;
    const auto edit = EditFromXml(TypeParam::Xml("<" + tag + ">" + text + "</" + tag + ">"));
    return TypeParam::Number(*TypeParam::First(*edit));
  };
  EXPECT_EQ(number_of("65535"), 65535);
  EXPECT_EQ(number_of("65536"), 0);
  EXPECT_EQ(number_of("70000"), 4464);
  EXPECT_EQ(number_of("-1"), 65535);
  EXPECT_EQ(number_of("9999999999"), 0xFFFF);  // the greatest signed number, cut
  EXPECT_EQ(number_of("-9999999999"), 0);      // the least one
  EXPECT_EQ(number_of(""), 0);
}

TYPED_TEST(NumberedLevel, ReadsTheLaterOfTwoSets) {
  const std::string sub(TypeParam::Sub::kTag);
  const std::string element = TypeParam::kSubId == 8 ? "<LayerData/>" : "<ZIdObj/>";
  const auto edit = EditFromXml(
      TypeParam::Xml("<Other/><" + sub + "/><" + sub + ">" + element + "</" + sub + ">"));
  EXPECT_EQ(TypeParam::Slot(*TypeParam::First(*edit))->GetElemCount(), 1U);
}

}  // namespace
}  // namespace qenzor::testing
