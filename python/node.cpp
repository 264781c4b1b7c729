#include "node.h"

#include "sequence.h"

namespace qenzor::python {

namespace {

[[noreturn]] void RaiseDropped() {
  Raise(PyExc_ReferenceError, "the object is no longer part of what it was taken from");
}

/// An object of the type that stands for nothing yet.
Ref<Node> NewEmpty(const ClassInfo& info) {
  PyTypeObject* const type = *info.Type;
  auto node = Ref<Node>::New(reinterpret_cast<Node*>(type->tp_alloc(type, 0)));
  node->Info = &info;
  node->Place = Place{};
  return node;
}

void Own(Node& node, Store& store) {
  store.AddRef();
  node.Owner = &store;
}

Ref<Node> NewBound(Store& store, const Object& object) {
  Ref<Node> node = NewEmpty(*object.Info);
  if (store.IsEditable()) static_cast<EditStore&>(store).Add(object.At, node.Get());
  node->At = object.At;
  Own(*node.Get(), store);
  return node;
}

void SetParent(Node& node, Node& parent) {
  Py_INCREF(parent.AsObject());
  node.Parent = &parent;
}

void Unlink(Node& node) noexcept {
  if (!node.IsRecordInPlace() || node.Parent == nullptr) return;
  for (Node** at = &node.Parent->Records; *at != nullptr; at = &(*at)->NextRecord)
    if (*at == &node) {
      *at = node.NextRecord;
      break;
    }
  node.NextRecord = nullptr;
}

/// Gives up what the node stands for. Whatever that destroys is destroyed last.
void GiveUp(Node& node) noexcept {
  Unlink(node);
  Store* const store = std::exchange(node.Owner, nullptr);
  Node* const parent = std::exchange(node.Parent, nullptr);
  node.At = nullptr;
  node.Field = nullptr;
  if (store != nullptr) store->DropRef();
  if (parent != nullptr) Py_DECREF(parent->AsObject());
}

/// What the node stands for, in an empty slot too, where nobody has changed it meanwhile.
void* FindUnchecked(Node& node) {
  if (node.At != nullptr) return node.At;
  if (node.Parent == nullptr) return node.Owner->FindRoot();
  void* const owner = Find(*node.Parent);
  if (owner == nullptr) return nullptr;
  if (node.IsRecordInPlace()) return node.Field->List.At(owner, node.Index).At;
  return node.Field->Sub(owner);
}

}  // namespace

Store& StoreOf(Node& node) {
  Node* at = &node;
  while (at->Owner == nullptr) {
    if (at->Parent == nullptr) RaiseDropped();
    at = at->Parent;
  }
  return *at->Owner;
}

bool IsEditable(Node& node) { return StoreOf(node).IsEditable(); }

EditStore& NeedEditable(Node& node) {
  Store& store = StoreOf(node);
  store.Check();
  if (!store.IsEditable())
    Raise(PyExc_TypeError, "the document is only read; change its edit form, which edit() gives");
  return static_cast<EditStore&>(store);
}

void* Find(Node& node) {
  StoreOf(node).Check();
  return FindUnchecked(node);
}

void* Need(Node& node) {
  NeedEditable(node);
  if (void* const at = FindUnchecked(node); at != nullptr) return at;
  if (node.Parent == nullptr) return node.Owner->NeedRoot();
  void* const owner = Need(*node.Parent);
  node.Field->SetSub(owner, Owned({node.Info->Create(), node.Info}));
  return node.Field->Sub(owner);
}

Object Deref(Node& node) {
  void* const at = Find(node);
  if (at == nullptr) Raise(PyExc_ReferenceError, "the document has no " + node.Info->Name);
  return {at, node.Info};
}

PyObject* Wrap(Store& store, const Object& object) {
  if (object.At == nullptr) Py_RETURN_NONE;
  if (store.IsEditable())
    if (Node* const known = static_cast<EditStore&>(store).Find(object.At); known != nullptr)
      return Ref<Node>::Share(known).ReleaseObject();
  return NewBound(store, object).ReleaseObject();
}

PyObject* Wrap(Node& node, const Object& object) {
  Store& store = StoreOf(node);
  PyObject* const wrapped = Wrap(store, object);
  if (object.At != nullptr && !store.IsEditable())
    reinterpret_cast<Node*>(wrapped)->Place = PlaceBelow(node.Place, object);
  return wrapped;
}

PyObject* WrapElement(Node& node, const FieldInfo* field, const ListInfo& list, std::size_t at) {
  void* const owner = Find(node);
  if (list.What == ListInfo::Holds::kValues) return list.Value(owner, at);
  const Object object = list.At(owner, at);
  if (list.What == ListInfo::Holds::kObjects || !IsEditable(node)) {
    PyObject* const wrapped = Wrap(node, object);
    if (wrapped != Py_None && field == nullptr)
      reinterpret_cast<Node*>(wrapped)->Place.Index = static_cast<std::int64_t>(at);
    return wrapped;
  }
  for (Node* record = node.Records; record != nullptr; record = record->NextRecord)
    if (record->Field == field && record->Index == at)
      return Ref<Node>::Share(record).ReleaseObject();
  Ref<Node> record = NewEmpty(*object.Info);
  Rebind(*record.Get(), node, *field, at);
  return record.ReleaseObject();
}

Ref<Node> WrapSlot(Node& node, const FieldInfo& field) {
  void* const owner = Find(node);
  void* const sub = owner == nullptr ? nullptr : field.Sub(owner);
  if (sub != nullptr)
    return Ref<Node>::Take(reinterpret_cast<Node*>(Wrap(node, Object{sub, field.SlotClass})));
  Ref<Node> slot = NewEmpty(*field.SlotClass);
  slot->Field = &field;
  slot->Place = node.Place;
  SetParent(*slot.Get(), node);
  return slot;
}

Ref<Node> WrapRoot(Store& store, const ClassInfo& info) {
  store.Check();
  if (void* const root = store.FindRoot(); root != nullptr)
    return Ref<Node>::Take(reinterpret_cast<Node*>(Wrap(store, Object{root, &info})));
  Ref<Node> node = NewEmpty(info);
  Own(*node.Get(), store);
  return node;
}

Ref<Node> WrapFresh(Owned object) {
  const Object root = object.Get();
  const StoreRef<FreshStore> store(new FreshStore(std::move(object)));
  return NewBound(*store, root);
}

void SetFiledIn(Node& node, Node* set) noexcept {
  if (set != nullptr) Py_INCREF(set->AsObject());
  Node* const before = std::exchange(node.Parent, set);
  if (before != nullptr) Py_DECREF(before->AsObject());
}

void Drop(Node& node) noexcept { GiveUp(node); }

void Rebind(Node& node, Node& parent, const FieldInfo& field, std::size_t index) noexcept {
  if (node.Owner != nullptr && node.At != nullptr)
    static_cast<EditStore*>(node.Owner)->Forget(node.At);
  Py_INCREF(parent.AsObject());
  GiveUp(node);
  node.Parent = &parent;
  node.Field = &field;
  node.Index = index;
  node.NextRecord = parent.Records;
  parent.Records = &node;
}

void MoveRecords(Node& owner, const FieldInfo& field, Range range, std::size_t count) noexcept {
  Node* next = nullptr;
  for (Node* record = owner.Records; record != nullptr; record = next) {
    next = record->NextRecord;
    if (record->Field != &field || record->Index < range.First) continue;
    if (record->Index < range.First + range.Count)
      Drop(*record);
    else
      record->Index = record->Index - range.Count + count;
  }
}

FreshStore* FreshStoreOf(Node& node) {
  auto* const fresh = dynamic_cast<FreshStore*>(node.Owner);
  return fresh != nullptr && node.At != nullptr && fresh->GetRoot().At == node.At ? fresh : nullptr;
}

void DeallocNode(PyObject* self) {
  auto& node = *reinterpret_cast<Node*>(self);
  if (node.Owner != nullptr && node.At != nullptr && node.Owner->IsEditable())
    static_cast<EditStore*>(node.Owner)->Forget(node.At);
  GiveUp(node);
  PyTypeObject* const type = Py_TYPE(self);
  type->tp_free(self);
  Py_DECREF(type);
}

PyObject* GetField(Node& node, std::size_t at) {
  const FieldInfo& field = node.Info->Fields[at];
  switch (field.Is) {
    case FieldInfo::Shape::kValue:
      return field.Get(Deref(node).At);
    case FieldInfo::Shape::kList:
      StoreOf(node).Check();
      return WrapList(node, field);
    case FieldInfo::Shape::kSlot: {
      void* const owner = Find(node);
      return Wrap(node, Object{owner == nullptr ? nullptr : field.Sub(owner), field.SlotClass});
    }
  }
  Py_RETURN_NONE;
}

namespace {

void SetSlot(Node& node, const FieldInfo& field, PyObject* value) {
  Owned sub;
  Node* given = nullptr;
  FreshStore* fresh = nullptr;
  EditStore& store = NeedEditable(node);
  if (value != Py_None) {
    given = &NeedNode(value, *field.SlotClass->Type, field.Name.c_str());
    fresh = FreshStoreOf(*given);
    if (fresh == &store) fresh = nullptr;
    if (fresh == nullptr) sub = CopyToEdit(Deref(*given));
  }
  void* const owner = Need(node);
  if (fresh != nullptr) store.ReserveFor(*fresh);
  if (void* const old = field.Sub(owner); old != nullptr) store.Drop(Object{old, field.SlotClass});
  if (fresh == nullptr) return field.SetSub(owner, std::move(sub));
  const StoreRef<FreshStore> source(fresh);
  field.SetSub(owner, source->TakeRoot());
  source->MoveAll(store);
}

}  // namespace

void SetField(Node& node, std::size_t at, PyObject* value) {
  const FieldInfo& field = node.Info->Fields[at];
  if (value == nullptr) Raise(PyExc_AttributeError, field.Name + " cannot be deleted");
  if (!IsEditable(node))
    Raise(PyExc_AttributeError,
          field.Name + " is only read; change the document's edit form, which edit() gives");
  const Ref<Node> keep = Ref<Node>::Share(&node);
  switch (field.Is) {
    case FieldInfo::Shape::kValue:
      if (node.At != nullptr && node.Parent != nullptr) return SetFieldOfFiled(node, field, value);
      return field.Set(node, value);
    case FieldInfo::Shape::kList: {
      const auto all = Ref<>::New(PySlice_New(nullptr, nullptr, nullptr));
      return Assign({node, &field, field.List}, all.Get(), value);
    }
    case FieldInfo::Shape::kSlot:
      return SetSlot(node, field, value);
  }
}

}  // namespace qenzor::python
