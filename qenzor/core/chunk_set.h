#pragma once

#include <cstdint>
#include <memory>
#include <type_traits>
#include <vector>

#include "qenzor/core/abstract_chunk.h"
#include "qenzor/core/elem_iterator.h"
#include "qenzor/platform/map.h"

namespace qenzor {

/// A chunk whose data is an element count (unsigned 32-bit) and the elements as whole chunks. T is
/// a pointer to the element class. The member functions stand in chunk_set_impl.h.
template <class T>
class QENZOR_EXPORT CAbstractChunkSet : public CAbstractChunk {
 public:
  using Element = std::remove_pointer_t<T>;

  /// Keeps a sub-chunk of the element class or one derived from it; deletes any other.
  void SubChunkSet(std::uint32_t index, CAbstractChunk* chunk) override;
  /// The elements held, whatever count a file declared.
  virtual std::uint32_t GetElemCount() const = 0;

 protected:
  bool ReadPrimitiveBlock(const void* data, const std::uint32_t& size,
                          std::uint32_t& consumed) override;
  bool ReadPrimitiveBlock(CFile* file, std::uint32_t& consumed) override;
  /// Takes ownership of an element. The index is not used.
  virtual void AddElem(std::uint32_t index, T elem) = 0;
  /// A new empty set of the concrete class, owned by the caller.
  [[nodiscard]] virtual CAbstractChunk* GetChunkInstance() = 0;

  /// Writes a count, then the elements, whose results are not looked at: what one of them could
  /// not write does not keep the others from being written.
  template <class Walk>
  bool WriteElements(CFile* file, std::uint32_t count, Walk&& walk);

  /// The count that stood in the file; it is not compared with what arrives.
  std::uint32_t m_declaredCount = 0;
};

/// A set that keeps its elements in the order in which they arrive.
template <class T>
class QENZOR_EXPORT CChunkSetArray : public CAbstractChunkSet<T> {
 public:
  using Element = std::remove_pointer_t<T>;
  static const CRuntimeClass kRuntimeClass;

  const CRuntimeClass& GetRuntimeClass() const override;
  std::uint32_t GetElemCount() const override;
  /// The element at index, still owned by the set; null when index is not below the count.
  T GetElem(std::uint32_t index) const {
    return index < m_elems.size() ? m_elems[index].get() : nullptr;
  }
  /// Puts an element, which belongs to the set from then on, in the place of the one at index,
  /// which is deleted. When index is not below the count the given one is deleted: false.
  bool SetElem(std::uint32_t index, T elem) {
    std::unique_ptr<Element> owned(elem);
    if (index >= m_elems.size()) return false;
    m_elems[index] = std::move(owned);
    return true;
  }
  /// Empties the set and gives it count empty places, to be filled by SetElem. Every place must
  /// hold an element before the set is written.
  void GetNewArray(std::uint32_t count);

  /// The elements in order, as pointers.
  CElemIterator<Element> begin() { return CElemIterator<Element>(m_elems.data()); }
  CElemIterator<Element> end() { return CElemIterator<Element>(m_elems.data() + size()); }
  CElemIterator<const Element> begin() const {
    return CElemIterator<const Element>(m_elems.data());
  }
  CElemIterator<const Element> end() const {
    return CElemIterator<const Element>(m_elems.data() + size());
  }
  std::size_t size() const { return m_elems.size(); }
  bool empty() const { return m_elems.empty(); }

  [[nodiscard]] CAbstractChunk* Clone() override;
  void DeepCopy(CAbstractChunk* source) override;
  void RecursiveReCalcDataSize() override;

 protected:
  void Release() override;
  bool WriteData(CFile* file, bool recalc) override;
  void AddElem(std::uint32_t index, T elem) override;

 private:
  std::vector<std::unique_ptr<Element>> m_elems;
};

template <class K, class T>
class QENZOR_EXPORT CChunkSetMap;

/// A set that files its elements under a 64-bit key of their own; a later element under a key
/// replaces, and deletes, the earlier one. Its order, in files and in every walk, depends on the
/// keys alone but for keys that share one of the 8191 buckets: those go from the most recently
/// added to the earliest.
template <class T>
class QENZOR_EXPORT CChunkSetMap<std::uint64_t, T> : public CAbstractChunkSet<T> {
 public:
  using Element = std::remove_pointer_t<T>;
  using Key = std::uint64_t;
  using Elems = CMap<std::uint64_t, std::unique_ptr<Element>>;
  static constexpr std::uint32_t kBuckets = 8191;
  static const CRuntimeClass kRuntimeClass;

  CChunkSetMap();
  const CRuntimeClass& GetRuntimeClass() const override;
  std::uint32_t GetElemCount() const override;
  /// The element under the key, still owned by the set, or null.
  T GetElem(std::uint64_t key) const;
  /// The elements in the order in which they are written, still owned by the set.
  std::vector<T> GetElems() const;
  /// The elements in that order, as pointers.
  CKeyedElemIterator<Element> begin() { return CKeyedElemIterator<Element>(GetElems()); }
  CKeyedElemIterator<const Element> begin() const {
    return CKeyedElemIterator<const Element>(GetElems());
  }
  std::default_sentinel_t end() const { return {}; }
  std::size_t size() const { return GetElemCount(); }
  bool empty() const { return size() == 0; }
  /// Calls visit(element) for each, in that order. The set must not be changed meanwhile.
  /// ahead(key) is called some elements before the one under the key is visited.
  template <class Visit, class Ahead = typename Elems::Ignore>
  void ForEachElem(Visit visit, Ahead ahead = {}) const {
    m_elems.ForEachOrdered([&](std::uint64_t, const auto& elem) { visit(elem.get()); }, ahead);
  }
  /// Hints that an element with the key will be looked up or added soon.
  void PrefetchElem(std::uint64_t key) const noexcept { m_elems.PrefetchKey(key); }
  /// Turns the order round among elements that share a bucket, as copying the set does.
  void ReverseOrder() { m_elems.Reverse(); }

  [[nodiscard]] CAbstractChunk* Clone() override;
  void DeepCopy(CAbstractChunk* source) override;
  void RecursiveReCalcDataSize() override;

 protected:
  void Release() override;
  bool WriteData(CFile* file, bool recalc) override;

  Elems m_elems;
};

/// A concrete set: Self supplies kChunkId and kTag, SetBase is one of the containers above.
template <class Self, class SetBase>
class QENZOR_EXPORT CSetOf : public SetBase {
 public:
  static const CRuntimeClass kRuntimeClass;

  CSetOf();
  const CRuntimeClass& GetRuntimeClass() const override;

 protected:
  [[nodiscard]] CAbstractChunk* GetChunkInstance() override;
};

template <class Self, class Element>
using CArraySetOf = CSetOf<Self, CChunkSetArray<Element*>>;
template <class Self, class Element>
using CKeyedSetOf = CSetOf<Self, CChunkSetMap<std::uint64_t, Element*>>;

}  // namespace qenzor
