#include "store.h"

#include "node.h"

namespace qenzor::python {

void Store::RaiseUnusable() const {
  if (m_busy) Raise(PyExc_RuntimeError, "the document is in use by another thread");
  Raise(PyExc_ReferenceError, "the edit form has been closed");
}

void EditStore::Drop(const Object& object) noexcept {
  if (m_nodes.empty()) return;
  if (const auto found = m_nodes.find(object.At); found != m_nodes.end()) {
    Node* const node = found->second;
    m_nodes.erase(found);
    python::Drop(*node);
  }
  ForEachPart(object, [this](const Object& part) { Drop(part); });
}

void EditStore::DropAll() noexcept {
  const StoreRef<EditStore> keep(this);
  std::vector<Ref<Node>> nodes;  // of which one may be all that holds another
  nodes.reserve(m_nodes.size());
  for (const auto& entry : m_nodes) nodes.push_back(Ref<Node>::Share(entry.second));
  m_nodes.clear();
  for (const Ref<Node>& node : nodes) python::Drop(*node.Get());
}

namespace {

void GiveTo(Node& node, EditStore& to) noexcept {
  Store* const from = node.Owner;
  to.AddRef();
  node.Owner = &to;
  from->DropRef();
}

}  // namespace

void EditStore::Move(const Object& object, EditStore& to) {
  if (m_nodes.empty()) return;
  if (const auto found = m_nodes.find(object.At); found != m_nodes.end()) {
    Node* const node = found->second;
    to.m_nodes.insert(m_nodes.extract(found));
    GiveTo(*node, to);
  }
  ForEachPart(object, [&](const Object& part) { Move(part, to); });
}

void EditStore::MoveAll(EditStore& to) noexcept {
  const StoreRef<EditStore> keep(this);
  while (!m_nodes.empty()) {
    Node* const node = m_nodes.begin()->second;
    to.m_nodes.insert(m_nodes.extract(m_nodes.begin()));
    GiveTo(*node, to);
  }
}

}  // namespace qenzor::python
