#include "qenzor/work/apply.h"

#include <new>

#include "qenzor/edit/convert.h"
#include "qenzor/qen/qen.h"
#include "qenzor/work/applier_impl.h"
#include "qenzor/zor/zor.h"

namespace qenzor {

namespace work {

namespace {

bool IsOfAll(const Change& change) {
  return std::any_of(change.Place.begin(), change.Place.end(),
                     [](const PlaceStep& step) { return step.Nth == PlaceStep::kAll; });
}

}  // namespace

std::unique_ptr<ApplyReport> CApplier::Report() const {
  auto report = std::make_unique<ApplyReport>();
  report->Applied =
      static_cast<std::size_t>(std::count(m_isApplied.begin(), m_isApplied.end(), true));
  // Of a change of all elements it is enough that it fits one.
  for (const Misfit& misfit : m_misfits)
    if (!m_isApplied[misfit.Index] || !IsOfAll(m_changes.Changes[misfit.Index]))
      report->Misfits.push_back(misfit);
  for (std::size_t i = 0; i < m_isApplied.size(); ++i)
    if (!m_isApplied[i] && !m_isMisfit[i]) report->Misfits.push_back({i, "there is no such place"});
  std::sort(report->Misfits.begin(), report->Misfits.end(),
            [](const Misfit& a, const Misfit& b) { return a.Index < b.Index; });
  return report;
}

void CApplier::TellMisfit(std::uint32_t index, CString reason) {
  if (!m_isMisfit[index]) m_misfits.push_back({index, std::move(reason)});
  m_isMisfit[index] = true;
}

void CApplier::TellMisfits(const Rows& rows, const CString& reason) {
  for (const std::uint32_t i : rows) TellMisfit(i, reason);
}

void CApplier::SettleClaims(ListPlan& plan) {
  const auto give_up = [&](const Claim& claim, const char* reason) {
    TellMisfit(claim.Change, reason);
    if (At(claim.Change).Kind == ChangeKind::kMove) plan.IsGone[claim.From] = false;
  };
  std::stable_sort(plan.Claims.begin(), plan.Claims.end(),
                   [](const Claim& a, const Claim& b) { return a.Target < b.Target; });
  std::vector<Claim> settled;
  for (const Claim& claim : plan.Claims)
    if (!settled.empty() && settled.back().Target == claim.Target)
      give_up(claim, "another one is to stand there");
    else
      settled.push_back(claim);
  auto kept = static_cast<std::size_t>(std::count(plan.IsGone.begin(), plan.IsGone.end(), false));
  kept += plan.AtEnd.size();
  while (!settled.empty() && settled.back().Target >= kept + settled.size()) {
    give_up(settled.back(), "the list is shorter than that");
    if (At(settled.back().Change).Kind == ChangeKind::kMove) ++kept;
    settled.pop_back();
  }
  plan.Claims = std::move(settled);
}

Json CApplier::Parsed(std::uint32_t index, std::string_view member, const CString& json) const {
  Json parsed = Json::parse(json, nullptr, false);
  if (parsed.is_discarded())
    throw ContentError{
        ContentFailure("/changes/" + std::to_string(index) + '/' + CString(member), "is no JSON")};
  return parsed;
}

void CApplier::Fail(std::uint32_t index, std::string_view member, const CJsonReader& reader) {
  throw ContentError{ContentFailure(
      "/changes/" + std::to_string(index) + '/' + CString(member) + reader.GetPointer(),
      reader.GetReason())};
}

}  // namespace work

namespace {

Result<ApplyReport> OtherDocument() {
  return work::ContentFailure("/document", "the changes are those of the other kind of document");
}

template <class Carry>
Result<ApplyReport> Guard(const ChangeDocument& changes, Carry&& carry) try {
  work::CApplier applier(changes);
  carry(applier);
  return applier.Report();
} catch (const work::ContentError& error) {
  return error.Why;
} catch (const std::bad_alloc&) {
  return work::NoMemory();
}

}  // namespace

Result<ApplyReport> Apply(CQen& document, const ChangeDocument& changes) {
  if (changes.Document != ClassFamily::kQen) return OtherDocument();
  return Guard(changes, [&](work::CApplier& applier) {
    applier.ApplyToDocument<QenFileInfo>(document, document.MapData);
  });
}

Result<ApplyReport> Apply(CZor& document, const ChangeDocument& changes) {
  if (changes.Document != ClassFamily::kZor) return OtherDocument();
  return Guard(changes, [&](work::CApplier& applier) {
    applier.ApplyToDocument<ZorFileInfo>(document, document.DrawData);
  });
}

}  // namespace qenzor
