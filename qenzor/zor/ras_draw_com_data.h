#pragma once

#include "qenzor/core/fields.h"
#include "qenzor/platform/export.h"

namespace qenzor {

/// The fields of a raster draw info that hold at every scale: the raster's file and the colour that
/// is transparent.
template <class Form>
struct QENZOR_EXPORT RasDrawComData {
  typename Form::Name RasFileName;
  std::uint32_t ColorKey = 0;

  static constexpr auto Fields() {
    using D = RasDrawComData;
    return std::tuple{text("RasFileName", &D::RasFileName), color("ColorKey", &D::ColorKey)};
  }

  /// In memory the bytes up to the records are counted with 16 bits: of a name block so long that
  /// they exceed 65,535, sub-chunks are looked for 65,536 bytes before the end of the fields.
  static std::uint32_t MemoryConsumed(const void* data, std::uint32_t consumed) {
    constexpr std::uint32_t kFixedBytes = 8;
    const auto name_bytes =
        little_endian::Load<std::uint16_t>(static_cast<const std::uint8_t*>(data));
    return name_bytes + kFixedBytes > 0xFFFF ? consumed - 0x10000 : consumed;
  }
};

}  // namespace qenzor
