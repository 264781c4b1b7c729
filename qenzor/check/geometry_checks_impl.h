#pragma once

#include "qenzor/check/figures_impl.h"
#include "qenzor/check/reporter_impl.h"

namespace qenzor::check {

/// Gathers what segments cut, before it is looked for beyond.
class CCutCollector : public CFigureListener {
 public:
  CCutCollector(CCuts& cuts, const FrameOptions& frame) : CFigureListener(frame), m_cuts(cuts) {}

 protected:
  void Take(const Figure& figure) override;

 private:
  CCuts& m_cuts;
};

/// Checks where a map's objects lie, and what shape they have.
class CGeometryChecks : public CFigureListener {
 public:
  /// The cuts are null where not all are known.
  CGeometryChecks(CReporter& reporter, const CCuts* cuts)
      : CFigureListener(reporter.GetOptions().Frame), m_reporter(reporter), m_cuts(cuts) {}

 protected:
  void Take(const Figure& figure) override;

 private:
  bool HasEnoughPoints(const Figure& figure);
  void CheckRepeatedPoints(const Figure& figure);
  void CheckRing(const Figure& figure);
  void CheckPlace(const Figure& figure);
  void CheckCuts(const Figure& figure);

  CReporter& m_reporter;
  const CCuts* m_cuts;
};

}  // namespace qenzor::check
