#pragma once

#include "qenzor/core/data_hooks.h"
#include "qenzor/core/fields.h"
#include "qenzor/platform/export.h"

namespace qenzor {

/// The fields of a raster draw info that hold at every scale: the raster's file and the colour that
/// is transparent.
template <class Form>
struct QENZOR_EXPORT RasDrawCommon {
  /// Kept, not opened.
  typename Form::Name RasFileName;
  /// 0xAARRGGBB.
  std::uint32_t ColorKey = 0;

  static constexpr auto Fields() {
    using D = RasDrawCommon;
    return std::tuple{text("RasFileName", &D::RasFileName), color("ColorKey", &D::ColorKey)};
  }

  struct Hooks final : DataHooks<RasDrawCommon> {
    /// In memory the bytes in front of the records are counted with 16 bits: behind a name block so
    /// long that they exceed 65,535, sub-chunks are looked for 65,536 bytes before the end of the
    /// fields.
    std::uint32_t MemoryConsumed(std::uint32_t before, std::uint32_t consumed) const override {
      return consumed - before + static_cast<std::uint16_t>(before);
    }
  };
};

}  // namespace qenzor
