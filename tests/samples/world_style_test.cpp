#include <typeinfo>

#include "examples/support/world_ids.h"
#include "examples/support/world_style_builder.h"
#include "qenzor/zor/cmb_lbl_draw_info.h"
#include "qenzor/zor/line_draw_info.h"
#include "qenzor/zor/poly_bmp_brush_draw_info.h"
#include "qenzor/zor/poly_shadow_draw_info.h"
#include "qenzor/zor/poly_solid_brush_draw_info.h"
#include "qenzor/zor/ras_ll_draw_info.h"
#include "qenzor/zor/ras_mm_draw_info.h"
#include "tests/samples/map_walk.h"
#include "tests/samples/samples.h"

namespace qenzor::samples {
namespace {

class WorldStyle : public testing::Test {
 protected:
  void SetUp() override {
    m_bytes = BytesOf(PathOf("world.zor"));
    ASSERT_TRUE(m_style.Read(PathOf("world.zor")));
    m_edit.ZorDataToEditData(&m_style);
  }

  CRasLLDrawInfoEdit& Relief() const {
    for (const auto& info : *m_edit.DrawData.DrawInfoSet->GetElemPtr())
      if (auto* relief = dynamic_cast<CRasLLDrawInfoEdit*>(info.get()); relief != nullptr)
        return *relief;
    throw std::runtime_error("no draw info for rasters with edges");
  }

  Bytes m_bytes;
  CZor m_style;
  CZorEdit m_edit;
};

TEST_F(WorldStyle, BuiltAnewIsTheCommittedFile) {
  CQen map;
  ASSERT_TRUE(map.Read(PathOf("world.qen")));
  const auto rebuilt = world::BuildWorldStyle(world::AreaIdsOf(map));
  EXPECT_EQ(BytesOf(*rebuilt), m_bytes);
}

TEST_F(WorldStyle, DrawsEveryZIdOfTheMap) {
  CQen map;
  ASSERT_TRUE(map.Read(PathOf("world.qen")));
  CQenEdit map_edit;
  map_edit.QenDataToEditData(&map);
  std::set<std::uint64_t> z_ids;
  ForEachObject(map_edit,
                [&z_ids](const ObjectPlace& place, const auto&) { z_ids.insert(place.z_id); });

  std::set<std::uint64_t> drawn;
  const std::uint32_t info_count = m_edit.DrawData.DrawInfoSet->GetElemCount();
  for (const CDrawAtterEdit* atter : m_edit.DrawData.DrawAtterSet->GetElems()) {
    drawn.insert(atter->ZId);
    EXPECT_FALSE(atter->DrawInfoIdxSet->DrawInfoIdx.empty()) << atter->ZId;
    for (const std::uint32_t index : atter->DrawInfoIdxSet->DrawInfoIdx)
      EXPECT_LT(index, info_count) << atter->ZId;
  }
  EXPECT_EQ(drawn, z_ids);
}

TEST_F(WorldStyle, HasEveryKindOfDrawInfoForSeveralScales) {
  std::set<std::string> kinds;
  const auto note = [&kinds]<class Info>(const Info* info) {
    if (info == nullptr) return;
    kinds.insert(typeid(Info).name());
    EXPECT_GE(info->ScData.size(), 2U) << typeid(Info).name();
    for (const auto& record : info->ScData) EXPECT_LT(record.DenomMin, record.DenomMax);
  };
  for (const auto& info : *m_edit.DrawData.DrawInfoSet->GetElemPtr()) {
    note(dynamic_cast<CLineDrawInfoEdit*>(info.get()));
    note(dynamic_cast<CPolySolidBrushDrawInfoEdit*>(info.get()));
    note(dynamic_cast<CPolyBmpBrushDrawInfoEdit*>(info.get()));
    note(dynamic_cast<CPolyShadowDrawInfoEdit*>(info.get()));
    note(dynamic_cast<CCmbLblDrawInfoEdit*>(info.get()));
    note(dynamic_cast<CRasLLDrawInfoEdit*>(info.get()));
    note(dynamic_cast<CRasMMDrawInfoEdit*>(info.get()));
  }
  EXPECT_EQ(kinds.size(), 7U);
}

TEST_F(WorldStyle, LabelsNameMarksOfTheSet) {
  const std::uint32_t mark_count = m_edit.DrawData.MarkDataSet->GetElemCount();
  EXPECT_EQ(mark_count, 2U);
  for (const auto& info : *m_edit.DrawData.DrawInfoSet->GetElemPtr()) {
    const auto* labels = dynamic_cast<CCmbLblDrawInfoEdit*>(info.get());
    EXPECT_TRUE(labels == nullptr || labels->MarkDataIdx < mark_count);
  }
}

TEST_F(WorldStyle, ReadAndWritten) { EXPECT_EQ(BytesOf(m_style), m_bytes); }

TEST_F(WorldStyle, ReadFromAnOpenFileAndWrittenToOne) {
  CMemFile source(m_bytes);
  CZor style;
  ASSERT_TRUE(style.Read(&source));
  const TemporaryFile file;
  ASSERT_TRUE(style.Write(file.Path()));
  EXPECT_EQ(BytesOf(file.Path()), m_bytes);
}

TEST_F(WorldStyle, CopiedAsChunks) {
  CZor copy;
  copy.DeepCopy(&m_style);
  EXPECT_EQ(BytesOf(copy), m_bytes);
}

TEST_F(WorldStyle, Cloned) {
  const std::unique_ptr<CZor> clone(m_style.Clone());
  EXPECT_EQ(BytesOf(*clone), m_bytes);
}

TEST_F(WorldStyle, TurnedIntoTheEditFormAndBack) { EXPECT_EQ(BytesOf(m_edit), m_bytes); }

TEST_F(WorldStyle, ClonedInTheEditForm) {
  const std::unique_ptr<CAbstractChunkEdit> clone(m_edit.DrawData.Clone());
  m_edit.DrawData.Release();
  m_edit.DrawData.DeepCopy(clone.get());
  EXPECT_EQ(BytesOf(m_edit), m_bytes);
}

TEST_F(WorldStyle, XmlLosesOnlyTheSpaceOfAFileName) {
  const TemporaryFile xml;
  CZorTextConverter converter;
  ASSERT_TRUE(converter.ConvertChunkToText(xml.Path(), m_style, 0));
  const std::unique_ptr<CZorEdit> read_back(converter.ConvertTextToZorEdit(xml.Path()));
  ASSERT_NE(read_back, nullptr);

  ASSERT_EQ(Relief().RasFileName, "hoggar relief.png");
  Relief().RasFileName = "hoggar&nbsp;relief.png";
  EXPECT_EQ(BytesOf(*read_back), BytesOf(m_edit));
}

TEST_F(WorldStyle, XmlWithoutSpacesInFileNamesComesBackWhole) {
  Relief().RasFileName = "hoggar_relief.png";
  const std::unique_ptr<CZor> style(m_edit.EditDataToZorData());
  const TemporaryFile file;
  CZorTextConverter converter;
  ASSERT_TRUE(converter.ConvertChunkToText(file.Path(), *style, 0));
  const std::unique_ptr<CZorEdit> edit(converter.ConvertTextToZorEdit(file.Path()));
  ASSERT_NE(edit, nullptr);
  const std::unique_ptr<CZor> read_back(edit->EditDataToZorData());
  EXPECT_EQ(BytesOf(*read_back), BytesOf(*style));
  EXPECT_EQ(XmlOf<CZorTextConverter>(*read_back), TextOf(file.Path()));
}

}  // namespace
}  // namespace qenzor::samples
