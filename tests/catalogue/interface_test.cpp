// What makes the classes pleasant to use, beside what the interface fixes.

#include <gtest/gtest.h>

#include <memory>
#include <span>
#include <string>
#include <vector>

#include "qenzor/catalogue.h"
#include "qenzor/core/unknown_chunk.h"

namespace {

using namespace qenzor;

template <class Set>
std::vector<std::uint64_t> ZIdsOf(Set& set) {
  std::vector<std::uint64_t> ids;
  for (auto* elem : set) ids.push_back(elem->ZId);
  return ids;
}

template <class SetEdit, class ElemEdit>
std::unique_ptr<SetEdit> SetOf(std::initializer_list<std::uint64_t> ids) {
  auto set = std::make_unique<SetEdit>();
  for (const std::uint64_t id : ids) {
    auto elem = std::make_unique<ElemEdit>();
    elem->ZId = id;
    set->SetSubChunkEdit(elem.release());
  }
  return set;
}

TEST(Sets, AreWalkedInAllFourKindsInTheirOrder) {
  const auto edit = SetOf<CZIdObjSetEdit, CZIdObjEdit>({7, 3, 5});
  const auto chunk = ToChunk(*edit);
  const std::vector<std::uint64_t> order{7, 3, 5};
  EXPECT_EQ(ZIdsOf(*edit), order);
  EXPECT_EQ(ZIdsOf(std::as_const(*edit)), order);
  EXPECT_EQ(ZIdsOf(*chunk), order);
  EXPECT_EQ(ZIdsOf(std::as_const(*chunk)), order);
  EXPECT_EQ(edit->size(), 3U);
  EXPECT_EQ(chunk->size(), 3U);
  EXPECT_TRUE(CZIdObjSet().empty());
  EXPECT_TRUE(CZIdObjSetEdit().empty());

  const auto keyed_edit = SetOf<CDrawAtterSetEdit, CDrawAtterEdit>({1, 20, 2});
  const auto keyed = ToChunk(*keyed_edit);
  // Key k of these is in bucket 16807 * k modulo 8191, and modulo 17 in the edit form.
  EXPECT_EQ(ZIdsOf(*keyed), (std::vector<std::uint64_t>{20, 1, 2}));
  EXPECT_EQ(ZIdsOf(std::as_const(*keyed)), (std::vector<std::uint64_t>{20, 1, 2}));
  EXPECT_EQ(ZIdsOf(*keyed_edit), (std::vector<std::uint64_t>{2, 1, 20}));
  EXPECT_EQ(ZIdsOf(std::as_const(*keyed_edit)), (std::vector<std::uint64_t>{2, 1, 20}));
  EXPECT_EQ(keyed->size(), 3U);
  EXPECT_EQ(keyed_edit->size(), 3U);
  EXPECT_TRUE(CDrawAtterSet().empty());
  EXPECT_TRUE(CDrawAtterSetEdit().empty());
}

TEST(Sets, GiveConstElementsWhereTheyAreConst) {
  using Chunks = decltype(*std::declval<const CLayerSet&>().begin());
  using Edits = decltype(*std::declval<const CLayerSetEdit&>().begin());
  using Keyed = decltype(*std::declval<const CDrawAtterSet&>().begin());
  EXPECT_TRUE((std::is_same_v<Chunks, const CLayerData*>));
  EXPECT_TRUE((std::is_same_v<Edits, const CLayerDataEdit*>));
  EXPECT_TRUE((std::is_same_v<Keyed, const CDrawAtter*>));
}

TEST(SetEdits, HandOwnershipOverInUniquePointers) {
  CObjSetEdit set;
  CLineObjEdit& line = set.Append(std::make_unique<CLineObjEdit>());
  CPolyObjEdit& poly = set.Insert(0, std::make_unique<CPolyObjEdit>());
  EXPECT_EQ(set.GetElem(0), &poly);
  EXPECT_EQ(set.GetElem(1), &line);
  const CRasMMObjEdit& raster = set.Insert(99, std::make_unique<CRasMMObjEdit>());
  EXPECT_EQ(set.GetElem(2), &raster);
  const std::unique_ptr<CAbstractObjEdit> taken = set.Take(1);
  EXPECT_EQ(taken.get(), &line);
  EXPECT_EQ(set.size(), 2U);
  EXPECT_EQ(set.Take(2), nullptr);
  EXPECT_EQ(set.EraseIf([&](const CAbstractObjEdit& elem) { return &elem == &poly; }), 1U);
  EXPECT_EQ(set.size(), 1U);
}

TEST(SetEdits, FileTakeAndEraseByKey) {
  const auto set = SetOf<CDrawAtterSetEdit, CDrawAtterEdit>({1, 2, 3});
  auto elem = std::make_unique<CDrawAtterEdit>();
  elem->ZId = 2;
  const CDrawAtterEdit* const added = elem.get();
  EXPECT_EQ(&set->Insert(std::move(elem)), added);
  EXPECT_EQ(set->size(), 3U);
  EXPECT_EQ(set->Take(2).get()->ZId, 2U);
  EXPECT_EQ(set->Take(2), nullptr);
  EXPECT_EQ(set->EraseIf([](const CDrawAtterEdit& atter) { return atter.ZId > 1; }), 1U);
  EXPECT_EQ(ZIdsOf(*set), std::vector<std::uint64_t>{1});
}

TEST(Conversion, KeepsTheStaticTypeAndTheClass) {
  CPolyObj poly;
  poly.Height = 4;
  const CAbstractObj& object = poly;
  const std::unique_ptr<CAbstractObjEdit> edit = ToEdit(object);
  ASSERT_NE(class_cast<CPolyObjEdit>(edit.get()), nullptr);
  const std::unique_ptr<CAbstractObj> back = ToChunk(*edit);
  EXPECT_TRUE(*back == poly);
  EXPECT_TRUE(*CloneOf(object) == poly);
  EXPECT_EQ(ToEdit(CUnKnownChunk()), nullptr);
}

TEST(CountedArray, TakesASpanAndIsOne) {
  CLineObj line;
  const std::vector<CPoint> points{{1, 2}, {3, 4}};
  ASSERT_TRUE(line.Pt.Assign(points));
  const std::span<const CPoint> seen = line.Pt;
  EXPECT_EQ(std::vector<CPoint>(seen.begin(), seen.end()), points);
  EXPECT_FALSE(line.Pt.Assign(std::vector<CPoint>(65536)));
  EXPECT_EQ(line.Pt.size(), 2U);
}

TEST(CountedArray, ResetGivesZeros) {
  CDrawInfoIdxSet set;
  for (int i = 0; i < 2; ++i) {
    set.DrawInfoIdx.Reset(100);
    for (std::uint32_t& index : set.DrawInfoIdx) {
      EXPECT_EQ(index, 0U);
      index = 0xFFFFFFFF;
    }
    set.DrawInfoIdx.clear();
  }
}

TEST(Label, NamesItsOriginsAndSetsItsFlags) {
  CCmbLblObjEdit label;
  label.CtrlFlgs = 0xFF80;
  label.SetLabelOrgPosKind(LabelOrginPosKind::kTopRight);
  EXPECT_EQ(label.CtrlFlgs, 0xFF85);
  EXPECT_EQ(label.GetLabelOrgPosKind(), LabelOrginPosKind::kTopRight);
  EXPECT_EQ(label.GetLabelAlign(), LabelAlign::kRight);
  label.SetLabelOrgPosKind(LabelOrginPosKind::kCenter);
  EXPECT_EQ(label.CtrlFlgs, 0xFF89);
  EXPECT_EQ(label.GetLabelAlign(), LabelAlign::kCenter);
  label.SetLabelOrgPosKind(LabelOrginPosKind::kBottomLeft);
  EXPECT_EQ(label.GetLabelAlign(), LabelAlign::kLeft);
  label.SetFontVirtical(true);
  label.SetRestrainShowLabel(true);
  label.SetRestrainShowMark(true);
  EXPECT_EQ(label.CtrlFlgs, 0xFFF1);
  label.SetRestrainShowLabel(false);
  EXPECT_EQ(label.CtrlFlgs, 0xFFD1);
  EXPECT_TRUE(label.IsFontVirtical() && label.IsRestrainShowMark());
  EXPECT_FALSE(label.IsRestrainShowLabel());
}

TEST(LabelDrawInfo, SetsItsFlags) {
  CCmbLblDrawInfoEdit info;
  info.SetShowLabel(true);
  info.SetShowMark(true);
  info.SetLabelShaded(true);
  EXPECT_EQ(info.CtrlFlgs, 3);
  EXPECT_EQ(info.FontCtrl, 1);
  info.SetShowLabel(false);
  EXPECT_EQ(info.CtrlFlgs, 2);
  EXPECT_TRUE(info.IsShowMark());
  info.SetFrameKind(static_cast<CmbLblFrameKind>(9));
  EXPECT_EQ(info.FrameCtrl, 9);
}

TEST(FileInfo, HasADefaultThatIsWellFormed) {
  const QenFileInfo map = QenFileInfo::Default();
  EXPECT_EQ(std::string(map.Ident.data(), 9), "QENMAP\r\n\x1A");
  EXPECT_EQ(map.Magic, 0x4041);
  EXPECT_EQ(map.SegmentNumX, 1);
  const ZorFileInfo style = DefaultZorFileInfo();
  EXPECT_EQ(style.GetIdent(), "ZORDRW");
  EXPECT_EQ(style.Magic, 0x4041);
}

TEST(FileInfo, TakesAnIdentificationOfAnyLength) {
  FileInfo info;
  info.SetIdent("AB");
  EXPECT_EQ(std::string(info.Ident.data(), 9), std::string("AB\0\0\0\0\r\n\x1A", 9));
  EXPECT_EQ(info.GetIdent(), "AB");
  info.SetIdent("ABCDEFGH");
  EXPECT_EQ(info.GetIdent(), "ABCDEF");
}

}  // namespace
