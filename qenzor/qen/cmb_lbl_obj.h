#pragma once

#include <array>

#include "qenzor/core/chunk_of.h"
#include "qenzor/core/flags.h"
#include "qenzor/edit/edit_of.h"
#include "qenzor/qen/abstract_obj.h"
#include "qenzor/text/converter_of.h"

namespace qenzor {

class CCmbLblObjEdit;
class CCmbLblObjTextConverter;

/// Which point of a label's text lies at its origin; the low four bits of CtrlFlgs. 0 and 10 to 15
/// have no name.
enum class LabelOrginPosKind : std::uint8_t {
  kBottomLeft = 1,
  kBottomCenter,
  kBottomRight,
  kMiddleRight,
  kTopRight,
  kTopCenter,
  kTopLeft,
  kMiddleLeft,
  kCenter,
};

/// How a label's text is aligned; follows from the origin position kind.
enum class LabelAlign : std::uint8_t { kLeft, kCenter, kRight };

/// Data: CtrlFlgs (u16), Angle (f32), position (x and y, i16 each), LblOffsetFontRate (f32),
/// LblOffsetAngle (f32), text (u16 byte count, mark, UTF-16 units); 20 bytes and the text.
template <class Form>
struct QENZOR_EXPORT CmbLblObjFields {
  /// Bits 0 to 3: origin position kind; 4: vertical font; 5: the label is suppressed; 6: the mark
  /// is. The other bits are kept.
  std::uint16_t CtrlFlgs = 0;
  /// The turn of the label, in degrees; kept, not interpreted here.
  float Angle = 0;
  /// Where the label is anchored, in map units.
  CPoint Pt;
  /// How far the label stands from that, as a rate of the font size, and in which direction, in
  /// degrees; kept, not interpreted here.
  float LblOffsetFontRate = 0;
  float LblOffsetAngle = 0;
  /// Lines are parted by line feeds.
  CStringW Text;

  static constexpr auto Fields() {
    using D = CmbLblObjFields;
    return std::tuple{field_as<KeptNumberCoding>("CtrlFlgs", &D::CtrlFlgs),
                      field("Angle", &D::Angle),
                      field("Pt", &D::Pt),
                      field("LblOffsetFontRate", &D::LblOffsetFontRate),
                      field("LblOffsetAngle", &D::LblOffsetAngle),
                      text("Text", &D::Text)};
  }

  LabelOrginPosKind GetLabelOrgPosKind() const {
    return static_cast<LabelOrginPosKind>(CtrlFlgs & 0xF);
  }
  void SetLabelOrgPosKind(LabelOrginPosKind kind) {
    CtrlFlgs = static_cast<std::uint16_t>((CtrlFlgs & ~0xF) | (static_cast<int>(kind) & 0xF));
  }
  LabelAlign GetLabelAlign() const {
    constexpr std::array<std::uint8_t, 16> kAlignOfKind{0, 0, 1, 2, 2, 2, 1, 0, 0, 1};
    return static_cast<LabelAlign>(kAlignOfKind[CtrlFlgs & 0xF]);
  }
  bool IsFontVirtical() const { return HasFlag(CtrlFlgs, 4); }
  void SetFontVirtical(bool on) { SetFlag(CtrlFlgs, 4, on); }
  bool IsRestrainShowLabel() const { return HasFlag(CtrlFlgs, 5); }
  void SetRestrainShowLabel(bool on) { SetFlag(CtrlFlgs, 5, on); }
  bool IsRestrainShowMark() const { return HasFlag(CtrlFlgs, 6); }
  void SetRestrainShowMark(bool on) { SetFlag(CtrlFlgs, 6, on); }
};

/// A label: a text at a point.
class QENZOR_EXPORT CCmbLblObj
    : public CChunkOf<CCmbLblObj, CAbstractObj, CmbLblObjFields<ChunkForm>> {
 public:
  static constexpr std::uint32_t kChunkId = 5;
  static constexpr std::string_view kTag = "CmbLblObj";
  using EditClass = CCmbLblObjEdit;
  using ConverterClass = CCmbLblObjTextConverter;
};

class QENZOR_EXPORT CCmbLblObjEdit : public CEditOf<CCmbLblObj> {};

class QENZOR_EXPORT CCmbLblObjTextConverter : public CConverterOf<CCmbLblObj> {};

extern template class CChunkOf<CCmbLblObj, CAbstractObj, CmbLblObjFields<ChunkForm>>;

}  // namespace qenzor
