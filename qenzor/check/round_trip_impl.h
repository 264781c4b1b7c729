#pragma once

#include "qenzor/check/content_impl.h"
#include "qenzor/check/reporter_impl.h"

namespace qenzor::check {

/// Reports what does not come back when a binary document is written as XML and read again.
class CRoundTripChecks : public CContentListener {
 public:
  explicit CRoundTripChecks(CReporter& reporter) : m_reporter(reporter) {}

  bool WantsMore() const override { return true; }
  void Ident(const PathNode& node, std::string_view ident, std::uint64_t offset) override;
  void Integer(const PathNode& node, const FieldSchema& field, std::uint64_t value,
               std::uint64_t offset) override;
  void Real(const PathNode& node, const FieldSchema& field, float value,
            std::uint64_t offset) override;
  void Text(const PathNode& node, const FieldSchema& field, std::u16string_view text,
            std::uint64_t offset) override;

 private:
  CReporter& m_reporter;
};

}  // namespace qenzor::check
