#pragma once

#include <memory>
#include <type_traits>
#include <vector>

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
  using List = CList<std::unique_ptr<ElementEdit>>;

  virtual std::uint32_t GetElemCount() const;

 protected:
  List m_list;
};

/// The editable form of an array set: a list of owned elements, in order. T is a pointer to the
/// element chunk class.
template <class T, class TEdit>
class QENZOR_EXPORT CChunkSetArrayEdit : public CAbstractChunkSetEdit<TEdit> {
 public:
  using List = typename CAbstractChunkSetEdit<TEdit>::List;

  CAbstractChunk* EditDataToChunkData() override;
  void ChunkDataToEditData(CAbstractChunk* chunk) override;
  CAbstractChunkEdit* Clone() override;
  void DeepCopy(CAbstractChunkEdit* source) override;
  bool SetSubChunkEdit(CAbstractChunkEdit* sub) override;
  void Release() override;

  /// A new empty set chunk of the concrete class, owned by the caller.
  [[nodiscard]] virtual CAbstractChunk* GetChunkInstance() = 0;
  /// A new empty set edit of the concrete class, owned by the caller.
  [[nodiscard]] virtual CAbstractChunkEdit* GetChunkEditInstance() = 0;

  /// The list itself, for callers that walk or change it; the set goes on owning it.
  List* GetElemPtr() { return &this->m_list; }
  const List* GetElemPtr() const { return &this->m_list; }
  /// The element at index, still owned by the set; null when index is not below the count.
  TEdit GetElem(std::uint32_t index) const;
  /// Takes ownership of an element and puts it in front of the one at index, or at the end when
  /// index is not below the count.
  void AddElem(std::uint32_t index, TEdit elem);
  /// Destroys the element at index; nothing when index is not below the count.
  void DelElem(std::uint32_t index);
};

/// The editable form of the keyed set.
template <class K, class T, class TEdit>
class QENZOR_EXPORT CChunkSetMapEdit;

template <class T, class TEdit>
class QENZOR_EXPORT CChunkSetMapEdit<std::uint64_t, T, TEdit>
    : public CAbstractChunkSetEdit<TEdit> {
 public:
  using ElementEdit = std::remove_pointer_t<TEdit>;
  static constexpr std::uint32_t kBuckets = 17;

  CChunkSetMapEdit();

  CAbstractChunk* EditDataToChunkData() override;
  void ChunkDataToEditData(CAbstractChunk* chunk) override;
  CAbstractChunkEdit* Clone() override;
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
  TEdit DelElem(std::uint64_t key);

 protected:
  CMap<std::uint64_t, std::unique_ptr<ElementEdit>> m_elems;
};

/// A concrete set edit over one of the containers above. Chunk is the set's chunk class.
template <class Self, class Chunk, class SetBase>
class QENZOR_EXPORT CSetEditOf : public SetBase {
 public:
  [[nodiscard]] CAbstractChunk* GetChunkInstance() override;
  [[nodiscard]] CAbstractChunkEdit* GetChunkEditInstance() override;
};

}  // namespace qenzor
