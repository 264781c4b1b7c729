#include "objects.h"

#include <array>

#include "qenzor/view/walk.h"
#include "values.h"

namespace qenzor::python {

namespace {

struct WalkState {
  WalkState(Store& store, const CQen& map, const CFrame& frame, Filters wanted)
      : Owner(&store), Wanted(std::move(wanted)), Cursor(map, frame, Wanted) {}

  StoreRef<Store> Owner;
  Filters Wanted;
  CObjectCursor Cursor;
};

struct Walk {
  PyObject_HEAD WalkState* State;
};

PyTypeObject* g_walk = nullptr;

void Dealloc(PyObject* self) {
  delete reinterpret_cast<Walk*>(self)->State;
  PyTypeObject* const type = Py_TYPE(self);
  type->tp_free(self);
  Py_DECREF(type);
}

PyObject* Next(PyObject* self) {
  return Guarded([&]() -> PyObject* {
    WalkState& state = *reinterpret_cast<Walk*>(self)->State;
    state.Owner->Check();
    const ObjectAt* const at = state.Cursor.Next();
    if (at == nullptr) return nullptr;
    const ClassInfo& info = FindClass(*at->Object);
    PyObject* const wrapped = Wrap(*state.Owner, Object{info.FromChunk(at->Object), &info});
    Place& place = reinterpret_cast<Node*>(wrapped)->Place;
    place.Segment = at->Segment;
    place.Layer = at->Layer;
    place.Index = at->Index;
    place.SetZId(at->ZId);
    return wrapped;
  });
}

Node& NodeOf(PyObject* self) { return *reinterpret_cast<Node*>(self); }

PyObject* NumberOrNone(std::int64_t number) {
  if (number < 0) Py_RETURN_NONE;
  return PyLong_FromLongLong(number);
}

PyObject* GetSegment(PyObject* self, void* /*closure*/) {
  return NumberOrNone(NodeOf(self).Place.Segment);
}
PyObject* GetLayer(PyObject* self, void* /*closure*/) {
  return NumberOrNone(NodeOf(self).Place.Layer);
}
PyObject* GetIndex(PyObject* self, void* /*closure*/) {
  return NumberOrNone(NodeOf(self).Place.Index);
}
PyObject* GetZId(PyObject* self, void* /*closure*/) {
  if (!NodeOf(self).Place.HasZId) Py_RETURN_NONE;
  return PyLong_FromUnsignedLongLong(NodeOf(self).Place.ZId);
}

PyObject* GetKind(PyObject* self, void* /*closure*/) {
  const auto kind = NodeOf(self).Info->Kind;
  if (!kind.has_value()) Py_RETURN_NONE;
  return PyUnicode_FromString(NameOf(*kind).data());
}

/// Those of objects that have any stand beside their field.
PyObject* GetNoPoints(PyObject* self, void* /*closure*/) {
  return Guarded([&] {
    Deref(NodeOf(self));
    return MakePoints({}, nullptr);
  });
}

}  // namespace

namespace {

std::array<PyGetSetDef, 7> g_object_properties{
    {{"segment", GetSegment, nullptr, "The number of its segment, where that is known.", nullptr},
     {"layer", GetLayer, nullptr, "The number of its layer, where that is known.", nullptr},
     {"z_id", GetZId, nullptr, "Its z-id, where that is known.", nullptr},
     {"index", GetIndex, nullptr, "Its position in its object set, where known.", nullptr},
     {"kind", GetKind, nullptr, "line, polygon, label, raster_rect or raster_point.", nullptr},
     {"points", GetNoPoints, nullptr, "The points as an array of n rows (x, y).", nullptr},
     {nullptr, nullptr, nullptr, nullptr, nullptr}}};

}  // namespace

PyGetSetDef* MapObjectProperties() { return g_object_properties.data(); }

PyObject* InfoOfNode(PyObject* self, void* /*closure*/) {
  return Guarded([&]() -> PyObject* {
    Store& store = StoreOf(NodeOf(self));
    store.Check();
    auto* const document = dynamic_cast<Document*>(&store);
    if (document == nullptr || document->GetQen() == nullptr) Py_RETURN_NONE;
    return Wrap(store, document->GetInfo());
  });
}

void InitWalk(PyObject* module) {
  std::array<PyType_Slot, 4> slots{{{Py_tp_dealloc, reinterpret_cast<void*>(&Dealloc)},
                                    {Py_tp_iter, reinterpret_cast<void*>(&PyObject_SelfIter)},
                                    {Py_tp_iternext, reinterpret_cast<void*>(&Next)},
                                    {0, nullptr}}};
  PyType_Spec spec{"qenzor._qenzor.ObjectIterator", sizeof(Walk), 0,
                   static_cast<unsigned>(Py_TPFLAGS_DEFAULT | Py_TPFLAGS_DISALLOW_INSTANTIATION),
                   slots.data()};
  g_walk = reinterpret_cast<PyTypeObject*>(Checked(PyType_FromSpec(&spec)));
  Checked(PyModule_AddType(module, g_walk));
}

PyObject* WalkObjects(Store& store, const CQen& map, const CFrame& frame, Filters filters) {
  auto state = std::make_unique<WalkState>(store, map, frame, std::move(filters));
  auto walk = Ref<Walk>::New(reinterpret_cast<Walk*>(g_walk->tp_alloc(g_walk, 0)));
  walk->State = state.release();
  return walk.ReleaseObject();
}

}  // namespace qenzor::python
