#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "qenzor/view/style_book.h"

namespace qenzor::gdal {

/// The drawing of a map as OGR feature styles: PEN, BRUSH, SYMBOL and LABEL.
class CFeatureStyles {
 public:
  /// At 1:denominator; without one each draw info as it is at its own smallest scale. The drawing
  /// must outlive this.
  CFeatureStyles(const CZor& drawing, std::optional<double> denominator);

  /// The style of the object; empty where nothing draws it.
  std::string Find(const ObjectAt& at);

 private:
  /// What draws the objects, each draw info at the end of the band that reaches farthest.
  std::vector<AppliedStyle> FindLargest(std::uint64_t z_id, ObjectKind kind);

  CStyleBook m_book;
  std::optional<double> m_denominator;
  // Neighbours share their z-id, and with it all but the details of labels.
  std::optional<std::pair<std::uint64_t, ObjectKind>> m_key;
  std::vector<AppliedStyle> m_found;
  std::string m_style;
};

}  // namespace qenzor::gdal
