#pragma once

// What lists in fields and sets have in common: elements that Python reads and changes by position.

#include "node.h"

namespace qenzor::python {

/// A list of a node: a field, or what a set holds.
struct Sequence {
  Node& Owner;
  const FieldInfo* Field;  ///< null for a set's own elements
  const ListInfo& List;
};

std::size_t SizeOf(const Sequence& sequence);
/// The element, as a new reference. Raises IndexError.
PyObject* ElementAt(const Sequence& sequence, Py_ssize_t at);
/// An element by an integer, or a list of them by a slice.
PyObject* Subscript(const Sequence& sequence, PyObject* key);
/// Assigns to an element or a slice; null deletes.
void Assign(const Sequence& sequence, PyObject* key, PyObject* value);
/// Takes the element at the position out and gives it back.
PyObject* Pop(const Sequence& sequence, Py_ssize_t at);

/// The Python type of lists in fields.
PyTypeObject* AddFieldListType(PyObject* module);
PyObject* WrapList(Node& owner, const FieldInfo& field);

}  // namespace qenzor::python
