#pragma once

#include <concepts>
#include <cstdint>
#include <span>
#include <utility>
#include <variant>

#include "qenzor/core/read_options.h"
#include "qenzor/platform/file.h"
#include "qenzor/platform/strings.h"
#include "qenzor/text/xml_options.h"

namespace qenzor {

/// Where a document is read from: the file at a path, bytes, or an open file from its position on.
/// Bytes and file stay the caller's.
class CDocumentSource {
 public:
  // NOLINTBEGIN(google-explicit-constructor,hicpp-explicit-conversions): callers name the source
  template <std::convertible_to<CString> Path>
  CDocumentSource(const Path& path) : m_from(std::in_place_type<CString>, path) {}
  template <std::convertible_to<std::span<const std::uint8_t>> Bytes>
  CDocumentSource(const Bytes& bytes) : m_from(std::span<const std::uint8_t>(bytes)) {}
  CDocumentSource(CFile& file) : m_from(&file) {}
  // NOLINTEND(google-explicit-constructor,hicpp-explicit-conversions)

  const std::variant<CString, std::span<const std::uint8_t>, CFile*>& Get() const { return m_from; }

 private:
  std::variant<CString, std::span<const std::uint8_t>, CFile*> m_from;
};

/// How a document is saved.
struct SaveOptions {
  /// Whether the file and its folder have to have reached the disk before saving has succeeded.
  bool Sync = true;
  /// What XML is written in.
  XmlEncoding Encoding = XmlEncoding::kShiftJis;
};

}  // namespace qenzor
