// The Python class of frames.

#include <pybind11/stl.h>

#include "arrays.h"
#include "binding.h"

namespace py = pybind11;

namespace qenzor::python {

CFrame FrameFrom(const QenFileInfo& info, const std::optional<std::string>& words) {
  if (!words.has_value()) return CFrame(info);
  const auto options = FrameOptions::Parse(*words);
  if (!options) throw py::value_error(options.GetFailure().Reason);
  return CFrame(info, *options);
}

namespace {

/// The frame of a file info: a map's, or that of an edit form.
CFrame MakeFrame(const py::object& info, const std::optional<std::string>& words) {
  Node& node = NeedNode(info.ptr(), *QenInfoClass().Type, "the file info");
  return FrameFrom(*static_cast<const QenFileInfo*>(Deref(node).At), words);
}

py::tuple PointOf(const MapPoint& point) { return py::make_tuple(point.x, point.y); }

}  // namespace

void BindFrame(py::module_& m) {
  py::class_<CFrame>(m, "Frame")
      .def(py::init(&MakeFrame), py::arg("info"), py::arg("words") = py::none())
      .def_property_readonly("plain", &CFrame::IsPlain)
      .def_property_readonly("degenerate", &CFrame::IsDegenerate)
      .def_property_readonly("crs",
                             [](const CFrame& frame) -> py::object {
                               if (frame.GetCrs().empty()) return py::none();
                               return py::str(frame.GetCrs());
                             })
      .def_property_readonly("rect",
                             [](const CFrame& frame) {
                               const MapBox box = frame.GetRect();
                               return py::make_tuple(box.West, box.South, box.East, box.North);
                             })
      .def("has_segment", &CFrame::HasSegment, py::arg("segment"))
      .def(
          "at",
          [](const CFrame& frame, std::uint16_t segment, std::int32_t x, std::int32_t y) {
            return PointOf(frame.At(segment, CPoint{x, y}));
          },
          py::arg("segment"), py::arg("x"), py::arg("y"))
      .def("place", &PlacePoints, py::arg("segment"), py::arg("points"))
      .def(
          "find_segment",
          [](const CFrame& frame, double x, double y) {
            return frame.FindSegment({x, y});
          },
          py::arg("x"), py::arg("y"))
      .def(
          "to_segment",
          [](const CFrame& frame, std::uint16_t segment, double x, double y) -> py::object {
            const auto point = frame.ToSegment(segment, {x, y});
            if (!point.has_value()) return py::none();
            return py::make_tuple(point->x, point->y);
          },
          py::arg("segment"), py::arg("x"), py::arg("y"));
}

}  // namespace qenzor::python
