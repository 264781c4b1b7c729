#pragma once

// The Python object that stands for a chunk, an edit object or a record.

#include <cstdint>

#include "python_api.h"
#include "reflection.h"
#include "store.h"

namespace qenzor::python {

/// Where in its map an object stands, as far as that is known.
struct Place {
  std::int32_t Segment = -1;
  std::int32_t Layer = -1;
  std::int64_t Index = -1;
  std::uint64_t ZId = 0;
  bool HasZId = false;

  void SetZId(std::uint64_t z_id) {
    ZId = z_id;
    HasZId = true;
  }
};

/// The place of an object that is part of what stands at the place above.
Place PlaceBelow(const Place& above, const Object& object);

/// Stands for one of three things:
/// - an object: At is set. An element of a keyed set knows the set as its parent.
/// - a record in place in an edit form: Parent and Field name the list, Index the place in it.
/// - what is in a slot of the parent (or, without a parent, the root of a document), which may yet
///   be empty.
/// One without store and parent has been dropped.
struct Node {
  PyObject_HEAD Store* Owner;  ///< counted
  const ClassInfo* Info;
  void* At;
  Node* Parent;            ///< counted
  const FieldInfo* Field;  ///< of the parent
  std::size_t Index;
  Node* Records;  ///< the first of those that stand for records in my lists
  Node* NextRecord;
  qenzor::python::Place Place;

  PyObject* AsObject() { return reinterpret_cast<PyObject*>(this); }
  bool IsRecordInPlace() const { return Field != nullptr && Field->Is == FieldInfo::Shape::kList; }
};

/// The node, or null for an object of any other type.
Node* AsNode(PyObject* object);
/// The same; raises TypeError.
Node& NeedNode(PyObject* object, PyTypeObject* type, const char* what);

/// What the node stands for; null for a slot that is empty. Raises ReferenceError where it has been
/// dropped, RuntimeError while its document is in use.
void* Find(Node& node);
/// The same, and an empty slot is filled. Raises TypeError where nothing may be changed.
void* Need(Node& node);
/// The object that the node stands for, never nothing.
Object Deref(Node& node);
/// The store of what the node stands for. Raises ReferenceError where it has been dropped.
Store& StoreOf(Node& node);
bool IsEditable(Node& node);
/// Raises TypeError where nothing may be changed.
EditStore& NeedEditable(Node& node);

/// What stands for the object, which is part of what the node stands for; None for nothing.
PyObject* Wrap(Node& node, const Object& object);
/// The same for the element of a list, whose field is null for a set's own.
PyObject* WrapElement(Node& node, const FieldInfo* field, const ListInfo& list, std::size_t at);
/// The same for what is in a slot, which may be empty.
Ref<Node> WrapSlot(Node& node, const FieldInfo& field);
/// The same for an object of a store, and for the root of a document, which may be missing.
PyObject* Wrap(Store& store, const Object& object);
Ref<Node> WrapRoot(Store& store, const ClassInfo& info);
/// The same for a new object that is in no document.
Ref<Node> WrapFresh(Owned object);

/// Lets an element of a keyed set know its set, or forget it.
void SetFiledIn(Node& node, Node* set) noexcept;

/// Makes the node stand for nothing.
void Drop(Node& node) noexcept;
/// Makes the node stand for a record of a list.
void Rebind(Node& node, Node& parent, const FieldInfo& field, std::size_t index) noexcept;

/// The range of a record list is replaced by so many: those that stand for records behind it move.
void MoveRecords(Node& owner, const FieldInfo& field, Range range, std::size_t count) noexcept;

/// The store that holds the object the node stands for, if that is all that it holds.
FreshStore* FreshStoreOf(Node& node);

/// A field of the node: the one at so many in its class's table.
PyObject* GetField(Node& node, std::size_t field);
void SetField(Node& node, std::size_t field, PyObject* value);
/// Sets a field of an element of a keyed set: where its key changes it is filed anew.
void SetFieldOfFiled(Node& node, const FieldInfo& field, PyObject* value);

void DeallocNode(PyObject* self);
PyObject* IterateSequence(PyObject* self);
/// What the Python types of sets have beyond those of other classes.
std::vector<PyType_Slot> SetSlots();
std::vector<PyType_Slot> KeyedSlots();
/// An array of n rows (x, y) that is only read. It is a copy if it has no keeper.
PyObject* MakePoints(std::span<const CPoint> points, PyObject* keeper);

/// The file info of the map that the node is part of and that cannot be changed; else None.
PyObject* InfoOfNode(PyObject* self, void* closure);
/// The properties of map objects.
PyGetSetDef* MapObjectProperties();

}  // namespace qenzor::python
