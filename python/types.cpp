// The Python types of the classes.

#include <array>
#include <map>
#include <typeindex>
#include <unordered_map>

#include "node.h"

namespace qenzor::python {

namespace {

/// The properties of a class, which its type refers to as long as it lives: for ever.
struct TypeData {
  std::string Name;
  std::vector<PyGetSetDef> Properties;
};

PyTypeObject* g_base = nullptr;
PyObject* g_module = nullptr;
std::map<PyTypeObject*, const ClassInfo*> g_classes;
std::unordered_map<const CRuntimeClass*, const ClassInfo*> g_chunk_classes;
std::unordered_map<std::type_index, const ClassInfo*> g_edit_classes;

Node& NodeOf(PyObject* self) { return *reinterpret_cast<Node*>(self); }

PyObject* GetProperty(PyObject* self, void* closure) {
  return Guarded([&] { return GetField(NodeOf(self), reinterpret_cast<std::uintptr_t>(closure)); });
}

int SetProperty(PyObject* self, PyObject* value, void* closure) {
  return Guarded(-1, [&] {
    SetField(NodeOf(self), reinterpret_cast<std::uintptr_t>(closure), value);
    return 0;
  });
}

PyObject* NewNode(PyTypeObject* type, PyObject* /*args*/, PyObject* /*kwargs*/) {
  return Guarded([&] {
    const ClassInfo* const info = FindEditClass(type);
    if (info == nullptr) Raise(PyExc_TypeError, std::string(type->tp_name) + " is abstract");
    return WrapFresh(Owned({info->Create(), info})).ReleaseObject();
  });
}

/// Fields by their names, and the elements of a set.
int InitNode(PyObject* self, PyObject* args, PyObject* kwargs) {
  return Guarded(-1, [&] {
    const Py_ssize_t given = PyTuple_GET_SIZE(args);
    const bool is_set = NodeOf(self).Info->IsSet;
    if (given > (is_set ? 1 : 0))
      Raise(PyExc_TypeError, NodeOf(self).Info->Name +
                                 (is_set ? " takes one iterable" : " takes its fields by name"));
    if (given == 1) Ref<>::New(PyObject_CallMethod(self, "extend", "O", PyTuple_GET_ITEM(args, 0)));
    PyObject* name = nullptr;
    PyObject* value = nullptr;
    Py_ssize_t at = 0;
    while (kwargs != nullptr && PyDict_Next(kwargs, &at, &name, &value) != 0) {
      const Ref<> kept_name = Ref<>::Share(name);
      const Ref<> kept_value = Ref<>::Share(value);
      if (PyObject_HasAttr(reinterpret_cast<PyObject*>(Py_TYPE(self)), name) == 0) {
        PyErr_Format(PyExc_TypeError, "%.100s has no field %R", Py_TYPE(self)->tp_name, name);
        throw PythonError{};
      }
      Checked(PyObject_SetAttr(self, name, value));
    }
    return 0;
  });
}

PyObject* Repr(PyObject* self) {
  return Guarded([&] {
    Node& node = NodeOf(self);
    const char* const name = Py_TYPE(self)->tp_name;
    if (node.Owner == nullptr && node.Parent == nullptr)
      return Checked(PyUnicode_FromFormat("<%s, dropped>", name));
    const void* const at = Find(node);
    auto text = Ref<>::New(PyUnicode_FromFormat("<%s", name));
    const auto append = [&](PyObject* more) {
      const auto part = Ref<>::New(more);
      text = Ref<>::New(PyUnicode_Concat(text.Get(), part.Get()));
    };
    if (at != nullptr)
      for (const FieldInfo& field : node.Info->Fields) {
        if (field.Is == FieldInfo::Shape::kValue) {
          const auto value = Ref<>::New(field.Get(at));
          append(PyUnicode_FromFormat(" %s=%R", field.Name.c_str(), value.Get()));
        } else if (field.Is == FieldInfo::Shape::kList) {
          append(PyUnicode_FromFormat(" %s[%zu]", field.Name.c_str(), field.List.Size(at)));
        }
      }
    if (node.Info->IsSet) append(PyUnicode_FromFormat("[%zd]", CheckedSize(PyObject_Size(self))));
    append(PyUnicode_FromString(">"));
    return text.Release();
  });
}

/// Whether two nodes of one class hold the same, in whichever form each is.
bool AreEqual(Node& a, Node& b) {
  const void* const one = Find(a);
  const void* const other = Find(b);
  if (one == nullptr || other == nullptr) return one == other;
  if (a.Info == b.Info) return a.Info->Equal(one, other);
  const Owned copy_of_one = CopyToEdit({a.At == nullptr ? Find(a) : a.At, a.Info});
  const Owned copy_of_other = CopyToEdit({b.At == nullptr ? Find(b) : b.At, b.Info});
  return copy_of_one.Get().Info->Equal(copy_of_one.Get().At, copy_of_other.Get().At);
}

PyObject* Compare(PyObject* a, PyObject* b, int operation) {
  return Guarded([&]() -> PyObject* {
    if (operation != Py_EQ && operation != Py_NE) Py_RETURN_NOTIMPLEMENTED;
    if (NodeOf(a).Info->IsSet && !NodeOf(a).Info->IsKeyed &&
        (PyList_Check(b) || PyTuple_Check(b))) {
      const auto mine = Ref<>::New(PySequence_List(a));
      const auto theirs = Ref<>::New(PySequence_List(b));
      return Checked(PyObject_RichCompare(mine.Get(), theirs.Get(), operation));
    }
    if (Py_TYPE(a) != Py_TYPE(b)) Py_RETURN_NOTIMPLEMENTED;
    const bool equal = a == b || AreEqual(NodeOf(a), NodeOf(b));
    return Ref<>::Share(equal == (operation == Py_EQ) ? Py_True : Py_False).Release();
  });
}

PyObject* Copy(PyObject* self, PyObject* /*arg*/) {
  return Guarded([&] { return WrapFresh(CopyToEdit(Deref(NodeOf(self)))).ReleaseObject(); });
}

/// What is in a slot, which may yet be empty.
PyObject* SlotOf(PyObject* self, PyObject* name) {
  return Guarded([&] {
    const char* const wanted = Checked(PyUnicode_AsUTF8(name));
    for (const FieldInfo& field : NodeOf(self).Info->Fields)
      if (field.Is == FieldInfo::Shape::kSlot && field.Name == wanted)
        return WrapSlot(NodeOf(self), field).ReleaseObject();
    Raise(PyExc_AttributeError, std::string("there is no slot ") + wanted);
  });
}

PyObject* IsReadOnly(PyObject* self, void* /*closure*/) {
  return Guarded([&] { return PyBool_FromLong(IsEditable(NodeOf(self)) ? 0 : 1); });
}

PyObject* PointsProperty(PyObject* self, void* closure) {
  return Guarded([&] {
    Node& node = NodeOf(self);
    const FieldInfo& field = node.Info->Fields[reinterpret_cast<std::uintptr_t>(closure)];
    return MakePoints(field.Points(Deref(node).At), IsEditable(node) ? nullptr : self);
  });
}

constexpr const char* kPointsDoc =
    "The points as an array of n rows (x, y) that is only read; of a document that cannot be\n"
    "changed, without a copy.";

std::array<PyMethodDef, 4> g_methods{
    {{"__copy__", Copy, METH_NOARGS, "A copy that can be changed and belongs to no document."},
     {"__deepcopy__", Copy, METH_O, "A copy that can be changed and belongs to no document."},
     {"_slot", SlotOf, METH_O, "What is in a slot, which is filled by the first change."},
     {nullptr, nullptr, 0, nullptr}}};

std::array<PyGetSetDef, 3> g_properties{
    {{"read_only", IsReadOnly, nullptr, "Whether nothing may be changed.", nullptr},
     {"_info", InfoOfNode, nullptr, "The file info of the map that is read, or None.", nullptr},
     {nullptr, nullptr, nullptr, nullptr, nullptr}}};

PyTypeObject* MakeHeapType(const std::string& name, std::vector<PyType_Slot> slots,
                           PyTypeObject* base, unsigned long flags) {
  for (const auto& [slot, function] : std::initializer_list<PyType_Slot>{
           {Py_tp_dealloc, reinterpret_cast<void*>(&DeallocNode)},
           {Py_tp_new, reinterpret_cast<void*>(&NewNode)},
           {Py_tp_init, reinterpret_cast<void*>(&InitNode)},
           {Py_tp_repr, reinterpret_cast<void*>(&Repr)},
           {Py_tp_richcompare, reinterpret_cast<void*>(&Compare)},
           {Py_tp_hash, reinterpret_cast<void*>(&PyObject_HashNotImplemented)}})
    slots.push_back({slot, function});
  slots.push_back({0, nullptr});
  // Types keep the name by its address.
  static std::map<std::string, std::string> names;
  const std::string& full = names.emplace(name, "qenzor." + name).first->second;
  PyType_Spec spec{full.c_str(), sizeof(Node), 0, static_cast<unsigned>(Py_TPFLAGS_DEFAULT | flags),
                   slots.data()};
  PyObject* const bases = reinterpret_cast<PyObject*>(base);
  auto* const type =
      reinterpret_cast<PyTypeObject*>(Checked(PyType_FromSpecWithBases(&spec, bases)));
  Checked(PyModule_AddType(g_module, type));
  return type;
}

}  // namespace

Node* AsNode(PyObject* object) {
  return PyObject_TypeCheck(object, g_base) != 0 ? &NodeOf(object) : nullptr;
}

Node& NeedNode(PyObject* object, PyTypeObject* type, const char* what) {
  if (PyObject_TypeCheck(object, type) == 0) {
    PyErr_Format(PyExc_TypeError, "%s must be a %s, not %.100s", what, type->tp_name,
                 Py_TYPE(object)->tp_name);
    throw PythonError{};
  }
  return NodeOf(object);
}

void MakeType(const ClassInfo& info, PyTypeObject*& type, PyTypeObject* base) {
  auto* const data = new TypeData{info.Name, {}};
  for (std::uintptr_t at = 0; at < info.Fields.size(); ++at) {
    void* const closure = reinterpret_cast<void*>(at);
    const FieldInfo& field = info.Fields[at];
    data->Properties.push_back({field.Name.c_str(), GetProperty, SetProperty, nullptr, closure});
    if (field.Name == "Pt")
      data->Properties.push_back({"points", PointsProperty, SetProperty, kPointsDoc, closure});
  }
  data->Properties.push_back({nullptr, nullptr, nullptr, nullptr, nullptr});
  std::vector<PyType_Slot> slots;
  if (info.IsSet) slots = info.IsKeyed ? KeyedSlots() : SetSlots();
  slots.push_back({Py_tp_getset, data->Properties.data()});
  type = MakeHeapType(info.Name, std::move(slots), base == nullptr ? g_base : base, 0);
  g_classes.emplace(type, info.Edit);
  const auto names = Ref<>::New(PyTuple_New(static_cast<Py_ssize_t>(info.Fields.size())));
  for (std::size_t at = 0; at < info.Fields.size(); ++at)
    PyTuple_SET_ITEM(names.Get(), static_cast<Py_ssize_t>(at),
                     Checked(PyUnicode_FromString(info.Fields[at].Name.c_str())));
  Checked(PyObject_SetAttrString(reinterpret_cast<PyObject*>(type), "field_names", names.Get()));
}

PyTypeObject* MakeAbstractType(PyTypeObject*& type, const std::string& name) {
  if (type != nullptr) return type;
  std::vector<PyType_Slot> slots;
  if (&type == &MapObjectType()) slots.push_back({Py_tp_getset, MapObjectProperties()});
  type = MakeHeapType(name, std::move(slots), g_base, Py_TPFLAGS_BASETYPE);
  return type;
}

const ClassInfo* FindEditClass(PyTypeObject* type) {
  const auto found = g_classes.find(type);
  return found == g_classes.end() ? nullptr : found->second;
}

void RegisterClass(const CRuntimeClass& runtime_class, const ClassInfo& info) {
  g_chunk_classes.emplace(&runtime_class, &info);
}

void RegisterClass(const std::type_info& type, const ClassInfo& info) {
  g_edit_classes.emplace(type, &info);
}

const ClassInfo& FindClass(const CAbstractChunk& chunk) {
  return *g_chunk_classes.at(&chunk.GetRuntimeClass());
}

const ClassInfo& FindClass(const CAbstractChunkEdit& edit) {
  return *g_edit_classes.at(typeid(edit));
}

void InitClasses(PyObject* module) {
  g_module = module;
  g_base =
      MakeHeapType("Data", {{Py_tp_methods, g_methods.data()}, {Py_tp_getset, g_properties.data()}},
                   nullptr, Py_TPFLAGS_BASETYPE);
  InitQenClasses();
  InitZorClasses();
}

}  // namespace qenzor::python
