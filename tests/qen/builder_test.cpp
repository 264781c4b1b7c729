#include "qenzor/qen/builder.h"

#include <gtest/gtest.h>

#include "qenzor/qen/line_obj.h"
#include "qenzor/qen/url_info.h"
#include "qenzor/qen/walk.h"

namespace {

using namespace qenzor;

/// Where the map's objects stand, as segment/layer/z-id.
std::string PlacesOf(const CQenEdit& map) {
  std::string places;
  ForEachObject(map, [&](auto& segment, auto& layer, auto& z_id_obj, auto&) {
    places += std::to_string(segment.MeshSegmentNo) + '/' + std::to_string(layer.LayerNo) + '/' +
              std::to_string(z_id_obj.ZId) + ' ';
  });
  return places;
}

void AddLine(CMapBuilder& builder, std::uint16_t segment, std::uint16_t layer, std::uint64_t id) {
  builder.GetObjects(segment, layer, id).Append(std::make_unique<CLineObjEdit>());
}

TEST(MapBuilder, MakesWhatIsMissingBehindWhatIsThere) {
  CQenEdit map(QenFileInfo::Default());
  CMapBuilder builder(map);
  AddLine(builder, 2, 1, 7);
  AddLine(builder, 1, 1, 7);
  AddLine(builder, 2, 1, 7);
  AddLine(builder, 2, 0, 7);
  AddLine(builder, 2, 1, 6);
  EXPECT_EQ(PlacesOf(map), "2/1/7 2/1/7 2/1/6 2/0/7 1/1/7 ");
  EXPECT_EQ(map.MapData->MeshSegmentSet->size(), 2U);
}

TEST(MapBuilder, FindsWhatTheMapHasFirst) {
  CQenEdit map;
  {
    CMapBuilder builder(map);
    AddLine(builder, 1, 1, 7);
    // Another z-id object with the same number.
    auto& layer = *map.MapData->MeshSegmentSet->GetElem(0)->LayerSet->GetElem(0);
    layer.ZIdObjSet->Append(std::make_unique<CZIdObjEdit>()).ZId = 7;
  }
  CMapBuilder builder(map);
  AddLine(builder, 1, 1, 7);
  EXPECT_EQ(PlacesOf(map), "1/1/7 1/1/7 ");
  EXPECT_EQ(builder.GetObjects(1, 1, 7).size(), 2U);
}

TEST(AddLink, AttachesALinkBehindThoseThatAreThere) {
  CLineObjEdit line;
  AddLink(line, u"http://a/");
  AddLink(line, u"http://b/");
  ASSERT_EQ(line.AddedObjInfoSet->size(), 2U);
  const auto* link = class_cast<CUrlInfoEdit>(line.AddedObjInfoSet->GetElem(1));
  ASSERT_NE(link, nullptr);
  EXPECT_EQ(link->Text, u"http://b/");
}

TEST(QenFileInfo, HasTheMeshOfAnotherOnlyWhereAllOfTheMeshIsTheSame) {
  const QenFileInfo info = QenFileInfo::Default();
  QenFileInfo other = info;
  other.Revision = 5;
  EXPECT_TRUE(info.HasMeshOf(other));
  other.IncRect.right = 1;
  EXPECT_FALSE(info.HasMeshOf(other));
  for (const auto number :
       {&QenFileInfo::SegmentNumX, &QenFileInfo::SegmentNumY, &QenFileInfo::CompCoef}) {
    other = info;
    other.*number += 1;
    EXPECT_FALSE(info.HasMeshOf(other));
  }
  other = info;
  other.GeoCoodinate = 1;
  EXPECT_FALSE(info.HasMeshOf(other));
}

}  // namespace
