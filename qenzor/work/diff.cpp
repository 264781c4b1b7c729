#include "qenzor/work/diff.h"

#include "qenzor/qen/qen.h"
#include "qenzor/view/walk.h"
#include "qenzor/work/differ_impl.h"
#include "qenzor/work/failures_impl.h"
#include "qenzor/zor/zor.h"

namespace qenzor {

namespace {

template <class Walk>
Result<void> Guard(Walk&& walk) try {
  walk();
  return {};
} catch (const std::bad_alloc&) {
  return work::NoMemory();
}

}  // namespace

Result<void> Diff(const CQen& before, const CQen& after, const ChangeSink& sink,
                  const DiffOptions& options) {
  return Guard([&] {
    work::PassingObjects passing;
    for (const CQen* map : {&before, &after})
      if (!options.Filters.PassAll())
        ForEachObject(*map, CFrame(*map, options.Frame), options.Filters,
                      [&](const ObjectAt& at) { passing.insert(at.Object); });
    work::CDiffer differ(sink, options.Filters.PassAll() ? nullptr : &passing);
    differ.DiffInfo<QenFileInfo>(before, after);
    differ.DiffRoot(before.MapData, after.MapData);
  });
}

Result<void> Diff(const CZor& before, const CZor& after, const ChangeSink& sink) {
  return Guard([&] {
    work::CDiffer differ(sink, nullptr);
    differ.DiffInfo<ZorFileInfo>(before, after);
    differ.DiffOwner(before.DrawData, after.DrawData);
  });
}

}  // namespace qenzor
