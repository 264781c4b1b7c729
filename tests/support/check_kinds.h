#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "qenzor/check/check.h"
#include "qenzor/qen_xml.h"
#include "qenzor/storable.h"
#include "qenzor/zor_xml.h"
#include "tests/support/bytes.h"

namespace qenzor::testing {

// What tests of checks hold their findings against: what becomes of a document that is read.

struct QenChecked {
  static constexpr BinaryKind kKind = BinaryKind::kQen;
  using Document = CQen;
  static auto Parse(std::string_view text, const XmlReadOptions& options = {}) {
    return ParseQenXml(text, options);
  }
  static auto ToXml(CQen& document) { return QenToXml(document); }
  static CQen* Take(CQenEdit& edit) { return edit.TakeQenData(); }
};
struct ZorChecked {
  static constexpr BinaryKind kKind = BinaryKind::kZor;
  using Document = CZor;
  static auto Parse(std::string_view text, const XmlReadOptions& options = {}) {
    return ParseZorXml(text, options);
  }
  static auto ToXml(CZor& document) { return ZorToXml(document); }
  static CZor* Take(CZorEdit& edit) { return edit.TakeZorData(); }
};

/// The document that XML makes; null where it is refused, or could not be stored.
template <class Kind>
std::unique_ptr<typename Kind::Document> MakeOf(std::string_view xml) {
  auto edit = Kind::Parse(xml);
  if (!edit || FindUnstorable(*edit).has_value()) return nullptr;
  return std::unique_ptr<typename Kind::Document>(Kind::Take(*edit));
}

template <class Document>
Bytes BytesOf(Document& document) {
  CMemFile file;
  if (!document.Write(&file)) return {};
  return Bytes(file.GetBytes());
}

template <class Kind>
bool IsXmlTaken(std::string_view xml) {
  return MakeOf<Kind>(xml) != nullptr;
}
inline bool IsXmlTaken(std::string_view xml, BinaryKind kind) {
  return kind == BinaryKind::kQen ? IsXmlTaken<QenChecked>(xml) : IsXmlTaken<ZorChecked>(xml);
}
inline bool IsRead(const Bytes& bytes, BinaryKind kind) {
  return kind == BinaryKind::kQen ? CQen().Read(bytes.data(), bytes.size())
                                  : CZor().Read(bytes.data(), bytes.size());
}

}  // namespace qenzor::testing
