#pragma once

#include "qenzor/zor/draw_info_of.h"

namespace qenzor {

class CPolyBmpBrushDrawInfoEdit;
class CPolyBmpBrushDrawInfoTextConverter;

/// The longest name block, mark included: 31 characters.
inline constexpr std::uint32_t kMaxBrushNameBytes = 64;

/// One range of scales, 8 bytes.
struct QENZOR_EXPORT PolyBmpBrushDrawScale {
  // The denominators of the range, the N of 1:N.
  std::uint32_t DenomMax = 0;
  std::uint32_t DenomMin = 0;

  static constexpr auto Fields() {
    using D = PolyBmpBrushDrawScale;
    return std::tuple{field("DenomMax", &D::DenomMax), field("DenomMin", &D::DenomMin)};
  }

  bool operator==(const PolyBmpBrushDrawScale&) const = default;
};
using PolyBmpBrushDrawScData = PolyBmpBrushDrawScale;

/// The fields that hold at every scale.
template <class Form>
struct QENZOR_EXPORT PolyBmpBrushDrawCommon {
  /// The bitmap's file; kept, not opened.
  typename Form::Name BrushFileName;

  static constexpr auto Fields() {
    using D = PolyBmpBrushDrawCommon;
    return std::tuple{text("BrushFileName", &D::BrushFileName, kMaxBrushNameBytes)};
  }
};

/// How polygons are filled with a bitmap, which is named by its file.
/// Data: name (u16 byte count, mark, UTF-16 units), count (u16), records; 4 + 8 * count bytes and
/// the name. A name block longer than kMaxBrushNameBytes fails to read.
class QENZOR_EXPORT CPolyBmpBrushDrawInfo
    : public CDrawInfoOf<CPolyBmpBrushDrawInfo, PolyBmpBrushDrawCommon, PolyBmpBrushDrawScale> {
 public:
  static constexpr std::uint32_t kChunkId = 27;
  static constexpr std::string_view kTag = "PolyBmpBrushDrawInfo";
  using EditClass = CPolyBmpBrushDrawInfoEdit;
  using ConverterClass = CPolyBmpBrushDrawInfoTextConverter;
};

class QENZOR_EXPORT CPolyBmpBrushDrawInfoEdit : public CEditOf<CPolyBmpBrushDrawInfo> {};

class QENZOR_EXPORT CPolyBmpBrushDrawInfoTextConverter
    : public CDrawInfoConverterOf<CPolyBmpBrushDrawInfo> {};

extern template class CChunkOf<
    CPolyBmpBrushDrawInfo, CAbstractDrawInfo,
    DrawInfoFields<PolyBmpBrushDrawCommon, PolyBmpBrushDrawScale, ChunkForm>>;

}  // namespace qenzor
