// The Python classes of documents.

#include <pybind11/stl.h>

#include "arrays.h"
#include "binding.h"
#include "qenzor/view/style_book.h"
#include "values.h"

namespace py = pybind11;

namespace qenzor::python {

namespace {

py::object InfoOf(const PyDocument& document) {
  document.Owner->Check();
  return Steal(Wrap(*document.Owner, document.Of->GetInfo()));
}

py::object RootOf(const PyDocument& document) {
  return Steal(WrapRoot(*document.Owner, document.Of->GetRootClass()).ReleaseObject());
}

void Finish(const Result<void>& result) {
  if (!result) RaiseFailure(result.GetFailure(), true);
}

void Write(const PyDocument& document, const py::object& to, bool sync) {
  const CString path = PathFrom(to);
  SaveOptions options;
  options.Sync = sync;
  Finish([&] {
    const WithoutLock without(document.Owner.Get());
    return document.Of->Save(path, options);
  }());
}

void ToXml(const PyDocument& document, const py::object& to, const std::string& encoding,
           bool sync) {
  const CString path = PathFrom(to);
  SaveOptions options;
  options.Sync = sync;
  options.Encoding = EncodingFrom(encoding);
  Finish([&] {
    const WithoutLock without(document.Owner.Get());
    return document.Of->SaveXml(path, options);
  }());
}

py::bytes ToBytes(const PyDocument& document) {
  const auto bytes = [&] {
    const WithoutLock without(document.Owner.Get());
    return document.Of->ToBytes();
  }();
  if (!bytes) RaiseFailure(bytes.GetFailure(), true);
  return py::bytes(reinterpret_cast<const char*>(bytes->data()), bytes->size());
}

py::object Clone(const PyDocument& document) {
  return ToObject(Adopt(
      [&] {
        const WithoutLock without(document.Owner.Get());
        return document.Of->Clone();
      }(),
      true));
}

py::object Convert(const PyDocument& document) {
  return ToObject(Adopt(
      [&] {
        const WithoutLock without(document.Owner.Get());
        return document.Of->Convert();
      }(),
      true));
}

py::object Equals(const PyDocument& document, const py::object& other) {
  if (!py::isinstance<PyDocument>(other))
    return py::reinterpret_borrow<py::object>(Py_NotImplemented);
  const auto& others = other.cast<const PyDocument&>();
  document.Owner->Check();
  others.Owner->Check();
  return py::bool_(document.Of == others.Of || document.Of->Equals(*others.Of));
}

void Close(const PyDocument& document) {
  if (document.Owner->IsClosed()) return;
  document.Owner->Check();
  document.Of->Close();
}

// Filters.

template <class T>
std::optional<std::set<T>> NumbersFrom(const py::object& numbers) {
  if (numbers.is_none()) return std::nullopt;
  std::set<T> values;
  if (PyIndex_Check(numbers.ptr()) != 0) {
    values.insert(FromPython<NumberCoding, T>(numbers.ptr()));
  } else {
    for (const T value : ManyFrom<T>(numbers.ptr())) values.insert(value);
  }
  return values;
}

std::optional<std::bitset<kObjectKinds>> KindsFrom(const py::object& kinds) {
  if (kinds.is_none()) return std::nullopt;
  std::bitset<kObjectKinds> bits;
  const auto add = [&](const py::handle& word) {
    const auto text = word.cast<std::string>();
    const auto found = std::find(kObjectKindNames.begin(), kObjectKindNames.end(), text);
    if (found == kObjectKindNames.end())
      throw py::value_error("there are no objects of the kind " + text);
    bits.set(static_cast<std::size_t>(found - kObjectKindNames.begin()));
  };
  if (py::isinstance<py::str>(kinds))
    add(kinds);
  else
    for (const py::handle word : kinds) add(word);
  return bits;
}

Filters FiltersFrom(const py::object& layer, const py::object& kind, const py::object& z_id,
                    const py::object& segment, const py::object& bbox) {
  Filters filters;
  filters.Layers = NumbersFrom<std::uint16_t>(layer);
  filters.Kinds = KindsFrom(kind);
  filters.ZIds = NumbersFrom<std::uint64_t>(z_id);
  filters.Segments = NumbersFrom<std::uint16_t>(segment);
  if (!bbox.is_none()) {
    const auto edges = py::tuple(bbox);
    if (edges.size() != 4) throw py::value_error("a box is (west, south, east, north)");
    filters.Box = MapBox{edges[0].cast<double>(), edges[1].cast<double>(), edges[2].cast<double>(),
                         edges[3].cast<double>()};
  }
  return filters;
}

py::object Objects(const PyQen& map, const py::object& layer, const py::object& kind,
                   const py::object& z_id, const py::object& segment, const py::object& bbox,
                   const std::optional<std::string>& frame) {
  const CQen& qen = *map.Of->GetQen();
  Filters filters = FiltersFrom(layer, kind, z_id, segment, bbox);
  map.Owner->Check();
  return Steal(WalkObjects(*map.Owner, qen, FrameFrom(qen, frame), std::move(filters)));
}

py::tuple Arrays(const PyQen& map, const py::object& layer, const py::object& kind, bool degrees,
                 const std::optional<std::string>& frame) {
  const CQen& qen = *map.Of->GetQen();
  const Filters filters = FiltersFrom(layer, kind, py::none(), py::none(), py::none());
  map.Owner->Check();
  return MakeArrays(qen, FrameFrom(qen, frame), filters, degrees);
}

// Styles.

py::dict SizesOf(const Style& style) {
  py::dict sizes;
  if (const auto* const stroke = std::get_if<StrokeStyle>(&style); stroke != nullptr) {
    sizes["width"] = stroke->Width;
  } else if (const auto* const shadow = std::get_if<ShadowStyle>(&style); shadow != nullptr) {
    sizes["offset_x"] = shadow->OffsetX;
    sizes["offset_y"] = shadow->OffsetY;
  } else if (const auto* const label = std::get_if<LabelStyle>(&style); label != nullptr) {
    sizes["mark_scale"] = label->MarkScale;
    sizes["font_size"] = label->FontSize;
    sizes["frame_width"] = label->FrameWidth;
    sizes["frame_margin"] = label->FrameMargin;
    sizes["shadow_offset"] = label->ShadowOffset;
  } else if (const auto* const raster = std::get_if<RasterPointStyle>(&style); raster != nullptr) {
    sizes["width"] = raster->Width;
  }
  return sizes;
}

/// The styles of all kinds of object that hold, in the order of the attribute's list.
py::list StyleOf(const PyZor& drawing, std::uint64_t z_id, double scale) {
  if (!(scale > 0)) throw py::value_error("the scale's denominator is above 0");
  drawing.Owner->Check();
  const CZor& zor = *drawing.Of->GetZor();
  CStyleBook book(&zor);
  std::array<std::vector<AppliedStyle>, kObjectKinds> found;
  std::array<std::size_t, kObjectKinds> next{};
  for (std::size_t kind = 0; kind < kObjectKinds; ++kind)
    found[kind] = book.Find(z_id, static_cast<ObjectKind>(kind), scale);
  py::list styles;
  const CDrawAtter* const atter =
      zor.DrawData.DrawAtterSet == nullptr ? nullptr : zor.DrawData.DrawAtterSet->GetElem(z_id);
  if (atter == nullptr || atter->DrawInfoIdxSet == nullptr) return styles;
  for (const std::uint32_t index : atter->DrawInfoIdxSet->DrawInfoIdx)
    for (std::size_t kind = 0; kind < kObjectKinds; ++kind) {
      if (next[kind] >= found[kind].size() || found[kind][next[kind]].Info != index) continue;
      const AppliedStyle& style = found[kind][next[kind]++];
      styles.append(
          py::make_tuple(index, NameOf(static_cast<ObjectKind>(kind)), SizesOf(style.How)));
      break;
    }
  return styles;
}

/// What the edit forms have.
template <class Class>
void BindEdit(py::module_& m, const char* name, BinaryKind kind, const char* convert) {
  py::class_<Class, PyDocument>(m, name)
      .def(py::init([kind] {
        Document* const edit = NewEdit(kind).release();
        Class document;
        document.Owner = StoreRef<Store>(&edit->GetStore());
        document.Of = edit;
        return document;
      }))
      .def(convert, &Convert)
      .def("close", &Close)
      .def_property_readonly("closed",
                             [](const PyDocument& document) { return document.Owner->IsClosed(); });
}

}  // namespace

void BindDocuments(py::module_& m) {
  py::class_<PyDocument>(m, "Document")
      .def_property_readonly("info", &InfoOf)
      .def_property_readonly("_root", &RootOf)
      .def("write", &Write, py::arg("path"), py::kw_only(), py::arg("sync") = true)
      .def("to_xml", &ToXml, py::arg("path"), py::kw_only(), py::arg("encoding") = "shift_jis",
           py::arg("sync") = true)
      .def("__bytes__", &ToBytes)
      .def("__eq__", &Equals)
      .def("__copy__", &Clone)
      .def("__deepcopy__",
           [](const PyDocument& document, const py::dict&) { return Clone(document); });
  py::class_<PyQen, PyDocument>(m, "Qen")
      .def("edit", &Convert)
      .def("objects", &Objects, py::kw_only(), py::arg("layer") = py::none(),
           py::arg("kind") = py::none(), py::arg("z_id") = py::none(),
           py::arg("segment") = py::none(), py::arg("bbox") = py::none(),
           py::arg("frame") = py::none())
      .def("_arrays", &Arrays);
  py::class_<PyZor, PyDocument>(m, "Zor").def("edit", &Convert).def("_style_of", &StyleOf);
  BindEdit<PyQenEdit>(m, "QenEdit", BinaryKind::kQen, "to_map");
  BindEdit<PyZorEdit>(m, "ZorEdit", BinaryKind::kZor, "to_draw");
}

}  // namespace qenzor::python
