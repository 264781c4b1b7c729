#pragma once

#include <utility>

#include "qenzor/check/check.h"
#include "qenzor/check/finding_code_impl.h"

namespace qenzor::check {

/// What checks report to: counts, leaves out, and has a finding's text made only when it is told.
class CReporter {
 public:
  CReporter(BinaryKind kind, const CheckOptions& options, CFindingSink& sink)
      : m_kind(kind), m_options(options), m_sink(sink) {}
  virtual ~CReporter() = default;
  CReporter(const CReporter&) = delete;
  CReporter& operator=(const CReporter&) = delete;

  /// describe gives the reason.
  template <class Describe>
  void Report(Code code, std::uint64_t offset, const PathNode* path, Describe&& describe) {
    if (!Wants(code)) return;
    const FindingKind& kind = FindingKinds()[PositionOf(code)];
    const bool told = m_counts.Of(kind) < m_options.MaxDetails;
    m_counts.Add(kind, told);
    if (told) {
      Finding finding{&kind, offset, 0, 0, path, std::forward<Describe>(describe)()};
      FindLine(finding);
      m_stopped = !m_sink.Take(finding);
    }
    m_stopped = m_stopped || m_options.FirstErrorOnly;
  }

  /// Whether a finding of that kind would be counted.
  bool Wants(Code code) const {
    const FindingKind& kind = FindingKinds()[PositionOf(code)];
    return !m_stopped && (!m_options.FirstErrorOnly || kind.Severity == Severity::kError) &&
           !m_options.Skipped.contains(kind.Code);
  }
  /// How messages call a place in the file.
  virtual CString DescribePlace(std::uint64_t offset) const {
    return "byte " + std::to_string(offset);
  }
  /// Whether nothing more will be told.
  bool IsStopped() const noexcept { return m_stopped; }
  /// Of the document.
  BinaryKind GetKind() const noexcept { return m_kind; }
  const CheckOptions& GetOptions() const noexcept { return m_options; }
  const CCheckCounts& GetCounts() const noexcept { return m_counts; }

 protected:
  /// Fills in line and column where the document has lines.
  virtual void FindLine(Finding& /*finding*/) const {}

 private:
  BinaryKind m_kind;
  const CheckOptions& m_options;
  CFindingSink& m_sink;
  CCheckCounts m_counts;
  bool m_stopped = false;
};

}  // namespace qenzor::check
