// What FindUnstorable finds: whatever the bytes would lose, and nothing else.

#include "qenzor/storable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/one_object.h"
#include "tests/support/qen_generator.h"
#include "tests/support/zor_generator.h"

namespace qenzor::testing {

namespace {

CString Text(const std::optional<Unstorable>& found) {
  return found.has_value() ? found->ChunkPath + ": " + found->Reason : "";
}

std::unique_ptr<CQen> ChunkOf(CQenEdit& edit) {
  return std::unique_ptr<CQen>(edit.EditDataToQenData());
}
std::unique_ptr<CZor> ChunkOf(CZorEdit& edit) {
  return std::unique_ptr<CZor>(edit.EditDataToZorData());
}

/// Both forms of a document say the same.
template <class Edit>
void ExpectFound(Edit& edit, const CString& place, const CString& reason) {
  EXPECT_EQ(Text(FindUnstorable(edit)), place + ": " + reason);
  EXPECT_EQ(Text(FindUnstorable(*ChunkOf(edit))), place + ": " + reason);
}
template <class Edit>
void ExpectNothing(Edit& edit) {
  EXPECT_EQ(Text(FindUnstorable(edit)), "");
  EXPECT_EQ(Text(FindUnstorable(*ChunkOf(edit))), "");
}

CString Outside(const CString& tag, int value) {
  return tag + " has the coordinate " + std::to_string(value) +
         ", outside what can be stored (-32768 to 32767)";
}

TEST(Storable, WhatReadingGivesCanBeStored) {
  for (std::uint64_t seed = 0; seed < 200; ++seed) {
    const Bytes bytes = QenGenerator(seed).Document();
    CQen map;
    ASSERT_TRUE(map.Read(bytes.data(), bytes.size()));
    EXPECT_EQ(Text(FindUnstorable(map)), "") << seed;
    CQenEdit edit;
    edit.QenDataToEditData(&map);
    EXPECT_EQ(Text(FindUnstorable(edit)), "") << seed;
    const auto drawing = ZorGenerator(seed).Edit();
    EXPECT_EQ(Text(FindUnstorable(*drawing)), "") << seed;
  }
}

TEST(Storable, EveryCoordinateHas16Bits) {
  for (const auto& [x, y, bad] : std::vector<std::array<int, 3>>{
           {32767, -32768, 0}, {32768, 0, 32768}, {0, -32769, -32769}}) {
    std::vector<std::pair<CString, CQenEdit>> maps(5);
    auto put = [&, i = 0U](const CString& place, auto object) mutable {
      maps[i].first = place;
      PutIntoMap(maps[i++].second, std::move(object));
    };
    auto line = std::make_unique<CLineObjEdit>();
    line->Pt = {{0, 0}, {x, y}};
    put("LineObj[0]: Pt", std::move(line));
    auto poly = std::make_unique<CPolyObjEdit>();
    poly->Pt = {{x, y}};
    put("PolyObj[0]: Pt", std::move(poly));
    auto label = std::make_unique<CCmbLblObjEdit>();
    label->Pt = {x, y};
    put("CmbLblObj[0]: Pt", std::move(label));
    auto rect = std::make_unique<CRasLLObjEdit>();
    rect->Rect = {0, 0, x, y};
    put("RasLLObj[0]: Rect", std::move(rect));
    auto point = std::make_unique<CRasMMObjEdit>();
    point->Pt = {x, y};
    put("RasMMObj[0]: Pt", std::move(point));
    for (auto& [place, map] : maps) {
      const std::size_t colon = place.find(": ");
      if (bad == 0)
        ExpectNothing(map);
      else
        ExpectFound(map, kObjectPlace + place.substr(0, colon),
                    Outside(place.substr(colon + 2), bad));
      EXPECT_EQ(Text(FindUnstorable(map, StoredForm::kXml)), "");
    }
  }
}

TEST(Storable, AMarksCoordinatesHave16Bits) {
  CZorEdit drawing;
  CMarkDataEdit& mark = PutMark(drawing);
  mark.RectMin = {-32768, 32767};
  mark.MarkElem.push_back(std::make_unique<CMarkElemEdit>());
  mark.MarkElem.push_back(std::make_unique<CMarkElemEdit>());
  mark.MarkElem[1]->Pt = {{32767, -32768}};
  ExpectNothing(drawing);
  mark.MarkElem[1]->Pt.push_back({1, -40000});
  ExpectFound(drawing, "MarkDataSet/MarkData[0]/MarkElem[1]", Outside("Pt", -40000));
  mark.RectMin.y = 32768;
  ExpectFound(drawing, "MarkDataSet/MarkData[0]", Outside("RectMin", 32768));
}

TEST(Storable, TextsAreAsLongAsTheirCountTells) {
  CQenEdit map;
  auto label = std::make_unique<CCmbLblObjEdit>();
  CStringW& text = label->Text;
  PutIntoMap(map, std::move(label));
  text.assign(32766, u'x');
  ExpectNothing(map);
  text.assign(32767, u'x');
  ExpectFound(map, kObjectPlace + "CmbLblObj[0]",
              "Text of 32767 characters is too long to be stored (at most 32766)");
  EXPECT_EQ(Text(FindUnstorable(map, StoredForm::kXml)), "");

  CQenEdit linked;
  auto line = std::make_unique<CLineObjEdit>();
  line->AddedObjInfoSet = std::make_unique<CAddedObjInfoSetEdit>();
  auto* url = new CUrlInfoEdit;
  line->AddedObjInfoSet->AddElem(0, url);
  PutIntoMap(linked, std::move(line));
  url->Text.assign(40000, u'x');
  ExpectFound(linked, kObjectPlace + "LineObj[0]/AddedObjInfoSet/UrlInfo[0]",
              "Text of 40000 characters is too long to be stored (at most 32766)");
}

TEST(Storable, ATextThatHoldsANulEndsThere) {
  CQenEdit map;
  auto label = std::make_unique<CCmbLblObjEdit>();
  label->Text = CStringW(u"a\0b", 3);
  PutIntoMap(map, std::move(label));
  const CString reason = "Text holds a NUL, at which a stored text ends";
  ExpectFound(map, kObjectPlace + "CmbLblObj[0]", reason);
  EXPECT_EQ(Text(FindUnstorable(map, StoredForm::kXml)), kObjectPlace + "CmbLblObj[0]: " + reason);
}

TEST(Storable, BrushNamesAreAsLongAsReadingTakes) {
  CZorEdit drawing;
  auto brush = std::make_unique<CPolyBmpBrushDrawInfoEdit>();
  CString& name = brush->BrushFileName;
  PutDrawInfo(drawing, std::move(brush));
  name.assign(31, 'b');
  ExpectNothing(drawing);
  name.assign(32, 'b');
  ExpectFound(drawing, "DrawInfoSet/PolyBmpBrushDrawInfo[0]",
              "BrushFileName of 32 characters is too long to be stored (at most 31)");
  // Two bytes each in the code page.
  name.clear();
  for (int i = 0; i < 31; ++i) name += "\x88\xA0";
  ExpectNothing(drawing);
}

/// Whether a raster draw info with a name so long is the same after being written and read.
bool ComesBack(std::size_t length) {
  CZorEdit drawing;
  auto raster = std::make_unique<CRasLLDrawInfoEdit>();
  raster->RasFileName.assign(length, 'r');
  PutDrawInfo(drawing, std::move(raster));
  CMemFile file;
  CZor again;
  EXPECT_TRUE(ChunkOf(drawing)->Write(&file));
  const auto size = static_cast<std::uint32_t>(file.GetBytes().size());
  if (!again.Read(file.GetBytes().data(), size)) return false;
  const auto* info = class_cast<CRasLLDrawInfo>(again.DrawData.DrawInfoSet->GetElem(0));
  return info != nullptr && info->RasFileName.size() == length;
}

TEST(Storable, RasterNamesAreAsLongAsReadingFindsTheRecordsBehindThem) {
  CZorEdit drawing;
  auto raster = std::make_unique<CRasLLDrawInfoEdit>();
  CString& name = raster->RasFileName;
  PutDrawInfo(drawing, std::move(raster));
  name.assign(32762, 'r');
  ExpectNothing(drawing);
  EXPECT_TRUE(ComesBack(32762));
  name.assign(32763, 'r');
  ExpectFound(drawing, "DrawInfoSet/RasLLDrawInfo[0]",
              "has 65536 bytes in front of its records, too many to be read");
  EXPECT_FALSE(ComesBack(32763));
}

/// What an edit form's list loses on its way to a chunk is lost to XML too.
void ExpectTooLong(const CZorEdit& drawing, const CString& what) {
  EXPECT_EQ(Text(FindUnstorable(drawing)), what);
  EXPECT_EQ(Text(FindUnstorable(drawing, StoredForm::kXml)), what);
}

TEST(Storable, ListsAreAsLongAsTheirCountTells) {
  const CString most = " entries is too long to be stored (at most 65535)";
  CQenEdit map;
  auto line = std::make_unique<CLineObjEdit>();
  auto& points = line->Pt;
  PutIntoMap(map, std::move(line));
  points.resize(65535);
  ExpectNothing(map);
  points.resize(70000);
  EXPECT_EQ(Text(FindUnstorable(map)), kObjectPlace + "LineObj[0]: Pt of 70000" + most);

  CZorEdit records;
  auto info = std::make_unique<CLineDrawInfoEdit>();
  info->ScData.resize(65536);
  PutDrawInfo(records, std::move(info));
  ExpectTooLong(records, "DrawInfoSet/LineDrawInfo[0]: ScData of 65536" + most);

  CZorEdit elements;
  CMarkDataEdit& mark = PutMark(elements);
  mark.MarkElem.resize(65535);
  EXPECT_EQ(Text(FindUnstorable(elements)), "");
  mark.MarkElem.emplace_back();
  ExpectTooLong(elements, "MarkDataSet/MarkData[0]: MarkElem of 65536" + most);
}

TEST(Storable, IndicesAreAsManyAsTheirPlacesReach) {
  CZorEdit drawing;
  auto& indices = PutIndices(drawing);
  for (std::uint32_t i = 0; i < 65536; ++i) indices.push_back(i + 7);
  EXPECT_EQ(Text(FindUnstorable(drawing)), "");
  const auto whole = ChunkOf(drawing);
  const auto& stored = whole->DrawData.DrawAtterSet->GetElem(0)->DrawInfoIdxSet->DrawInfoIdx;
  EXPECT_TRUE(std::equal(stored.begin(), stored.end(), indices.begin(), indices.end()));
  indices.push_back(7);
  ExpectTooLong(drawing,
                "DrawAtterSet/DrawAtter[0]/DrawInfoIdxSet: DrawInfoIdx of 65537 entries is too "
                "long to be stored (at most 65536)");
}

TEST(Storable, AChunkMayHoldMoreIndices) {
  CZor drawing;
  drawing.DrawData.DrawAtterSet = std::make_unique<CDrawAtterSet>();
  auto atter = std::make_unique<CDrawAtter>();
  atter->DrawInfoIdxSet = std::make_unique<CDrawInfoIdxSet>();
  auto& indices = atter->DrawInfoIdxSet->DrawInfoIdx;
  drawing.DrawData.DrawAtterSet->SubChunkSet(0, atter.release());
  indices.Reset(65537);
  EXPECT_EQ(Text(FindUnstorable(drawing)), "");
  try {
    // 4 GiB that nobody touches: the chunk with its header takes 12 bytes more.
    indices.Reset(0x3FFFFFFF);
  } catch (const std::bad_alloc&) {
    GTEST_SKIP() << "4 GiB cannot be had here";
  }
  EXPECT_EQ(Text(FindUnstorable(drawing)),
            "DrawAtterSet/DrawAtter[0]/DrawInfoIdxSet: takes 4294967304 bytes, too many to be "
            "stored (at most 4294967295)");
  EXPECT_EQ(Text(FindUnstorable(drawing, StoredForm::kXml)), "");
}

TEST(Storable, AMapNeedsMapData) {
  const CString reason = ": there is no map data, without which a map cannot be stored";
  EXPECT_EQ(Text(FindUnstorable(CQen())), reason);
  EXPECT_EQ(Text(FindUnstorable(CQenEdit())), reason);
  EXPECT_EQ(Text(FindUnstorable(CQen(), StoredForm::kXml)), "");
  EXPECT_EQ(Text(FindUnstorable(CZor())), "");
}

TEST(Storable, PlacesThatHoldNothingArePassedOver) {
  CQenEdit map;
  PutPoint(map, {40000, 0});
  auto& segments = *map.MapData->MeshSegmentSet->GetElemPtr();
  segments.insert(segments.begin(), nullptr);
  EXPECT_EQ(Text(FindUnstorable(map)).substr(0, 30), "MeshSegmentSet/MeshSegment[1]/");
}

}  // namespace

}  // namespace qenzor::testing
