#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

#include "qenzor/core/fields.h"

namespace qenzor {

/// The front of both document files, 19 bytes. Reading takes any content as it stands.
struct FileInfo {
  /// Six identification characters, then CR, LF and the end-of-file mark 0x1A.
  std::array<char, 9> Ident{};
  /// kMagic in a well-formed file.
  std::uint16_t Magic = 0;
  // Version of the file's form, kept and not interpreted.
  std::uint16_t MajorVer = 0;
  std::uint16_t MinorVer = 0;
  /// Counted up by the author; kept, not interpreted.
  std::uint32_t Revision = 0;

  static constexpr std::uint16_t kMagic = 0x4041;
  static constexpr std::size_t kIdentLength = 6;

  /// The identification characters, up to the first zero.
  std::string_view GetIdent() const {
    const std::string_view characters(Ident.data(), kIdentLength);
    return characters.substr(0, characters.find('\0'));
  }
  /// Sets the first six characters of the text, zeros for those that it lacks, and what follows
  /// them in a well-formed file.
  void SetIdent(std::string_view text) {
    Ident = {};
    std::copy_n(text.begin(), std::min(text.size(), kIdentLength), Ident.begin());
    std::copy_n("\r\n\x1A", Ident.size() - kIdentLength, Ident.begin() + kIdentLength);
  }

  static constexpr auto Fields() {
    using D = FileInfo;
    return std::tuple{field_as<IdentCoding>("Ident", &D::Ident),
                      field_as<MagicCoding>("Magic", &D::Magic), field("MajorVer", &D::MajorVer),
                      field("MinorVer", &D::MinorVer), field("Revision", &D::Revision)};
  }

  bool operator==(const FileInfo&) const = default;
};

}  // namespace qenzor
