// The Python type of lists in fields.

#include <array>

#include "sequence.h"

namespace qenzor::python {

namespace {

struct FieldList {
  PyObject_HEAD Node* Owner;
  const FieldInfo* Field;
};

PyTypeObject* g_field_list = nullptr;

FieldList& ListOf(PyObject* self) { return *reinterpret_cast<FieldList*>(self); }

Sequence SequenceOf(PyObject* self) {
  FieldList& list = ListOf(self);
  return {*list.Owner, list.Field, list.Field->List};
}

void Dealloc(PyObject* self) {
  Py_DECREF(ListOf(self).Owner->AsObject());
  PyTypeObject* const type = Py_TYPE(self);
  type->tp_free(self);
  Py_DECREF(type);
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

PyObject* Repr(PyObject* self) {
  return Guarded([&] {
    const Py_ssize_t size = Size(self);
    CheckedSize(size);
    return Checked(PyUnicode_FromFormat("<qenzor.%s of %s, %zd>", "FieldList",
                                        ListOf(self).Field->Name.c_str(), size));
  });
}

PyObject* Compare(PyObject* a, PyObject* b, int operation) {
  return Guarded([&]() -> PyObject* {
    const bool is_list = Py_TYPE(b) == g_field_list || PyList_Check(b) || PyTuple_Check(b);
    if (!is_list || (operation != Py_EQ && operation != Py_NE)) Py_RETURN_NOTIMPLEMENTED;
    const auto mine = Ref<>::New(PySequence_List(a));
    const auto theirs = Ref<>::New(PySequence_List(b));
    return Checked(PyObject_RichCompare(mine.Get(), theirs.Get(), operation));
  });
}

std::array<PyMethodDef, 2> g_methods{
    {{"pop", PopItem, METH_VARARGS, "Takes the element at a position out and gives it back."},
     {nullptr, nullptr, 0, nullptr}}};

}  // namespace

PyObject* IterateSequence(PyObject* self) { return PySeqIter_New(self); }

PyTypeObject* AddFieldListType(PyObject* module) {
  std::array<PyType_Slot, 13> slots{{
      {Py_tp_dealloc, reinterpret_cast<void*>(&Dealloc)},
      {Py_tp_repr, reinterpret_cast<void*>(&Repr)},
      {Py_tp_richcompare, reinterpret_cast<void*>(&Compare)},
      {Py_tp_hash, reinterpret_cast<void*>(&PyObject_HashNotImplemented)},
      {Py_tp_iter, reinterpret_cast<void*>(&IterateSequence)},
      {Py_tp_methods, g_methods.data()},
      {Py_sq_length, reinterpret_cast<void*>(&Size)},
      {Py_sq_item, reinterpret_cast<void*>(&Item)},
      {Py_mp_length, reinterpret_cast<void*>(&Size)},
      {Py_mp_subscript, reinterpret_cast<void*>(&Get)},
      {Py_mp_ass_subscript, reinterpret_cast<void*>(&Set)},
      {0, nullptr},
  }};
  PyType_Spec spec{"qenzor._qenzor.FieldList", sizeof(FieldList), 0,
                   static_cast<unsigned>(Py_TPFLAGS_DEFAULT | Py_TPFLAGS_DISALLOW_INSTANTIATION),
                   slots.data()};
  g_field_list = reinterpret_cast<PyTypeObject*>(Checked(PyType_FromSpec(&spec)));
  Checked(PyModule_AddType(module, g_field_list));
  return g_field_list;
}

PyObject* WrapList(Node& owner, const FieldInfo& field) {
  auto list = Checked(reinterpret_cast<FieldList*>(g_field_list->tp_alloc(g_field_list, 0)));
  Py_INCREF(owner.AsObject());
  list->Owner = &owner;
  list->Field = &field;
  return reinterpret_cast<PyObject*>(list);
}

}  // namespace qenzor::python
