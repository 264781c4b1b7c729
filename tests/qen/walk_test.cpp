#include "qenzor/qen/walk.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

#include "qenzor/qen/line_obj.h"
#include "qenzor/qen/poly_obj.h"

namespace {

using namespace qenzor;

/// A map of two segments: layers 5 and 6 in the first, 7 in the second, which holds nothing else.
std::unique_ptr<CQen> MakeMap() {
  CQenEdit edit;
  edit.MapData = std::make_unique<CQenMapDataEdit>();
  edit.MapData->MeshSegmentSet = std::make_unique<CMeshSegmentSetEdit>();
  for (std::uint16_t number = 1; number <= 2; ++number) {
    auto& segment = edit.MapData->MeshSegmentSet->Append(std::make_unique<CMeshSegmentEdit>());
    segment.MeshSegmentNo = number;
    segment.LayerSet = std::make_unique<CLayerSetEdit>();
  }
  for (std::uint16_t number = 5; number <= 6; ++number) {
    auto& layer = edit.MapData->MeshSegmentSet->GetElem(0)->LayerSet->Append(
        std::make_unique<CLayerDataEdit>());
    layer.LayerNo = number;
    layer.ZIdObjSet = std::make_unique<CZIdObjSetEdit>();
    auto& z_id_obj = layer.ZIdObjSet->Append(std::make_unique<CZIdObjEdit>());
    z_id_obj.ZId = number * 10U;
    z_id_obj.ObjSet = std::make_unique<CObjSetEdit>();
    z_id_obj.ObjSet->Append(std::make_unique<CLineObjEdit>());
    z_id_obj.ObjSet->Append(std::make_unique<CPolyObjEdit>());
  }
  edit.MapData->MeshSegmentSet->GetElem(1)->LayerSet->Append(std::make_unique<CLayerDataEdit>());
  return ToDocument(edit);
}

TEST(ForEachObject, TellsEachObjectWithWhatItStandsIn) {
  const auto map = MakeMap();
  std::string seen;
  ForEachObject(*map, [&](const CMeshSegment& segment, const CLayerData& layer,
                          const CZIdObj& z_id_obj, const CAbstractObj& object) {
    seen += std::to_string(segment.MeshSegmentNo) + '/' + std::to_string(layer.LayerNo) + '/' +
            std::to_string(z_id_obj.ZId) + '/' + std::string(object.GetRuntimeClass().Name) + ' ';
  });
  EXPECT_EQ(seen, "1/5/50/LineObj 1/5/50/PolyObj 1/6/60/LineObj 1/6/60/PolyObj ");
}

TEST(ForEachObject, MayChangeTheObjectsOfAMapThatIsNotConst) {
  const auto map = MakeMap();
  ForEachObject(*map, [](auto&, auto&, auto&, CAbstractObj& object) {
    if (auto* poly = class_cast<CPolyObj>(&object)) poly->Height = 3;
  });
  int heights = 0;
  ForEachObject(std::as_const(*map), [&](auto&, auto&, auto&, auto& object) {
    static_assert(std::is_const_v<std::remove_reference_t<decltype(object)>>);
    if (const auto* poly = class_cast<CPolyObj>(&object)) heights += poly->Height;
  });
  EXPECT_EQ(heights, 6);
}

TEST(ForEachObject, GivesThoseOfAClassInEitherForm) {
  const auto map = MakeMap();
  std::string seen;
  ForEachObject<CPolyObj>(std::as_const(*map), [&](auto&, auto& layer, auto&, auto& poly) {
    static_assert(std::is_same_v<decltype(poly), const CPolyObj&>);
    seen += std::to_string(layer.LayerNo) + ' ';
  });
  const auto edit = ToEdit(*map);
  ForEachObject<CPolyObj>(*edit, [&](auto&, auto& layer, auto&, CPolyObjEdit& poly) {
    poly.Height = 1;
    seen += std::to_string(layer.LayerNo) + ' ';
  });
  EXPECT_EQ(seen, "5 6 5 6 ");
}

TEST(ForEachLayer, TellsEachLevelOfEitherForm) {
  const auto map = MakeMap();
  const auto edit = ToEdit(*map);
  std::string seen;
  const auto tell = [&](const auto&, const auto& layer) { seen += std::to_string(layer.LayerNo); };
  ForEachLayer(*map, tell);
  ForEachLayer(std::as_const(*edit), tell);
  EXPECT_EQ(seen, "560560");
  int count = 0;
  ForEachSegment(*edit, [&](CMeshSegmentEdit&) { ++count; });
  ForEachZIdObj(*edit, [&](auto&, auto&, CZIdObjEdit&) { count += 10; });
  EXPECT_EQ(count, 22);
}

TEST(ForEachObject, FindsNothingInAMapWithoutMapData) {
  const CQen map;
  ForEachObject(map, [](auto&, auto&, auto&, auto&) { FAIL(); });
}

}  // namespace
