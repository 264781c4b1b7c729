#pragma once

#include <optional>
#include <span>

#include "qenzor/check/content_impl.h"
#include "qenzor/check/reporter_impl.h"

namespace qenzor::check {

/// Reports what does not come back when a binary document is written as XML and read again.
class CRoundTripChecks : public CContentListener {
 public:
  explicit CRoundTripChecks(CReporter& reporter) : m_reporter(reporter) {}

  /// Whether anything has been found, told or not.
  bool HasFound() const { return m_has_found; }

  bool WantsMore() const override { return true; }
  void Ident(const PathNode& node, std::string_view ident, std::uint64_t offset) override;
  void Integer(const PathNode& node, const FieldSchema& field, std::uint64_t value,
               std::uint64_t offset) override;
  void Real(const PathNode& node, const FieldSchema& field, float value,
            std::uint64_t offset) override;
  void Text(const PathNode& node, const FieldSchema& field, std::u16string_view text,
            std::uint64_t offset) override;

 private:
  template <class Describe>
  void Report(Code code, std::uint64_t offset, const PathNode& node, Describe&& describe) {
    m_has_found = true;
    m_reporter.Report(code, offset, &node, std::forward<Describe>(describe));
  }
  /// The text as it would come back but for its white space.
  CStringW Encoded(const FieldSchema& field, std::u16string_view text) const;
  void CheckCharacters(const PathNode& node, const FieldSchema& field, std::u16string_view text,
                       std::u16string_view encoded, std::uint64_t offset);

  CReporter& m_reporter;
  bool m_has_found = false;
};

/// The first byte in which a document that reading takes differs from what comes back when it is
/// written as XML in the encoding and read again; nothing when all bytes are the same.
std::optional<std::uint64_t> FindRoundTripDifference(std::span<const std::uint8_t> bytes,
                                                     BinaryKind kind, XmlEncoding encoding);

}  // namespace qenzor::check
