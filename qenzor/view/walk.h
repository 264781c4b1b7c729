#pragma once

#include <cstdint>
#include <vector>

#include "qenzor/platform/export.h"
#include "qenzor/qen/qen.h"
#include "qenzor/view/filters.h"
#include "qenzor/view/frame.h"
#include "qenzor/view/objects.h"

namespace qenzor {

/// Goes through a map's objects in the order of the file, those that pass the filters. Map and
/// filters must outlive it, and the map must not be changed meanwhile.
///
/// A line or an area is in a box when it has a point in common with it, edges included, areas by
/// the even-odd rule; labels and rasters at a point are by their point. Objects without points are
/// never in a box. Bounding rectangles are looked at before points.
class QENZOR_EXPORT CObjectCursor {
 public:
  CObjectCursor(const CQen& map, CFrame frame, const Filters& filters);

  /// The next object, or null behind the last. The result is good until the next call.
  const ObjectAt* Next();
  /// Where the segment of the object that Next gave lies.
  const CSegmentFrame& GetSegmentFrame() const { return m_segment_frame; }

 private:
  bool NextZIdObj();
  bool NextLayer();
  bool NextSegment();
  bool IsInBox();

  CFrame m_frame;
  const Filters& m_filters;
  // The containers at hand, and the position of the next element in each; null: none or all done.
  const CMeshSegmentSet* m_segments = nullptr;
  const CLayerSet* m_layers = nullptr;
  const CZIdObjSet* m_z_id_objs = nullptr;
  const CObjSet* m_objs = nullptr;
  std::uint32_t m_next_segment = 0;
  std::uint32_t m_next_layer = 0;
  std::uint32_t m_next_z_id_obj = 0;
  std::uint32_t m_next_obj = 0;
  ObjectAt m_at;
  CSegmentFrame m_segment_frame;
  std::vector<MapPoint> m_points;  // room for the exact test
};

/// Calls visit(const ObjectAt&) for each object that passes the filters, in the order of the file.
template <class Visit>
void ForEachObject(const CQen& map, const CFrame& frame, const Filters& filters, Visit&& visit) {
  CObjectCursor cursor(map, frame, filters);
  while (const ObjectAt* at = cursor.Next()) visit(*at);
}

}  // namespace qenzor
