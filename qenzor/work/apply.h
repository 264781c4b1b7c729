#pragma once

#include <vector>

#include "qenzor/core/result.h"
#include "qenzor/platform/export.h"
#include "qenzor/work/change.h"

namespace qenzor {

class CQen;
class CZor;

/// A change that found something else than it tells of.
struct Misfit {
  std::size_t Index = 0;  ///< among the changes
  CString Reason;         ///< one sentence without a full stop, in English
};

/// What became of the changes of a document.
struct ApplyReport {
  std::size_t Applied = 0;
  std::vector<Misfit> Misfits;  ///< by index
};

/// Carries changes out on a document: those that fit, which is told by numbers, indices and the
/// values that were there. All changes speak of the document as it is at first. Where nothing
/// misfits, what Diff told of two documents makes the second of the first. Bounding rectangles stay
/// as they were read. A failure tells by a JSON pointer what value makes no sense, or kOutOfMemory;
/// the document is then good for nothing.
QENZOR_EXPORT Result<ApplyReport> Apply(CQen& document, const ChangeDocument& changes);
QENZOR_EXPORT Result<ApplyReport> Apply(CZor& document, const ChangeDocument& changes);

}  // namespace qenzor
