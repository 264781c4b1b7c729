#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "qenzor/qen/qen.h"
#include "qenzor/view/frame.h"
#include "qenzor/view/objects.h"

namespace qenzor::gdal {

/// The objects of one layer number and kind, in the order of the file. Every one is known by its
/// position in that order. Nothing of an object is looked at but its class and its bounds.
class CFeatureIndex {
 public:
  /// Objects that stand side by side in one object set.
  struct Run {
    const CZIdObj* Group = nullptr;
    std::uint32_t FirstFeature = 0;
    std::uint32_t FirstObject = 0;  ///< in the object set
  };
  /// The runs of one segment.
  struct Part {
    std::uint16_t Segment = 0;
    std::uint32_t FirstRun = 0;
    std::uint32_t FirstFeature = 0;
    std::optional<CRect> Bounds;  ///< of what has a geometry; nothing where nothing has
  };

  CFeatureIndex(std::uint16_t layer, ObjectKind kind) : m_layer(layer), m_kind(kind) {}

  /// Puts an object behind those that are there.
  void Add(std::uint16_t segment, const CZIdObj& group, std::uint32_t object,
           const std::optional<CRect>& bounds);

  std::uint16_t GetLayer() const { return m_layer; }
  ObjectKind GetKind() const { return m_kind; }
  std::uint32_t GetCount() const { return m_count; }
  std::span<const Part> GetParts() const { return m_parts; }
  /// Where the object at a position, below the count, stands.
  ObjectAt At(std::uint32_t feature) const;
  /// The number of the part that holds the object at a position.
  std::size_t PartOf(std::uint32_t feature) const;
  /// The position of the first object behind a part.
  std::uint32_t EndOf(std::size_t part) const {
    return part + 1 < m_parts.size() ? m_parts[part + 1].FirstFeature : m_count;
  }
  /// The z-id of each run, for whoever must know them all.
  std::span<const Run> GetRuns() const { return m_runs; }

 private:
  std::uint16_t m_layer;
  ObjectKind m_kind;
  std::uint32_t m_count = 0;
  std::vector<Run> m_runs;
  std::vector<Part> m_parts;
  std::uint32_t m_next_object = 0;
};

/// The indices of a map, ordered by layer number and kind. With trusts_bounds the bounding
/// rectangles that objects took while they were read are believed, as those of documents that were
/// edited since, or were XML, cannot be.
std::vector<CFeatureIndex> IndexFeatures(const CQen& map, bool trusts_bounds);

/// Whether the object has a geometry that is not empty.
bool HasGeometry(ObjectKind kind, const CAbstractObj& object);

/// The points of an area without the last ones that only close it.
std::span<const CPoint> OpenRing(std::span<const CPoint> points);

}  // namespace qenzor::gdal
