// What the Python types of sets do: those of arrays are sequences, keyed ones mappings.

#include <array>

#include "sequence.h"
#include "values.h"

namespace qenzor::python {

namespace {

Node& NodeOf(PyObject* self) { return *reinterpret_cast<Node*>(self); }

// Sets without keys.

Sequence SequenceOf(PyObject* self) {
  Node& node = NodeOf(self);
  return {node, nullptr, node.Info->Elements};
}

Py_ssize_t Size(PyObject* self) {
  return Guarded(Py_ssize_t{-1}, [&] { return static_cast<Py_ssize_t>(SizeOf(SequenceOf(self))); });
}

PyObject* Item(PyObject* self, Py_ssize_t at) {
  // Python has counted from the end already.
  return Guarded([&] { return ElementAt(SequenceOf(self), at < 0 ? PY_SSIZE_T_MAX : at); });
}

PyObject* Get(PyObject* self, PyObject* key) {
  return Guarded([&] { return Subscript(SequenceOf(self), key); });
}

int Set(PyObject* self, PyObject* key, PyObject* value) {
  return Guarded(-1, [&] {
    Assign(SequenceOf(self), key, value);
    return 0;
  });
}

PyObject* PopItem(PyObject* self, PyObject* args) {
  Py_ssize_t at = -1;
  if (PyArg_ParseTuple(args, "|n:pop", &at) == 0) return nullptr;
  return Guarded([&] { return Pop(SequenceOf(self), at); });
}

std::array<PyMethodDef, 2> g_set_methods{
    {{"pop", PopItem, METH_VARARGS, "Takes the element at a position out and gives it back."},
     {nullptr, nullptr, 0, nullptr}}};

// Keyed sets.

const KeyedInfo& KeyedOf(PyObject* self) { return NodeOf(self).Info->Keyed; }

Object FindElement(PyObject* self, std::uint64_t key) {
  const void* const set = Find(NodeOf(self));
  return set == nullptr ? Object{} : KeyedOf(self).Find(set, key);
}

std::uint64_t KeyFrom(PyObject* key) { return FromPython<NumberCoding, std::uint64_t>(key); }

Object NeedElement(PyObject* self, PyObject* key) {
  const Object element = FindElement(self, KeyFrom(key));
  if (element.At == nullptr) {
    PyErr_SetObject(PyExc_KeyError, key);
    throw PythonError{};
  }
  return element;
}

PyObject* WrapKeyed(PyObject* self, const Object& element) {
  Node& set = NodeOf(self);
  PyObject* const wrapped = Wrap(set, element);
  if (IsEditable(set)) SetFiledIn(*reinterpret_cast<Node*>(wrapped), &set);
  return wrapped;
}

Py_ssize_t KeyedSize(PyObject* self) {
  return Guarded(Py_ssize_t{-1}, [&] {
    const void* const set = Find(NodeOf(self));
    return set == nullptr ? Py_ssize_t{0} : static_cast<Py_ssize_t>(KeyedOf(self).Size(set));
  });
}

PyObject* KeyedGet(PyObject* self, PyObject* key) {
  return Guarded([&] { return WrapKeyed(self, NeedElement(self, key)); });
}

/// Takes an element out, which lives on by itself.
Ref<Node> TakeOut(PyObject* self, std::uint64_t key) {
  Node& set = NodeOf(self);
  EditStore& store = NeedEditable(set);
  Owned taken = KeyedOf(self).Remove(Need(set), key);
  const Object object = taken.Get();
  const StoreRef<FreshStore> fresh(new FreshStore(std::move(taken)));
  store.Move(object, *fresh);
  auto node = Ref<Node>::Take(reinterpret_cast<Node*>(Wrap(*fresh, object)));
  SetFiledIn(*node.Get(), nullptr);
  return node;
}

void DropElement(PyObject* self, std::uint64_t key) {
  Node& set = NodeOf(self);
  EditStore& store = NeedEditable(set);
  const Owned gone = KeyedOf(self).Remove(Need(set), key);
  store.Drop(gone.Get());
}

/// Files a copy of the element, or the element itself if it belongs to nobody.
void File(PyObject* self, Node& given) {
  Node& set = NodeOf(self);
  EditStore& store = NeedEditable(set);
  const Ref<> keep = Ref<>::Share(self);
  const Ref<Node> keep_given = Ref<Node>::Share(&given);
  FreshStore* const fresh = FreshStoreOf(given);
  const bool moves = fresh != nullptr && fresh != &store;
  Owned copy = moves ? Owned() : CopyToEdit(Deref(given));
  const StoreRef<FreshStore> source(moves ? fresh : nullptr);
  if (moves) store.ReserveFor(*fresh);
  void* const at = Need(set);
  const std::uint64_t key = KeyedOf(self).KeyOf(moves ? given.At : copy.Get().At);
  if (KeyedOf(self).Find(at, key).At != nullptr) DropElement(self, key);
  KeyedOf(self).Insert(at, moves ? source->TakeRoot() : std::move(copy));
  if (!moves) return;
  source->MoveAll(store);
  SetFiledIn(given, &set);
}

int KeyedSet(PyObject* self, PyObject* key, PyObject* value) {
  return Guarded(-1, [&] {
    NeedEditable(NodeOf(self));
    const std::uint64_t wanted = KeyFrom(key);
    if (value == nullptr) {
      NeedElement(self, key);
      DropElement(self, wanted);
      return 0;
    }
    Node& given = NeedNode(value, *KeyedOf(self).ElementType, "an element");
    const Owned edit = CopyToEdit(Deref(given));
    if (NodeOf(self).Info->Keyed.KeyOf(edit.Get().At) != wanted)
      Raise(PyExc_ValueError, "the element has another key of its own");
    File(self, given);
    return 0;
  });
}

PyObject* Add(PyObject* self, PyObject* value) {
  return Guarded([&] {
    NeedEditable(NodeOf(self));
    File(self, NeedNode(value, *KeyedOf(self).ElementType, "an element"));
    return Ref<>::Share(Py_None).Release();
  });
}

PyObject* Take(PyObject* self, PyObject* key) {
  return Guarded([&] {
    NeedEditable(NodeOf(self));
    NeedElement(self, key);
    return TakeOut(self, KeyFrom(key)).ReleaseObject();
  });
}

int Contains(PyObject* self, PyObject* key) {
  return Guarded(-1, [&] {
    if (PyLong_Check(key) == 0) return 0;
    const std::uint64_t wanted = PyLong_AsUnsignedLongLong(key);
    if (PyErr_Occurred() != nullptr) {
      PyErr_Clear();
      return 0;
    }
    return FindElement(self, wanted).At != nullptr ? 1 : 0;
  });
}

/// The keys as they are now.
PyObject* Iterate(PyObject* self) {
  return Guarded([&] {
    const void* const set = Find(NodeOf(self));
    std::vector<std::uint64_t> keys;
    if (set != nullptr) keys = KeyedOf(self).Keys(set);
    const auto list = Ref<>::New(PyList_New(static_cast<Py_ssize_t>(keys.size())));
    for (std::size_t i = 0; i < keys.size(); ++i)
      PyList_SET_ITEM(list.Get(), static_cast<Py_ssize_t>(i), ToPython(keys[i]));
    return Checked(PyObject_GetIter(list.Get()));
  });
}

std::array<PyMethodDef, 3> g_keyed_methods{
    {{"add", Add, METH_O, "Files an element under its own key, in the place of another."},
     {"take", Take, METH_O, "Takes the element under a key out and gives it back."},
     {nullptr, nullptr, 0, nullptr}}};

}  // namespace

std::vector<PyType_Slot> SetSlots() {
  return {{Py_sq_length, reinterpret_cast<void*>(&Size)},
          {Py_sq_item, reinterpret_cast<void*>(&Item)},
          {Py_mp_length, reinterpret_cast<void*>(&Size)},
          {Py_mp_subscript, reinterpret_cast<void*>(&Get)},
          {Py_mp_ass_subscript, reinterpret_cast<void*>(&Set)},
          {Py_tp_iter, reinterpret_cast<void*>(&IterateSequence)},
          {Py_tp_methods, g_set_methods.data()}};
}

std::vector<PyType_Slot> KeyedSlots() {
  return {{Py_mp_length, reinterpret_cast<void*>(&KeyedSize)},
          {Py_mp_subscript, reinterpret_cast<void*>(&KeyedGet)},
          {Py_mp_ass_subscript, reinterpret_cast<void*>(&KeyedSet)},
          {Py_sq_contains, reinterpret_cast<void*>(&Contains)},
          {Py_tp_iter, reinterpret_cast<void*>(&Iterate)},
          {Py_tp_methods, g_keyed_methods.data()}};
}

void SetFieldOfFiled(Node& node, const FieldInfo& field, PyObject* value) {
  const Ref<Node> set_node = Ref<Node>::Share(node.Parent);
  const KeyedInfo& keyed = set_node->Info->Keyed;
  const std::uint64_t before = keyed.KeyOf(Deref(node).At);
  const auto old_value = Ref<>::New(field.Get(Deref(node).At));
  field.Set(node, value);
  const std::uint64_t after = keyed.KeyOf(Deref(node).At);
  // Code that the value ran may have taken the element out.
  if (after == before || node.Parent != set_node.Get()) return;
  void* const set = Find(*set_node.Get());
  if (keyed.Find(set, after).At != nullptr) {
    field.Set(node, old_value.Get());
    Raise(PyExc_ValueError, "another element has this key: " + std::to_string(after));
  }
  keyed.Insert(set, keyed.Remove(set, before));
}

}  // namespace qenzor::python
