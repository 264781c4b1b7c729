#pragma once

#include <gtest/gtest.h>

#include <string>

#include "qenzor/zor/cmb_lbl_draw_info.h"
#include "qenzor/zor/line_draw_info.h"
#include "qenzor/zor/poly_bmp_brush_draw_info.h"
#include "qenzor/zor/poly_shadow_draw_info.h"
#include "qenzor/zor/poly_solid_brush_draw_info.h"
#include "qenzor/zor/ras_ll_draw_info.h"
#include "qenzor/zor/ras_mm_draw_info.h"
#include "tests/support/zor_bytes.h"

namespace qenzor::testing {

/// What one draw info class looks like in its three forms, for tests of what all classes share: the
/// common fields and one record, as bytes and as XML lines (those inside "ComData" and "ScData",
/// each line with two tabs in front); and the common fields that an empty element gives.
template <class Chunk>
struct DrawInfoSample;

template <>
struct DrawInfoSample<CLineDrawInfo> {
  static constexpr std::uint32_t kId = id::kLineDrawInfo;
  static constexpr std::uint32_t kRecordSize = 16;
  static Bytes Com() { return Bytes().U8(9).U32(0x80FF0102).F32(-0.5F); }
  static Bytes Sc(std::uint32_t denom) {
    return Bytes().U32(denom).U32(7).U16(65535).F32(0.25F).U16(3);
  }
  static Bytes FreshCom() { return Bytes().U8(0).U32(0).F32(1); }
  static Bytes FreshEditCom() { return Bytes().U8(0).U32(0).F32(0); }
  static std::string ComXml() {
    return "\t\t<LineCode>9</LineCode>\r\n"
           "\t\t<Color A=\"128\" R=\"255\" G=\"1\" B=\"2\" />\r\n"
           "\t\t<Aspect>-0.5000000000</Aspect>\r\n";
  }
  static std::string ScXml() {
    return "\t\t<DenomMin>7</DenomMin>\r\n"
           "\t\t<DenomMaxWidth>65535</DenomMaxWidth>\r\n"
           "\t\t<Sensitivity>0.2500000000</Sensitivity>\r\n"
           "\t\t<Extension>3</Extension>\r\n";
  }
};

template <>
struct DrawInfoSample<CPolySolidBrushDrawInfo> {
  static constexpr std::uint32_t kId = id::kPolySolidBrushDrawInfo;
  static constexpr std::uint32_t kRecordSize = 8;
  static Bytes Com() { return Bytes().U32(0x01020304); }
  static Bytes Sc(std::uint32_t denom) { return Bytes().U32(denom).U32(7); }
  static Bytes FreshCom() { return Bytes().U32(0); }
  static Bytes FreshEditCom() { return FreshCom(); }
  static std::string ComXml() { return "\t\t<Color A=\"1\" R=\"2\" G=\"3\" B=\"4\" />\r\n"; }
  static std::string ScXml() { return "\t\t<DenomMin>7</DenomMin>\r\n"; }
};

template <>
struct DrawInfoSample<CPolyBmpBrushDrawInfo> {
  static constexpr std::uint32_t kId = id::kPolyBmpBrushDrawInfo;
  static constexpr std::uint32_t kRecordSize = 8;
  static Bytes Com() { return Bytes().Text(u"\u5730.bmp"); }
  static Bytes Sc(std::uint32_t denom) { return Bytes().U32(denom).U32(7); }
  static Bytes FreshCom() { return Bytes().U16(0); }
  static Bytes FreshEditCom() { return FreshCom(); }
  static std::string ComXml() { return "\t\t<BrushFileName>\x92\x6E.bmp</BrushFileName>\r\n"; }
  static std::string ScXml() { return "\t\t<DenomMin>7</DenomMin>\r\n"; }
};

template <>
struct DrawInfoSample<CPolyShadowDrawInfo> {
  static constexpr std::uint32_t kId = id::kPolyShadowDrawInfo;
  static constexpr std::uint32_t kRecordSize = 16;
  static Bytes Com() { return Bytes().U32(0xFFFEFDFC); }
  static Bytes Sc(std::uint32_t denom) {
    return Bytes().U32(denom).U32(7).I16(-3).I16(5).F32(0.25F);
  }
  static Bytes FreshCom() { return Bytes().U32(0); }
  static Bytes FreshEditCom() { return FreshCom(); }
  static std::string ComXml() {
    return "\t\t<ShadowColor A=\"255\" R=\"254\" G=\"253\" B=\"252\" />\r\n";
  }
  static std::string ScXml() {
    return "\t\t<DenomMin>7</DenomMin>\r\n"
           "\t\t<DenomMaxOffset x=\"-3\" y=\"5\" />\r\n"
           "\t\t<Sensitivity>0.2500000000</Sensitivity>\r\n";
  }
};

template <>
struct DrawInfoSample<CCmbLblDrawInfo> {
  static constexpr std::uint32_t kId = id::kCmbLblDrawInfo;
  static constexpr std::uint32_t kRecordSize = 24;
  static Bytes Com() {
    return Bytes()
        .U16(0x8003)
        .U32(4000000000)
        .U8(255)
        .U16(65534)
        .U8(5)
        .U32(0x01020304)
        .U32(5)
        .U32(0xFF000000);
  }
  static Bytes Sc(std::uint32_t denom) {
    return Bytes().U32(denom).U32(7).F32(1.5F).U16(10).U16(11).U16(65535).I16(-1).F32(0.25F);
  }
  static Bytes FreshCom() { return Bytes().U64(0).U64(0).U32(0).U16(0); }
  static Bytes FreshEditCom() { return FreshCom(); }
  static std::string ComXml() {
    return "\t\t<CtrlFlgs>32771</CtrlFlgs>\r\n"
           "\t\t<MarkDataIdx>4000000000</MarkDataIdx>\r\n"
           "\t\t<FontId>255</FontId>\r\n"
           "\t\t<FontCtrl>65534</FontCtrl>\r\n"
           "\t\t<FrameCtrl>5</FrameCtrl>\r\n"
           "\t\t<FontColor A=\"1\" R=\"2\" G=\"3\" B=\"4\" />\r\n"
           "\t\t<FrameColor A=\"0\" R=\"0\" G=\"0\" B=\"5\" />\r\n"
           "\t\t<ShadowColor A=\"255\" R=\"0\" G=\"0\" B=\"0\" />\r\n";
  }
  static std::string ScXml() {
    return "\t\t<DenomMin>7</DenomMin>\r\n"
           "\t\t<DenomMaxMarkScale>1.5000000000</DenomMaxMarkScale>\r\n"
           "\t\t<DenomMaxFontSize>10</DenomMaxFontSize>\r\n"
           "\t\t<DenomMaxFrameMgn>11</DenomMaxFrameMgn>\r\n"
           "\t\t<DenomMaxFrameWidth>65535</DenomMaxFrameWidth>\r\n"
           "\t\t<DenomMaxShadowOffset>-1</DenomMaxShadowOffset>\r\n"
           "\t\t<Sensitivity>0.2500000000</Sensitivity>\r\n";
  }
};

/// The common fields that the two raster draw infos have alike.
struct RasDrawInfoSample {
  static Bytes Com() { return Bytes().Text(u"a/\u8868.png").U32(0x00FFFFFF); }
  static Bytes FreshCom() { return Bytes().U16(0).U32(0); }
  static Bytes FreshEditCom() { return FreshCom(); }
  static std::string ComXml() {
    return "\t\t<RasFileName>a/\x95\x5C.png</RasFileName>\r\n"
           "\t\t<ColorKey A=\"0\" R=\"255\" G=\"255\" B=\"255\" />\r\n";
  }
};

template <>
struct DrawInfoSample<CRasLLDrawInfo> : RasDrawInfoSample {
  static constexpr std::uint32_t kId = id::kRasLLDrawInfo;
  static constexpr std::uint32_t kRecordSize = 9;
  static Bytes Sc(std::uint32_t denom) { return Bytes().U32(denom).U32(7).U8(200); }
  static std::string ScXml() { return "\t\t<DenomMin>7</DenomMin>\r\n\t\t<Alpha>200</Alpha>\r\n"; }
};

template <>
struct DrawInfoSample<CRasMMDrawInfo> : RasDrawInfoSample {
  static constexpr std::uint32_t kId = id::kRasMMDrawInfo;
  static constexpr std::uint32_t kRecordSize = 14;
  static Bytes Sc(std::uint32_t denom) { return Bytes().U32(denom).U32(7).U16(65535).F32(0.25F); }
  static std::string ScXml() {
    return "\t\t<DenomMin>7</DenomMin>\r\n"
           "\t\t<DenomMaxRasWidth>65535</DenomMaxRasWidth>\r\n"
           "\t\t<Sensitivity>0.2500000000</Sensitivity>\r\n";
  }
};

/// A whole draw info: common fields, then records whose greatest denominators are these.
template <class Chunk>
Bytes DrawInfoBytes(const std::vector<std::uint32_t>& denoms, const Bytes& com) {
  Bytes data = com;
  data.U16(static_cast<std::uint32_t>(denoms.size()));
  for (const std::uint32_t denom : denoms) data.Add(DrawInfoSample<Chunk>::Sc(denom));
  return testing::Chunk(DrawInfoSample<Chunk>::kId, data);
}

template <class Chunk>
Bytes DrawInfoBytes(const std::vector<std::uint32_t>& denoms) {
  return DrawInfoBytes<Chunk>(denoms, DrawInfoSample<Chunk>::Com());
}

/// The content of its element, at level 1.
template <class Chunk>
std::string DrawInfoXml(const std::vector<std::uint32_t>& denoms) {
  using Sample = DrawInfoSample<Chunk>;
  std::string xml = "\t<ComData>\r\n" + Sample::ComXml() + "\t</ComData>\r\n";
  for (const std::uint32_t denom : denoms)
    xml += "\t<ScData>\r\n\t\t<DenomMax>" + std::to_string(denom) + "</DenomMax>\r\n" +
           Sample::ScXml() + "\t</ScData>\r\n";
  return xml;
}

using EveryDrawInfo =
    ::testing::Types<CLineDrawInfo, CPolySolidBrushDrawInfo, CPolyBmpBrushDrawInfo,
                     CPolyShadowDrawInfo, CCmbLblDrawInfo, CRasLLDrawInfo, CRasMMDrawInfo>;

}  // namespace qenzor::testing
