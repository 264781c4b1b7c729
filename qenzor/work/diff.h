#pragma once

#include <functional>

#include "qenzor/core/result.h"
#include "qenzor/platform/export.h"
#include "qenzor/view/filters.h"
#include "qenzor/view/frame.h"
#include "qenzor/work/change.h"

namespace qenzor {

class CQen;
class CZor;

/// Takes changes one by one; false ends the comparison.
using ChangeSink = std::function<bool(const Change&)>;

/// Which changes of a map are told.
struct DiffOptions {
  /// Where any is set: changes of objects that pass before or after, and of what holds such ones.
  qenzor::Filters Filters;
  FrameOptions Frame;
};

/// Tells the sink what changes one document into the other; nothing when and only when both are
/// stored as the same bytes, but for the order of draw attributes that share a bucket. Segments,
/// layers and z-ids are matched by number, the first of a number with the first; what stands in a
/// list by its content, as the longest common subsequence, and between two equal neighbours by
/// class. What left one place of a list and stands at another is a move. Costs one walk over what
/// is equal. The only failure is kOutOfMemory.
QENZOR_EXPORT Result<void> Diff(const CQen& before, const CQen& after, const ChangeSink& sink,
                                const DiffOptions& options = {});
QENZOR_EXPORT Result<void> Diff(const CZor& before, const CZor& after, const ChangeSink& sink);

}  // namespace qenzor
