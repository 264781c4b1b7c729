#pragma once

// Who owns the objects that Python sees. All of it is touched with the interpreter's lock held.

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "python_api.h"
#include "reflection.h"

namespace qenzor::python {

/// Owns a document, or an object that is in no document yet. It lives as long as anything of it is
/// known to Python.
class Store {
 public:
  Store() = default;
  Store(const Store&) = delete;
  Store& operator=(const Store&) = delete;

  virtual bool IsEditable() const = 0;

  /// The root of a document; null where it is missing.
  virtual void* FindRoot() { return nullptr; }
  /// The same, made where it is missing. Only of documents that can be changed.
  virtual void* NeedRoot() { return nullptr; }

  /// Raises RuntimeError while an operation without the interpreter's lock is under way, and
  /// ReferenceError once the store has been closed.
  void Check() const {
    if (m_busy || m_closed) RaiseUnusable();
  }
  bool IsClosed() const { return m_closed; }

  void AddRef() noexcept { ++m_refs; }
  void DropRef() noexcept {
    if (--m_refs == 0) delete this;
  }

 protected:
  virtual ~Store() = default;
  void SetClosed() { m_closed = true; }

 private:
  friend class WithoutLock;
  [[noreturn]] void RaiseUnusable() const;

  std::size_t m_refs = 0;
  bool m_busy = false;
  bool m_closed = false;
};

template <class T = Store>
class StoreRef {
 public:
  StoreRef() = default;
  explicit StoreRef(T* store) : m_store(store) {
    if (m_store != nullptr) m_store->AddRef();
  }
  StoreRef(const StoreRef& other) : StoreRef(other.m_store) {}
  StoreRef(StoreRef&& other) noexcept : m_store(std::exchange(other.m_store, nullptr)) {}
  StoreRef& operator=(StoreRef other) noexcept {
    std::swap(m_store, other.m_store);
    return *this;
  }
  ~StoreRef() {
    if (m_store != nullptr) m_store->DropRef();
  }
  T* Get() const { return m_store; }
  T* operator->() const { return m_store; }
  T& operator*() const { return *m_store; }
  explicit operator bool() const { return m_store != nullptr; }
  T* Release() { return std::exchange(m_store, nullptr); }

 private:
  T* m_store = nullptr;
};

/// Gives the interpreter's lock away while it lives; nobody else may use the store meanwhile.
class WithoutLock {
 public:
  explicit WithoutLock(Store* store) : m_store(store) {
    if (m_store != nullptr) {
      m_store->Check();
      m_store->m_busy = true;
    }
    m_state = PyEval_SaveThread();
  }
  ~WithoutLock() {
    PyEval_RestoreThread(m_state);
    if (m_store != nullptr) m_store->m_busy = false;
  }
  WithoutLock(const WithoutLock&) = delete;
  WithoutLock& operator=(const WithoutLock&) = delete;

 private:
  Store* m_store;
  PyThreadState* m_state;
};

/// Owns objects that can be changed. Of each it knows the one Python object that stands for it, so
/// that this hears when the object goes away or moves to another owner.
class EditStore : public Store {
 public:
  bool IsEditable() const override { return true; }

  Node* Find(const void* object) const {
    const auto found = m_nodes.find(object);
    return found == m_nodes.end() ? nullptr : found->second;
  }
  void Add(const void* object, Node* node) { m_nodes.emplace(object, node); }
  void Forget(const void* object) noexcept { m_nodes.erase(object); }
  bool IsWatched() const noexcept { return !m_nodes.empty(); }

  /// Lets all that Python knows of the object and what is below it raise ReferenceError from now
  /// on: it is about to be destroyed.
  void Drop(const Object& object) noexcept;
  /// The same for everything.
  void DropAll() noexcept;
  /// Gives what Python knows of the object and what is below it to another store.
  void Move(const Object& object, EditStore& to);
  /// The same for everything; there must be room in the other store.
  void MoveAll(EditStore& to) noexcept;
  void ReserveFor(const EditStore& more) { m_nodes.reserve(m_nodes.size() + more.m_nodes.size()); }

 private:
  std::unordered_map<const void*, Node*> m_nodes;
};

/// Owns an object that is in no document.
class FreshStore final : public EditStore {
 public:
  explicit FreshStore(Owned root) : m_root(std::move(root)) {}

  const Object& GetRoot() const { return m_root.Get(); }
  /// The object, which somebody else owns from now on.
  Owned TakeRoot() { return std::move(m_root); }

 private:
  ~FreshStore() override = default;
  Owned m_root;
};

/// Calls visit(object) for each object that the given one owns, those of a kind of its own below it
/// not counted.
template <class Visit>
void ForEachPart(const Object& object, Visit&& visit) {
  const auto walk_list = [&](const ListInfo& list) {
    const std::size_t count = list.Size(object.At);
    for (std::size_t i = 0; i < count; ++i)
      if (const Object part = list.At(object.At, i); part.At != nullptr) visit(part);
  };
  for (const FieldInfo& field : object.Info->Fields) {
    if (field.Is == FieldInfo::Shape::kSlot) {
      if (void* const sub = field.Sub(object.At); sub != nullptr)
        visit(Object{sub, field.SlotClass});
    } else if (field.Is == FieldInfo::Shape::kList &&
               field.List.What == ListInfo::Holds::kObjects) {
      walk_list(field.List);
    }
  }
  if (object.Info->IsKeyed) {
    const KeyedInfo& keyed = object.Info->Keyed;
    for (const std::uint64_t key : keyed.Keys(object.At)) visit(keyed.Find(object.At, key));
  } else if (object.Info->IsSet) {
    walk_list(object.Info->Elements);
  }
}

}  // namespace qenzor::python
