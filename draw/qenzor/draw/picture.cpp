#include "qenzor/draw/picture.h"

#include <memory>
#include <set>
#include <string>
#include <utility>

#include "qenzor/view/walk.h"

namespace qenzor {

namespace {

constexpr double kLeastSide = 0.01;
constexpr std::size_t kMaxToldCauses = 1000;

/// A side without extent gets one, about its middle.
void Widen(double& low, double& high) {
  if (low < high) return;
  const double middle = low;
  low = middle - kLeastSide / 2;
  high = middle + kLeastSide / 2;
}

std::optional<MapBox> FindExtent(const CQen& map, const CFrame& frame, const Filters& filters) {
  std::optional<MapBox> extent;
  CObjectCursor cursor(map, frame, filters);
  while (const ObjectAt* at = cursor.Next()) {
    const auto bounds = FindBounds(at->Kind, *at->Object);
    if (!bounds.has_value()) continue;
    const MapBox box = cursor.GetSegmentFrame().At(*bounds);
    if (extent.has_value())
      extent->Add(box);
    else
      extent = box;
  }
  return extent;
}

}  // namespace

Result<CPicture> CPicture::Plan(const PictureContent& content, const WarningSink& warn) {
  std::set<std::string> told;
  const WarningSink warn_once = [&](const std::string& what) {
    if (told.size() < kMaxToldCauses && told.insert(what).second && warn) warn(what);
  };
  const CFrame frame(*content.Map, content.Frame);
  frame.Warn(*content.Map, warn_once);

  const bool has_objects = CObjectCursor(*content.Map, frame, content.Which).Next() != nullptr;
  std::optional<MapBox> box = content.Which.Box;
  if (!box.has_value()) {
    box = FindExtent(*content.Map, frame, content.Which).value_or(frame.GetRect());
    Widen(box->West, box->East);
    Widen(box->South, box->North);
  }
  const Result<CPage> page = CPage::Make(*box, frame.IsPlain(), content.Page);
  if (!page) return page.GetFailure();
  CStyleBook styles(content.Drawing, content.DefaultStyle, warn_once);
  const Result<CDrawList> list = CDrawList::Make(*content.Map, frame, content.Which, styles,
                                                 page->GetDenominator(), warn_once);
  if (!list) return list.GetFailure();
  return std::unique_ptr<CPicture>(new CPicture(frame, *page, std::move(*list), has_objects));
}

}  // namespace qenzor
