#pragma once

#include <array>
#include <cstdint>

#include "qenzor/core/fields.h"

namespace qenzor {

/// The front of both document files, 19 bytes. Reading takes any content as it stands.
struct FileInfo {
  /// Six identification characters, then CR, LF and the end-of-file mark 0x1A.
  std::array<char, 9> Ident{};
  /// 0x4041 in a well-formed file.
  std::uint16_t Magic = 0;
  std::uint16_t MajorVer = 0;
  std::uint16_t MinorVer = 0;
  std::uint32_t Revision = 0;

  static constexpr auto Fields() {
    using D = FileInfo;
    return std::tuple{field_as<IdentCoding>("Ident", &D::Ident),
                      field_as<MagicCoding>("Magic", &D::Magic), field("MajorVer", &D::MajorVer),
                      field("MinorVer", &D::MinorVer), field("Revision", &D::Revision)};
  }
};

}  // namespace qenzor
