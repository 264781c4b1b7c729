#pragma once

#include <algorithm>
#include <cassert>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

#include "qenzor/core/elem_iterator.h"
#include "qenzor/edit/abstract_chunk_edit.h"
#include "qenzor/platform/list.h"
#include "qenzor/platform/map.h"

namespace qenzor {

/// The editable form of a set. TEdit is a pointer to the element edit class. Member functions
/// stand in chunk_set_edit_impl.h.
template <class TEdit>
class QENZOR_EXPORT CAbstractChunkSetEdit : public CAbstractChunkEdit {
 public:
  using ElementEdit = std::remove_pointer_t<TEdit>;

  virtual std::uint32_t GetElemCount() const = 0;
  std::size_t size() const { return GetElemCount(); }
  bool empty() const { return size() == 0; }
};

/// The editable form of an array set: a list of owned elements, in order. T is a pointer to the
/// element chunk class.
template <class T, class TEdit>
class QENZOR_EXPORT CChunkSetArrayEdit : public CAbstractChunkSetEdit<TEdit> {
 public:
  using ElementEdit = std::remove_pointer_t<TEdit>;
  using List = CList<std::unique_ptr<ElementEdit>>;

  std::uint32_t GetElemCount() const override;
  [[nodiscard]] CAbstractChunk* EditDataToChunkData() override;
  void ChunkDataToEditData(CAbstractChunk* chunk) override;
  [[nodiscard]] CAbstractChunkEdit* Clone() override;
  void DeepCopy(CAbstractChunkEdit* source) override;
  bool SetSubChunkEdit(CAbstractChunkEdit* sub) override;
  void Release() override;

  /// A new empty set chunk of the concrete class, owned by the caller.
  [[nodiscard]] virtual CAbstractChunk* GetChunkInstance() = 0;
  /// A new empty set edit of the concrete class, owned by the caller.
  [[nodiscard]] virtual CAbstractChunkEdit* GetChunkEditInstance() = 0;

  /// The list itself, for callers that walk or change it; the set goes on owning it.
  List* GetElemPtr() { return &m_list; }
  const List* GetElemPtr() const { return &m_list; }
  /// The element at index, still owned by the set; null when index is not below the count.
  TEdit GetElem(std::uint32_t index) const;
  /// Takes ownership of an element and puts it in front of the one at index, or at the end when
  /// index is not below the count.
  void AddElem(std::uint32_t index, TEdit elem);
  /// Destroys the element at index; nothing when index is not below the count.
  void DelElem(std::uint32_t index);

  /// The elements in order, as pointers.
  CElemIterator<ElementEdit> begin() { return CElemIterator<ElementEdit>(m_list.data()); }
  CElemIterator<ElementEdit> end() {
    return CElemIterator<ElementEdit>(m_list.data() + m_list.size());
  }
  CElemIterator<const ElementEdit> begin() const {
    return CElemIterator<const ElementEdit>(m_list.data());
  }
  CElemIterator<const ElementEdit> end() const {
    return CElemIterator<const ElementEdit>(m_list.data() + m_list.size());
  }

  /// Puts an element at the end, or in front of the one at index, and gives it back as what it is.
  template <class E>
  E& Append(std::unique_ptr<E> elem) {
    return Insert(m_list.size(), std::move(elem));
  }
  template <class E>
  E& Insert(std::size_t index, std::unique_ptr<E> elem) {
    assert(elem != nullptr);
    E& added = *elem;
    m_list.insert(m_list.begin() + static_cast<std::ptrdiff_t>(std::min(index, m_list.size())),
                  std::move(elem));
    return added;
  }
  /// Takes the element at index out of the set; null when index is not below the count.
  [[nodiscard]] std::unique_ptr<ElementEdit> Take(std::size_t index) {
    if (index >= m_list.size()) return nullptr;
    std::unique_ptr<ElementEdit> taken = std::move(m_list[index]);
    m_list.erase(m_list.begin() + static_cast<std::ptrdiff_t>(index));
    return taken;
  }
  /// Destroys the elements for which is_unwanted(const ElementEdit&) holds; how many they were.
  template <class Predicate>
  std::size_t EraseIf(Predicate is_unwanted) {
    return std::erase_if(m_list, [&](const auto& elem) {
      return elem != nullptr && is_unwanted(std::as_const(*elem));
    });
  }

 protected:
  List m_list;
};

/// The editable form of the keyed set.
template <class K, class T, class TEdit>
class QENZOR_EXPORT CChunkSetMapEdit;

template <class T, class TEdit>
class QENZOR_EXPORT CChunkSetMapEdit<std::uint64_t, T, TEdit>
    : public CAbstractChunkSetEdit<TEdit> {
 public:
  using ElementEdit = std::remove_pointer_t<TEdit>;
  using Key = std::uint64_t;
  static constexpr std::uint32_t kBuckets = 17;

  CChunkSetMapEdit();

  [[nodiscard]] CAbstractChunk* EditDataToChunkData() override;
  void ChunkDataToEditData(CAbstractChunk* chunk) override;
  [[nodiscard]] CAbstractChunkEdit* Clone() override;
  void DeepCopy(CAbstractChunkEdit* source) override;
  bool SetSubChunkEdit(CAbstractChunkEdit* sub) override;
  void Release() override;

  std::uint32_t GetElemCount() const override;
  /// Takes ownership of an element and files it under its own key, destroying the one that stands
  /// there. A later change of the element's key does not move it.
  virtual void AddElem(TEdit elem) = 0;
  /// A new empty set chunk of the concrete class, owned by the caller.
  [[nodiscard]] virtual CAbstractChunk* GetChunkInstance() = 0;
  /// A new empty set edit of the concrete class, owned by the caller.
  [[nodiscard]] virtual CAbstractChunkEdit* GetChunkEditInstance() = 0;

  /// The element under the key, still owned by the set, or null.
  TEdit GetElem(std::uint64_t key) const;
  /// The elements in the set's own order, still owned by it.
  std::vector<TEdit> GetElems() const;
  /// Takes the element out of the set without destroying it: from now on it is the caller's, who
  /// gets it back as the result (null when the key is absent).
  [[nodiscard]] TEdit DelElem(std::uint64_t key);
  /// Turns the order round among elements that share a bucket, as copying the set does.
  void ReverseOrder();

  /// The elements in the set's own order, as pointers.
  CKeyedElemIterator<ElementEdit> begin() { return CKeyedElemIterator<ElementEdit>(GetElems()); }
  CKeyedElemIterator<const ElementEdit> begin() const {
    return CKeyedElemIterator<const ElementEdit>(GetElems());
  }
  std::default_sentinel_t end() const { return {}; }

  /// Files an element under its own key, destroying the one that stands there, and gives it back.
  ElementEdit& Insert(std::unique_ptr<ElementEdit> elem) {
    ElementEdit& added = *elem;
    AddElem(elem.release());
    return added;
  }
  /// Takes the element under the key out of the set; null when the key is absent.
  [[nodiscard]] std::unique_ptr<ElementEdit> Take(std::uint64_t key) {
    return std::unique_ptr<ElementEdit>(DelElem(key));
  }
  /// Destroys the elements for which is_unwanted(const ElementEdit&) holds; how many they were.
  template <class Predicate>
  std::size_t EraseIf(Predicate is_unwanted) {
    std::vector<std::uint64_t> unwanted;
    m_elems.ForEachOrdered([&](std::uint64_t key, const auto& elem) {
      if (is_unwanted(std::as_const(*elem))) unwanted.push_back(key);
    });
    for (const std::uint64_t key : unwanted) m_elems.Remove(key);
    return unwanted.size();
  }

 protected:
  CMap<std::uint64_t, std::unique_ptr<ElementEdit>> m_elems;
};

/// The container of a set chunk in the edit form.
template <class Chunk>
struct SetEditBase {
  using Type = CChunkSetArrayEdit<typename Chunk::Element*, typename Chunk::Element::EditClass*>;
};
template <class Chunk>
requires requires { typename Chunk::Key; }
struct SetEditBase<Chunk> {
  using Type = CChunkSetMapEdit<typename Chunk::Key, typename Chunk::Element*,
                                typename Chunk::Element::EditClass*>;
};

/// A concrete set edit. Chunk is the set's chunk class, which names the set edit.
template <class Chunk>
class QENZOR_EXPORT CSetEditOf : public SetEditBase<Chunk>::Type {
 public:
  using ChunkClass = Chunk;

  [[nodiscard]] CAbstractChunk* GetChunkInstance() override { return new Chunk; }
  [[nodiscard]] CAbstractChunkEdit* GetChunkEditInstance() override {
    return new typename Chunk::EditClass;
  }
};

}  // namespace qenzor
