#pragma once

#include <concepts>
#include <cstdint>
#include <span>
#include <string_view>
#include <utility>
#include <variant>

#include "qenzor/core/read_options.h"
#include "qenzor/platform/file.h"
#include "qenzor/platform/strings.h"
#include "qenzor/text/xml_options.h"

namespace qenzor {

/// Where a document is read from: the file at a path, bytes, or an open file from its position on.
/// All of them stay the caller's, who has them as long as this is used.
class CDocumentSource {
 public:
  using Any = std::variant<std::string_view, CString, std::span<const std::uint8_t>, CFile*>;

  // NOLINTBEGIN(google-explicit-constructor,hicpp-explicit-conversions): callers name the source
  template <std::convertible_to<CString> Path>
  CDocumentSource(const Path& path) : m_from(PathOf(path)) {}
  template <std::convertible_to<std::span<const std::uint8_t>> Bytes>
  CDocumentSource(const Bytes& bytes) : m_from(std::span<const std::uint8_t>(bytes)) {}
  CDocumentSource(CFile& file) : m_from(&file) {}
  // NOLINTEND(google-explicit-constructor,hicpp-explicit-conversions)

  const Any& Get() const { return m_from; }

 private:
  /// Only what is no text itself is copied: nothing is to be thrown before reading has begun.
  template <class Path>
  static Any PathOf(const Path& path) {
    if constexpr (std::convertible_to<Path, std::string_view>)
      return std::string_view(path);
    else
      return CString(path);
  }

  Any m_from;
};

/// How a document is saved.
struct SaveOptions {
  /// Whether the file and its folder have to have reached the disk before saving has succeeded.
  bool Sync = true;
  /// What XML is written in.
  XmlEncoding Encoding = XmlEncoding::kShiftJis;
};

}  // namespace qenzor
