#include "sequence.h"

#include <algorithm>

namespace qenzor::python {

void CheckLength(const ListInfo& list, std::size_t size) {
  if (size > list.Most)
    Raise(PyExc_ValueError, "the list can hold no more than " + std::to_string(list.Most) +
                                " elements, not " + std::to_string(size));
}

namespace {

/// Something that is about to become part of a list: a copy, or what a store of its own gives up.
struct Coming {
  Owned Copy;
  StoreRef<FreshStore> From;
  Ref<Node> Given;
};

/// What a store of its own holds is moved, once; all else is copied.
std::vector<Coming> PrepareObjects(const std::vector<Ref<Node>>& given, const EditStore& into) {
  std::vector<Coming> coming;
  coming.reserve(given.size());
  for (const Ref<Node>& node : given) {
    FreshStore* fresh = FreshStoreOf(*node.Get());
    const auto is_taken = [&](const Coming& other) { return other.From.Get() == fresh; };
    if (fresh == &into || std::any_of(coming.begin(), coming.end(), is_taken)) fresh = nullptr;
    const Object object = Deref(*node.Get());
    coming.push_back({fresh == nullptr ? CopyToEdit(object) : Owned(), StoreRef(fresh), node});
  }
  return coming;
}

/// Puts objects in the place of a range, and gives back what was there, unless it is dropped.
std::vector<Owned> SpliceObjects(const Sequence& sequence, Range range,
                                 const std::vector<Ref<Node>>& given) {
  EditStore& store = NeedEditable(sequence.Owner);
  std::vector<Coming> coming = PrepareObjects(given, store);
  void* const owner = Need(sequence.Owner);
  CheckLength(sequence.List, sequence.List.Size(owner) - range.Count + coming.size());
  std::vector<Owned> objects;
  objects.reserve(coming.size());
  sequence.List.Reserve(owner, coming.size());
  for (const Coming& one : coming)
    if (one.From) store.ReserveFor(*one.From);
  for (Coming& one : coming)
    objects.push_back(one.From ? one.From->TakeRoot() : std::move(one.Copy));
  std::vector<Owned> gone = sequence.List.Splice(owner, range, objects);
  for (const Coming& one : coming)
    if (one.From) one.From->MoveAll(store);
  return gone;
}

void SpliceRecords(const Sequence& sequence, Range range, const std::vector<Ref<Node>>& given) {
  std::vector<const void*> records;
  records.reserve(given.size());
  for (const Ref<Node>& node : given) records.push_back(Deref(*node.Get()).At);
  void* const owner = Need(sequence.Owner);
  CheckLength(sequence.List, sequence.List.Size(owner) - range.Count + records.size());
  sequence.List.ReplaceRecords(owner, range, records);
  MoveRecords(sequence.Owner, *sequence.Field, range, records.size());
  // What belonged to nobody now stands for what has become of it.
  for (std::size_t i = 0; i < given.size(); ++i)
    if (FreshStoreOf(*given[i].Get()) != nullptr)
      Rebind(*given[i].Get(), sequence.Owner, *sequence.Field, range.First + i);
}

std::vector<Ref<Node>> NodesOf(const Sequence& sequence, PyObject* values) {
  const auto items = Ref<>::New(PySequence_Tuple(values));
  std::vector<Ref<Node>> nodes;
  for (Py_ssize_t i = 0; i < PyTuple_GET_SIZE(items.Get()); ++i)
    nodes.push_back(Ref<Node>::Share(
        &NeedNode(PyTuple_GET_ITEM(items.Get(), i), *sequence.List.ElementType, "an element")));
  return nodes;
}

Range Clamped(const Sequence& sequence, Range range) {
  const std::size_t size = SizeOf(sequence);
  range.First = std::min(range.First, size);
  range.Count = std::min(range.Count, size - range.First);
  return range;
}

void DropObjects(const Sequence& sequence, const std::vector<Owned>& gone) {
  EditStore& store = NeedEditable(sequence.Owner);
  for (const Owned& object : gone) store.Drop(object.Get());
}

/// Puts what an iterable gives in the place of a range.
void Replace(const Sequence& sequence, Range range, PyObject* values) {
  if (sequence.List.What == ListInfo::Holds::kValues) {
    NeedEditable(sequence.Owner);
    return sequence.List.ReplaceValues(sequence.Owner, sequence.List, range, values);
  }
  const std::vector<Ref<Node>> nodes = NodesOf(sequence, values);
  // Code that the values ran may have changed the list.
  range = Clamped(sequence, range);
  if (sequence.List.What == ListInfo::Holds::kRecords)
    SpliceRecords(sequence, range, nodes);
  else
    DropObjects(sequence, SpliceObjects(sequence, range, nodes));
}

Py_ssize_t PositionOf(const Sequence& sequence, Py_ssize_t at) {
  const auto size = static_cast<Py_ssize_t>(SizeOf(sequence));
  if (at < 0) at += size;
  if (at < 0 || at >= size) Raise(PyExc_IndexError, "there is no element at this position");
  return at;
}

struct Slice {
  Py_ssize_t First = 0;
  Py_ssize_t Step = 1;
  Py_ssize_t Count = 0;
};

Slice SliceOf(const Sequence& sequence, PyObject* key) {
  Py_ssize_t start = 0;
  Py_ssize_t stop = 0;
  Slice slice;
  Checked(PySlice_Unpack(key, &start, &stop, &slice.Step));
  const auto size = static_cast<Py_ssize_t>(SizeOf(sequence));
  slice.Count = PySlice_AdjustIndices(size, &start, &stop, slice.Step);
  slice.First = start;
  return slice;
}

void AssignToSlice(const Sequence& sequence, PyObject* key, PyObject* values) {
  const auto none = Ref<>::New(PyTuple_New(0));
  const Slice slice = SliceOf(sequence, key);
  if (slice.Step == 1) {
    const Range range{static_cast<std::size_t>(slice.First), static_cast<std::size_t>(slice.Count)};
    return Replace(sequence, range, values == nullptr ? none.Get() : values);
  }
  if (values == nullptr) {
    // From the last on, so that those before stay where they are.
    const Py_ssize_t last = slice.First + (slice.Count - 1) * slice.Step;
    const Py_ssize_t from = slice.Step > 0 ? last : slice.First;
    const Py_ssize_t step = slice.Step > 0 ? -slice.Step : slice.Step;
    for (Py_ssize_t i = 0; i < slice.Count; ++i)
      Replace(sequence, {static_cast<std::size_t>(from + i * step), 1}, none.Get());
    return;
  }
  const auto items = Ref<>::New(PySequence_Tuple(values));
  if (PyTuple_GET_SIZE(items.Get()) != slice.Count)
    Raise(PyExc_ValueError, "a slice with a step takes as many elements as it has places");
  if (sequence.List.What != ListInfo::Holds::kValues) NodesOf(sequence, items.Get());
  for (Py_ssize_t i = 0; i < slice.Count; ++i) {
    const auto one = Ref<>::New(PyTuple_Pack(1, PyTuple_GET_ITEM(items.Get(), i)));
    Replace(sequence, {static_cast<std::size_t>(slice.First + i * slice.Step), 1}, one.Get());
  }
}

}  // namespace

std::size_t SizeOf(const Sequence& sequence) {
  const void* const owner = Find(sequence.Owner);
  return owner == nullptr ? 0 : sequence.List.Size(owner);
}

PyObject* ElementAt(const Sequence& sequence, Py_ssize_t at) {
  return WrapElement(sequence.Owner, sequence.Field, sequence.List,
                     static_cast<std::size_t>(PositionOf(sequence, at)));
}

PyObject* Subscript(const Sequence& sequence, PyObject* key) {
  if (!PySlice_Check(key)) {
    const Py_ssize_t at = PyNumber_AsSsize_t(key, PyExc_IndexError);
    if (at == -1 && PyErr_Occurred() != nullptr) throw PythonError{};
    return ElementAt(sequence, at);
  }
  const Slice slice = SliceOf(sequence, key);
  auto list = Ref<>::New(PyList_New(slice.Count));
  for (Py_ssize_t i = 0; i < slice.Count; ++i)
    PyList_SET_ITEM(list.Get(), i, ElementAt(sequence, slice.First + i * slice.Step));
  return list.Release();
}

void Assign(const Sequence& sequence, PyObject* key, PyObject* value) {
  const Ref<Node> keep = Ref<Node>::Share(&sequence.Owner);
  NeedEditable(sequence.Owner);
  if (PySlice_Check(key)) return AssignToSlice(sequence, key, value);
  const Py_ssize_t asked = PyNumber_AsSsize_t(key, PyExc_IndexError);
  if (asked == -1 && PyErr_Occurred() != nullptr) throw PythonError{};
  const Range range{static_cast<std::size_t>(PositionOf(sequence, asked)), 1};
  const auto values = Ref<>::New(value == nullptr ? PyTuple_New(0) : PyTuple_Pack(1, value));
  Replace(sequence, range, values.Get());
}

PyObject* Pop(const Sequence& sequence, Py_ssize_t at) {
  EditStore& store = NeedEditable(sequence.Owner);
  const Range range{static_cast<std::size_t>(PositionOf(sequence, at)), 1};
  const auto none = Ref<>::New(PyTuple_New(0));
  if (sequence.List.What == ListInfo::Holds::kValues) {
    auto value = Ref<>::New(ElementAt(sequence, at));
    Replace(sequence, range, none.Get());
    return value.Release();
  }
  if (sequence.List.What == ListInfo::Holds::kRecords) {
    Ref<Node> copy = WrapFresh(CopyToEdit(sequence.List.At(Find(sequence.Owner), range.First)));
    Replace(sequence, range, none.Get());
    return copy.ReleaseObject();
  }
  std::vector<Owned> gone = SpliceObjects(sequence, range, {});
  if (gone.empty()) Py_RETURN_NONE;
  const Object object = gone.front().Get();
  const StoreRef<FreshStore> fresh(new FreshStore(std::move(gone.front())));
  store.Move(object, *fresh);
  return Wrap(*fresh, object);
}

}  // namespace qenzor::python
