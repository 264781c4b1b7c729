#pragma once

// The walk that looks for what cannot be stored, over either form of a document's objects.

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "qenzor/catalogue.h"
#include "qenzor/core/data_hooks.h"
#include "qenzor/core/fields.h"
#include "qenzor/core/stored_text.h"
#include "qenzor/platform/code_page.h"
#include "qenzor/storable.h"

namespace qenzor {

/// Walks objects by their field lists and adds up the bytes that they will take, until something
/// cannot be stored. What depends on a count's width is asked of the chunk form's list, beside
/// which an edit object's own is walked.
class CStorableWalk {
 public:
  explicit CStorableWalk(StoredForm form) : m_binary(form == StoredForm::kBinary) {}

  /// Walks the root chunk, in a file with so many bytes in front of it.
  template <class Chunk, class Object>
  std::optional<Unstorable> WalkRoot(const Object& root, std::uint64_t front) {
    std::uint64_t size = front + CChunkHeader::kSize;
    if (WalkContent<Chunk>(root, size)) static_cast<void>(FitSize(size));
    return std::move(m_found);
  }

 private:
  /// Where the walk stands: the tag, and the position among others of a list, or -1.
  struct Step {
    std::string_view Tag;
    std::int64_t Position;
  };

  /// The bytes of an object: fields, with the counts of lists; the elements of lists of fixed size;
  /// and the chunks inside.
  struct Sizes {
    std::uint64_t Front = 0;
    std::uint64_t Elements = 0;
    std::uint64_t SubChunks = 0;
  };

  template <class Chunk, class Object>
  bool WalkChunk(Step step, const Object& object, std::uint64_t& total) {
    m_path.push_back(step);
    std::uint64_t size = CChunkHeader::kSize;
    if (!WalkContent<Chunk>(object, size) || !FitSize(size)) return false;
    m_path.pop_back();
    total += size;
    return true;
  }

  template <class Chunk, class Object>
  bool WalkContent(const Object& object, std::uint64_t& size) {
    if constexpr (requires { typename Chunk::Element; }) {
      size += sizeof(std::uint32_t);
      std::int64_t position = 0;
      for (const auto* elem : object)
        if (!WalkElement(elem, position++, size)) return false;
      return true;
    } else {
      Sizes sizes;
      if (!WalkFields(FieldsOf<Object>(), object, FieldsOf<Chunk>(), sizes)) return false;
      size += sizes.Front + sizes.Elements + sizes.SubChunks;
      return FitCounting<typename Chunk::DataType>(sizes);
    }
  }

  /// Whether reading finds the end of the fields, where their class counts their bytes itself.
  template <class Data>
  bool FitCounting(const Sizes& sizes) {
    if constexpr (kCountsItself<Data>) {
      const auto front = static_cast<std::uint32_t>(sizes.Front);
      const auto consumed = static_cast<std::uint32_t>(sizes.Front + sizes.Elements);
      if (m_binary && HooksFor<Data>().MemoryConsumed(front, consumed) != consumed)
        Find("has " + std::to_string(front) +
             " bytes in front of its records, too many to be read");
    }
    return !m_found.has_value();
  }

  template <class Element>
  bool WalkElement(const Element* elem, std::int64_t position, std::uint64_t& size) {
    constexpr bool kIsEdit = std::is_base_of_v<CAbstractChunkEdit, Element>;
    if (elem == nullptr) return true;
    AnyClass([&]<class Row>(Row /*row*/) {
      using Form = std::conditional_t<kIsEdit, typename Row::Edit, typename Row::Chunk>;
      if constexpr (std::is_base_of_v<Element, Form>) {
        const auto* object = class_cast<const Form>(elem);
        if (object != nullptr) WalkChunk<typename Row::Chunk>({Row::kTag, position}, *object, size);
        return object != nullptr;
      } else {
        return false;
      }
    });
    return !m_found.has_value();
  }

  // Fields.

  template <class Fields, class Object, class ChunkFields>
  bool WalkFields(const Fields& fields, const Object& object, const ChunkFields& chunk_fields,
                  Sizes& sizes) {
    ForEachFieldPair(fields, chunk_fields, [&](const auto& f, const auto& chunk_f) {
      if (!m_found.has_value()) WalkField(f, object, chunk_f, sizes);
    });
    return !m_found.has_value();
  }

  template <class O, class V, class Coding, class Object, class ChunkField>
  void WalkField(const Field<O, V, Coding>& f, const Object& object, const ChunkField& /*chunk_f*/,
                 Sizes& sizes) {
    sizes.Front += Coding::template kSize<V>;
    if constexpr (std::is_same_v<Coding, ShortGeometryCoding>) FitGeometry(f.Tag, object.*f.Member);
  }

  template <class O, class V, class Object, class ChunkField>
  void WalkField(const TextField<O, V>& f, const Object& object, const ChunkField& chunk_f,
                 Sizes& sizes) {
    if constexpr (std::is_same_v<V, CString>)
      WalkText(f.Tag, WidenText(object.*f.Member), chunk_f.MaxBytes, sizes);
    else
      WalkText(f.Tag, object.*f.Member, chunk_f.MaxBytes, sizes);
  }

  template <class O, class List, class Object, class ChunkField>
  void WalkField(const ArrayField<O, List>& f, const Object& object, const ChunkField& chunk_f,
                 Sizes& sizes) {
    using Array = MemberOf<decltype(chunk_f.Member)>;
    using Record = typename Array::value_type;
    const List& list = object.*f.Member;
    sizes.Front += sizeof(typename Array::count_type);
    if constexpr (!std::is_same_v<List, Array>) {
      const std::size_t most = MostInConversion<typename Array::count_type>();
      if (list.size() > most) return TooLong(f.Tag, list.size(), "entries", most);
    }
    if constexpr (IsFixedSize<Record>()) {
      sizes.Elements += std::uint64_t{list.size()} * PackedSize<Record>();
      if constexpr (std::is_same_v<Record, CPoint>)
        for (const CPoint& point : list)
          if (!FitGeometry(f.Tag, point)) return;
    } else {
      WalkRecords<Record>(f.Tag, list, sizes);
    }
  }

  template <class Members, class Object, class ChunkField>
  void WalkField(const FieldGroup<Members>& f, const Object& object, const ChunkField& chunk_f,
                 Sizes& sizes) {
    WalkFields(f.Members, object, chunk_f.Members, sizes);
  }

  template <class O, class Slot, class Chunk, class Object, class ChunkField>
  void WalkField(const SlotField<O, Slot, Chunk>& f, const Object& object,
                 const ChunkField& /*chunk_f*/, Sizes& sizes) {
    const auto& sub = object.*f.Member;
    if (sub != nullptr) WalkChunk<Chunk>({f.Tag, -1}, *sub, sizes.SubChunks);
  }

  /// Records with lists inside: held in place by a chunk, by pointers, which may be null, in an
  /// edit form.
  template <class Record, class List>
  void WalkRecords(std::string_view tag, const List& list, Sizes& sizes) {
    for (std::size_t i = 0; i < list.size() && !m_found.has_value(); ++i) {
      m_path.push_back({tag, static_cast<std::int64_t>(i)});
      if constexpr (std::is_same_v<typename List::value_type, Record>) {
        WalkFields(Record::Fields(), list[i], Record::Fields(), sizes);
      } else {
        using Edit = typename Record::EditClass;
        const Edit missing;
        WalkFields(Edit::Fields(), list[i] == nullptr ? missing : *list[i], Record::Fields(),
                   sizes);
      }
      if (!m_found.has_value()) m_path.pop_back();
    }
  }

  // Single values, in storable.cpp.

  void WalkText(std::string_view tag, const CStringW& text, std::uint32_t max_bytes, Sizes& sizes);
  bool FitGeometry(std::string_view tag, const CPoint& point);
  bool FitGeometry(std::string_view tag, const CRect& rect);
  bool FitCoordinate(std::string_view tag, std::int32_t value);
  bool FitSize(std::uint64_t size);
  void TooLong(std::string_view tag, std::size_t length, const char* unit, std::size_t most);
  void Find(CString reason);

  template <class Member>
  struct MemberOfPointer;
  template <class Owner, class Value>
  struct MemberOfPointer<Value Owner::*> {
    using Type = Value;
  };
  template <class Pointer>
  using MemberOf = typename MemberOfPointer<std::remove_const_t<Pointer>>::Type;

  /// The most that an edit form's list can hold to come whole into a chunk: as many as the count
  /// tells, and as a position of 16 bits reaches.
  template <class Count>
  static constexpr std::size_t MostInConversion() {
    constexpr std::size_t kPositions = 65536;
    return std::min<std::size_t>(std::numeric_limits<Count>::max(), kPositions);
  }

  const bool m_binary;
  std::vector<Step> m_path;
  std::optional<Unstorable> m_found;
};

}  // namespace qenzor
