#pragma once

#include <array>
#include <string>

#include "qenzor/check/check.h"
#include "report.h"

namespace tool {

/// Prints what is found in files, as it is found, to standard output: lines for people, one JSON
/// document, or a line of JSON for each finding. Throws CFailure when standard output refuses it.
class CFindingPrinter : public qenzor::CFindingSink {
 public:
  enum class Form { kText, kJson, kJsonLines };

  explicit CFindingPrinter(Form form) : m_form(form) {}

  /// The findings that follow are of this file; kind is empty where it is not known.
  void BeginFile(const std::string& name, const std::string& kind);
  bool Take(const qenzor::Finding& finding) override;
  /// Ends the file; counts tells of what was found and not told.
  void EndFile(const qenzor::CCheckCounts& counts);
  /// Tells of so many files in all, for people.
  void Summarise(std::uint64_t files, std::uint64_t passed_over);
  /// Ends everything.
  void Finish();

 private:
  Json FindingJson(const qenzor::Finding& finding) const;
  void TakeText(const qenzor::Finding& finding);
  void EndFileJson(const qenzor::CCheckCounts& counts);

  Form m_form;
  std::string m_name;
  std::string m_kind;
  bool m_has_files = false;
  bool m_has_findings = false;
  std::array<std::uint64_t, 3> m_sums{};  ///< by severity
};

/// Prints everything that can be found.
void PrintCodes(bool as_json);

}  // namespace tool
