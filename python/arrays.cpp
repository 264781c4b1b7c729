#include "arrays.h"

#include "qenzor/qen/ras_ll_obj.h"
#include "qenzor/view/walk.h"

namespace py = pybind11;

namespace qenzor::python {

static_assert(sizeof(CPoint) == 2 * sizeof(std::int32_t));

PyObject* MakePoints(std::span<const CPoint> points, PyObject* keeper) {
  const auto count = static_cast<py::ssize_t>(points.size());
  const std::array<py::ssize_t, 2> shape{count, 2};
  const bool is_lent = keeper != nullptr && count > 0;
  py::array array = is_lent ? py::array(py::dtype::of<std::int32_t>(), shape, points.data(),
                                        py::reinterpret_borrow<py::object>(keeper))
                            : py::array(py::dtype::of<std::int32_t>(), shape, points.data());
  py::detail::array_proxy(array.ptr())->flags &= ~py::detail::npy_api::NPY_ARRAY_WRITEABLE_;
  return array.release().ptr();
}

namespace {

/// The points of one object, and where they lie.
struct Span {
  const CPoint* First = nullptr;
  std::size_t Count = 0;
};

template <class T>
py::array_t<T> ArrayOf(const std::vector<T>& values) {
  return py::array_t<T>(static_cast<py::ssize_t>(values.size()), values.data());
}

class CGathering {
 public:
  CGathering(const CQen& map, const CFrame& frame, const Filters& filters) : m_frame(frame) {
    CObjectCursor cursor(map, frame, filters);
    while (const ObjectAt* at = cursor.Next()) Add(*at);
  }

  py::array MakePointArray(bool in_frame) const {
    const auto count = static_cast<py::ssize_t>(m_offsets.back());
    if (in_frame) {
      py::array_t<double> points({count, py::ssize_t{2}});
      double* to = points.mutable_data();
      for (std::size_t i = 0; i < m_spans.size(); ++i) {
        const CSegmentFrame frame = m_frame.ForSegment(m_segments[i]);
        for (const CPoint& point : std::span(m_spans[i].First, m_spans[i].Count)) {
          const MapPoint place = frame.At(point);
          *to++ = place.x;
          *to++ = place.y;
        }
      }
      return points;
    }
    py::array_t<std::int32_t> points({count, py::ssize_t{2}});
    auto* to = reinterpret_cast<CPoint*>(points.mutable_data());
    for (const Span& span : m_spans) to = std::copy_n(span.First, span.Count, to);
    return points;
  }
  py::tuple MakeRest(py::array points) const {
    return py::make_tuple(std::move(points), ArrayOf(m_offsets), ArrayOf(m_z_ids),
                          ArrayOf(m_segments));
  }

 private:
  void Add(const ObjectAt& at) {
    // The edges of a raster are the south-west and the north-east corner.
    const auto points =
        at.Kind == ObjectKind::kRasterRect
            ? std::span(reinterpret_cast<const CPoint*>(&at.As<CRasLLObj>().Rect), 2)
            : PointsOf(at.Kind, *at.Object);
    m_spans.push_back({points.data(), points.size()});
    m_offsets.push_back(m_offsets.back() + static_cast<std::int64_t>(points.size()));
    m_z_ids.push_back(at.ZId);
    m_segments.push_back(at.Segment);
  }

  const CFrame& m_frame;
  std::vector<Span> m_spans;
  std::vector<std::int64_t> m_offsets{0};
  std::vector<std::uint64_t> m_z_ids;
  std::vector<std::uint16_t> m_segments;
};

}  // namespace

py::tuple MakeArrays(const CQen& map, const CFrame& frame, const Filters& filters, bool in_frame) {
  const CGathering gathering(map, frame, filters);
  return gathering.MakeRest(gathering.MakePointArray(in_frame));
}

py::array_t<double> PlacePoints(
    const CFrame& frame, std::uint16_t segment,
    const py::array_t<std::int32_t, py::array::c_style | py::array::forcecast>& points) {
  if (points.ndim() != 2 || points.shape(1) != 2)
    throw py::value_error("an array of n rows (x, y) is wanted");
  const CSegmentFrame place = frame.ForSegment(segment);
  py::array_t<double> placed({points.shape(0), py::ssize_t{2}});
  double* to = placed.mutable_data();
  for (py::ssize_t i = 0; i < points.shape(0); ++i) {
    const MapPoint point = place.At(CPoint{points.at(i, 0), points.at(i, 1)});
    *to++ = point.x;
    *to++ = point.y;
  }
  return placed;
}

}  // namespace qenzor::python
