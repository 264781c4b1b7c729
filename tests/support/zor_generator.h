#pragma once

#include <memory>
#include <random>
#include <set>
#include <string>

#include "qenzor/zor/cmb_lbl_draw_info.h"
#include "qenzor/zor/line_draw_info.h"
#include "qenzor/zor/poly_bmp_brush_draw_info.h"
#include "qenzor/zor/poly_shadow_draw_info.h"
#include "qenzor/zor/poly_solid_brush_draw_info.h"
#include "qenzor/zor/ras_ll_draw_info.h"
#include "qenzor/zor/ras_mm_draw_info.h"
#include "qenzor/zor/zor.h"

namespace qenzor::testing {

/// Makes draw data from a seed, in the edit form: with every class, each set present or absent, and
/// values that the file and the text form can both hold. Every draw attribute has an index set,
/// which the edit form adds where there is none.
class ZorGenerator {
 public:
  /// Whether draw attributes may share a bucket of their set, where their order depends on the
  /// history of the set.
  enum class Zids { kAny, kOneInABucket };

  explicit ZorGenerator(std::uint64_t seed, Zids zids = Zids::kAny)
      : m_random(seed), m_zids(zids) {}

  std::unique_ptr<CZorEdit> Edit() {
    auto edit = std::make_unique<CZorEdit>();
    edit->Ident = {'Z', 'O', 'R', 'M', 'A', 'P', '\r', '\n', '\x1A'};
    edit->Magic = 0x4041;
    Any(edit->MajorVer);
    Any(edit->MinorVer);
    Any(edit->Revision);
    CZorDrawDataEdit& draw_data = edit->DrawData;
    if (Number(5) != 0) draw_data.SetSubChunkEdit(AtterSet());
    if (Number(5) != 0) draw_data.SetSubChunkEdit(InfoSet());
    if (Number(5) != 0) draw_data.SetSubChunkEdit(MarkSet());
    return edit;
  }

  /// A number below the limit.
  std::uint32_t Number(std::uint32_t limit) {
    return static_cast<std::uint32_t>(m_random() % limit);
  }

 private:
  static constexpr std::uint32_t kBuckets = 8191;

  template <class... Values>
  void Any(Values&... values) {
    ((values = static_cast<Values>(m_random())), ...);
  }
  std::int16_t Coordinate() { return static_cast<std::int16_t>(Number(65536)); }
  /// Values that ten decimals hold exactly.
  float Float() { return static_cast<float>(Coordinate()) / 64; }
  /// Characters of the code page but for those whose escapes file names keep.
  CString Name(std::uint32_t longest) {
    static constexpr const char* kCharacters[] = {"a", "Z", "0",        "/",        "\\",
                                                  "&", "<", "\"",       "'",        ">",
                                                  ".", "~", "\x92\x6E", "\x95\x5C", "\xB1"};
    CString name;
    for (std::uint32_t left = Number(3) == 0 ? 0 : Number(longest + 1); left > 0; --left)
      name += kCharacters[Number(std::size(kCharacters))];
    return name;
  }
  template <class List, class Make>
  void Some(List& list, std::uint32_t limit, Make&& make) {
    for (std::uint32_t left = Number(limit); left > 0; --left) list.push_back(make());
  }

  /// Below the number of buckets every low half has a bucket of its own.
  std::uint64_t Zid() {
    if (m_zids == Zids::kAny)
      return Number(2) == 0 ? m_random() : (m_random() << 32U) | (Number(4) + Number(3) * kBuckets);
    std::uint32_t low = Number(kBuckets);
    while (!m_lows.insert(low).second) low = Number(kBuckets);
    return (m_random() << 32U) | low;
  }

  CDrawAtterSetEdit* AtterSet() {
    auto set = std::make_unique<CDrawAtterSetEdit>();
    for (std::uint32_t left = Number(30); left > 0; --left) {
      auto atter = std::make_unique<CDrawAtterEdit>();
      atter->ZId = Zid();
      atter->SetSubChunkEdit(new CDrawInfoIdxSetEdit);
      Some(atter->DrawInfoIdxSet->DrawInfoIdx, 4,
           [&] { return static_cast<std::uint32_t>(m_random()); });
      set->AddElem(atter.release());
    }
    return set.release();
  }

  CDrawInfoSetEdit* InfoSet() {
    auto set = std::make_unique<CDrawInfoSetEdit>();
    for (std::uint32_t left = Number(9); left > 0; --left) set->AddElem(Number(9), Info());
    return set.release();
  }

  CAbstractDrawInfoEdit* Info() {
    switch (Number(7)) {
      case 0:
        return Filled<CLineDrawInfoEdit>([&](auto& info) {
          Any(info.LineCode, info.Color);
          info.Aspect = Float();
          Some(info.ScData, 4, [&] {
            LineDrawScale record;
            Any(record.DenomMax, record.DenomMin, record.DenomMaxWidth, record.Extension);
            record.Sensitivity = Float();
            return record;
          });
        });
      case 1:
        return Filled<CPolySolidBrushDrawInfoEdit>([&](auto& info) {
          Any(info.Color);
          Some(info.ScData, 4, [&] { return Range<PolySolidBrushDrawScale>(); });
        });
      case 2:
        return Filled<CPolyBmpBrushDrawInfoEdit>([&](auto& info) {
          info.BrushFileName = Name(31);
          Some(info.ScData, 4, [&] { return Range<PolyBmpBrushDrawScale>(); });
        });
      case 3:
        return Filled<CPolyShadowDrawInfoEdit>([&](auto& info) {
          Any(info.ShadowColor);
          Some(info.ScData, 4, [&] {
            auto record = Range<PolyShadowDrawScale>();
            record.DenomMaxOffset = {Coordinate(), Coordinate()};
            record.Sensitivity = Float();
            return record;
          });
        });
      case 4:
        return Label();
      case 5:
        return Filled<CRasLLDrawInfoEdit>([&](auto& info) {
          info.RasFileName = Name(200);
          Any(info.ColorKey);
          Some(info.ScData, 4, [&] {
            auto record = Range<RasLLDrawScale>();
            Any(record.Alpha);
            return record;
          });
        });
      default:
        return Filled<CRasMMDrawInfoEdit>([&](auto& info) {
          info.RasFileName = Name(200);
          Any(info.ColorKey);
          Some(info.ScData, 4, [&] {
            auto record = Range<RasMMDrawScale>();
            Any(record.DenomMaxRasWidth);
            record.Sensitivity = Float();
            return record;
          });
        });
    }
  }

  template <class Edit, class Fill>
  static Edit* Filled(Fill&& fill) {
    auto edit = std::make_unique<Edit>();
    fill(*edit);
    return edit.release();
  }
  template <class Record>
  Record Range() {
    Record record;
    Any(record.DenomMax, record.DenomMin);
    return record;
  }

  CAbstractDrawInfoEdit* Label() {
    return Filled<CCmbLblDrawInfoEdit>([&](auto& info) {
      Any(info.CtrlFlgs, info.MarkDataIdx, info.FontId, info.FontCtrl, info.FrameCtrl);
      Any(info.FontColor, info.FrameColor, info.ShadowColor);
      Some(info.ScData, 4, [&] {
        auto record = Range<CmbLblDrawScale>();
        Any(record.DenomMaxFontSize, record.DenomMaxFrameMgn, record.DenomMaxFrameWidth,
            record.DenomMaxShadowOffset);
        record.DenomMaxMarkScale = Float();
        record.Sensitivity = Float();
        return record;
      });
    });
  }

  CMarkDataSetEdit* MarkSet() {
    auto set = std::make_unique<CMarkDataSetEdit>();
    for (std::uint32_t left = Number(4); left > 0; --left) {
      auto* mark = new CMarkDataEdit;
      set->AddElem(0, mark);
      mark->RectMin = {Coordinate(), Coordinate()};
      mark->RectMax = {Coordinate(), Coordinate()};
      Some(mark->MarkElem, 4, [&] {
        auto elem = std::make_unique<CMarkElemEdit>();
        Any(elem->ElemKind, elem->LineWidth, elem->Color);
        Some(elem->Pt, Number(6) == 0 ? 3000 : 6, [&] {
          return CPoint{Coordinate(), Coordinate()};
        });
        return elem;
      });
    }
    return set.release();
  }

  std::mt19937_64 m_random;
  Zids m_zids;
  std::set<std::uint32_t> m_lows;
};

}  // namespace qenzor::testing
