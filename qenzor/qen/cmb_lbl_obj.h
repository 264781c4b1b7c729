#pragma once

#include "qenzor/core/chunk_of.h"
#include "qenzor/edit/edit_of.h"
#include "qenzor/qen/abstract_obj.h"
#include "qenzor/text/converter_of.h"

namespace qenzor {

class CCmbLblObjEdit;
class CCmbLblObjTextConverter;

/// Where a label's origin stands relative to its position; the low four bits of CtrlFlgs, 0 to 15.
enum class LabelOrginPosKind : std::uint8_t {};

/// How a label's text is aligned, 0 to 2; follows from the origin position kind.
enum class LabelAlign : std::uint8_t {};

/// Data: CtrlFlgs (u16), Angle (f32), position (x and y, i16 each), LblOffsetFontRate (f32),
/// LblOffsetAngle (f32), text (u16 byte count, mark, UTF-16 units); 20 bytes and the text.
template <class Form>
struct QENZOR_EXPORT CmbLblObjData {
  std::uint16_t CtrlFlgs = 0;
  float Angle = 0;
  CPoint Pt;
  float LblOffsetFontRate = 0;
  float LblOffsetAngle = 0;
  /// Lines are parted by line feeds.
  CStringW Text;

  static constexpr auto Fields() {
    using D = CmbLblObjData;
    return std::tuple{field_as<KeptNumberCoding>("CtrlFlgs", &D::CtrlFlgs),
                      field("Angle", &D::Angle),
                      field("Pt", &D::Pt),
                      field("LblOffsetFontRate", &D::LblOffsetFontRate),
                      field("LblOffsetAngle", &D::LblOffsetAngle),
                      text("Text", &D::Text)};
  }
};

/// A label: a text at a point.
class QENZOR_EXPORT CCmbLblObj
    : public CChunkOf<CCmbLblObj, CAbstractObj, CmbLblObjData<ChunkForm>> {
 public:
  static constexpr std::uint32_t kChunkId = 5;
  static constexpr std::string_view kTag = "CmbLblObj";
  using EditClass = CCmbLblObjEdit;
  using ConverterClass = CCmbLblObjTextConverter;

  LabelOrginPosKind GetLabelOrgPosKind() const;
  LabelAlign GetLabelAlign() const;
  bool IsFontVirtical() const;
  bool IsRestrainShowLabel() const;
  bool IsRestrainShowMark() const;
};

class QENZOR_EXPORT CCmbLblObjEdit
    : public CEditOf<CCmbLblObjEdit, CCmbLblObj, CAbstractObjEdit, CmbLblObjData<EditForm>> {};

class QENZOR_EXPORT CCmbLblObjTextConverter : public CConverterOf<CCmbLblObj, CCmbLblObjEdit> {};

extern template class CChunkOf<CCmbLblObj, CAbstractObj, CmbLblObjData<ChunkForm>>;
extern template class CEditOf<CCmbLblObjEdit, CCmbLblObj, CAbstractObjEdit,
                              CmbLblObjData<EditForm>>;
extern template class CConverterOf<CCmbLblObj, CCmbLblObjEdit>;

}  // namespace qenzor
