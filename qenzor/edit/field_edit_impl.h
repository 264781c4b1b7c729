#pragma once

// What field lists do between the chunk form and the edit form, and within the edit form.

#include <cassert>

#include "qenzor/core/field_io_impl.h"
#include "qenzor/edit/chunk_set_edit_impl.h"
#include "qenzor/platform/code_page.h"
#include "qenzor/platform/memory_budget_impl.h"

namespace qenzor {

template <class FieldsFrom, class From, class FieldsTo, class To>
void ConvertToEdit(const FieldsFrom& from_fields, const From& from, const FieldsTo& to_fields,
                   To& to);
template <class FieldsFrom, class From, class FieldsTo, class To>
void ConvertToChunk(const FieldsFrom& from_fields, const From& from, const FieldsTo& to_fields,
                    To& to);

template <class Form>
void AssignText(CStringW& to, const Form& from) {
  if constexpr (std::is_same_v<Form, CStringW>)
    to = from;
  else
    to = WidenText(from);
}

inline void AssignText(CString& to, const CStringW& from) { to = NarrowText(from); }

// Chunk to edit.

template <class From, class To, class FO, class TO, class V, class C>
void FieldToEdit(const From& from, const Field<FO, V, C>& ff, To& to, const Field<TO, V, C>& tf) {
  to.*tf.Member = from.*ff.Member;
}

template <class From, class To, class FO, class TO, class FV, class TV>
void FieldToEdit(const From& from, const TextField<FO, FV>& ff, To& to,
                 const TextField<TO, TV>& tf) {
  const auto& text = from.*ff.Member;
  ChargeMemory(text.size() * sizeof(char16_t));
  AssignText(to.*tf.Member, text);
}

template <class From, class To, class FO, class TO, class Array, class List>
void FieldToEdit(const From& from, const ArrayField<FO, Array>& ff, To& to,
                 const ArrayField<TO, List>& tf) {
  using Element = typename Array::value_type;
  const Array& array = from.*ff.Member;
  List& list = to.*tf.Member;
  ChargeMemory(array.size() * sizeof(typename List::value_type));
  if constexpr (std::is_same_v<typename List::value_type, Element>) {
    list.assign(array.begin(), array.end());
  } else {
    using RecordEdit = typename Element::EditClass;
    list.reserve(array.size());
    for (const Element& element : array) {
      list.push_back(std::make_unique<RecordEdit>());
      ConvertToEdit(Element::Fields(), element, RecordEdit::Fields(), *list.back());
    }
  }
}

template <class From, class To, class FM, class TM>
void FieldToEdit(const From& from, const FieldGroup<FM>& ff, To& to, const FieldGroup<TM>& tf) {
  ConvertToEdit(ff.Members, from, tf.Members, to);
}

template <class From, class To, class FO, class FS, class TO, class TS, class Chunk>
void FieldToEdit(const From& from, const SlotField<FO, FS, Chunk>& ff, To& to,
                 const SlotField<TO, TS, Chunk>& tf) {
  Chunk* chunk = (from.*ff.Member).get();
  if (chunk == nullptr) return;
  auto edit = std::make_unique<typename Chunk::EditClass>();
  edit->ChunkDataToEditData(chunk);
  to.*tf.Member = std::move(edit);
}

template <class FieldsFrom, class From, class FieldsTo, class To>
void ConvertToEdit(const FieldsFrom& from_fields, const From& from, const FieldsTo& to_fields,
                   To& to) {
  ForEachFieldPair(from_fields, to_fields,
                   [&](const auto& ff, const auto& tf) { FieldToEdit(from, ff, to, tf); });
}

// Edit to chunk.

template <class From, class To, class FO, class TO, class V, class C>
void FieldToChunk(const From& from, const Field<FO, V, C>& ff, To& to, const Field<TO, V, C>& tf) {
  to.*tf.Member = from.*ff.Member;
}

template <class From, class To, class FO, class TO, class FV, class TV>
void FieldToChunk(const From& from, const TextField<FO, FV>& ff, To& to,
                  const TextField<TO, TV>& tf) {
  AssignText(to.*tf.Member, from.*ff.Member);
}

/// A list that is longer than its count can say is cut with the count. A 32-bit count is never too
/// small, but its elements are placed by a 16-bit position: those beyond 65,536 overwrite the
/// first.
template <class From, class To, class FO, class TO, class List, class Array>
void FieldToChunk(const From& from, const ArrayField<FO, List>& ff, To& to,
                  const ArrayField<TO, Array>& tf) {
  using Element = typename Array::value_type;
  using Count = typename Array::count_type;
  const List& list = from.*ff.Member;
  Array& array = to.*tf.Member;
  array.ResetForOverwrite(static_cast<Count>(list.size()));
  if constexpr (!std::is_same_v<typename List::value_type, Element>) {
    using RecordEdit = typename Element::EditClass;
    for (std::size_t i = 0; i < array.size(); ++i)
      if (list[i] != nullptr)
        ConvertToChunk(RecordEdit::Fields(), *list[i], Element::Fields(), array[i]);
  } else if constexpr (sizeof(Count) == 2) {
    std::copy_n(list.begin(), array.size(), array.begin());
  } else {
    std::fill(array.begin(), array.end(), Element{});
    for (std::size_t i = 0; i < array.size(); ++i) array[static_cast<std::uint16_t>(i)] = list[i];
  }
}

template <class From, class To, class FM, class TM>
void FieldToChunk(const From& from, const FieldGroup<FM>& ff, To& to, const FieldGroup<TM>& tf) {
  ConvertToChunk(ff.Members, from, tf.Members, to);
}

template <class From, class To, class FO, class FS, class TO, class TS, class Chunk>
void FieldToChunk(const From& from, const SlotField<FO, FS, Chunk>& ff, To& to,
                  const SlotField<TO, TS, Chunk>& tf) {
  to.*tf.Member = ChunkOfEdit<Chunk>((from.*ff.Member).get());
}

template <class FieldsFrom, class From, class FieldsTo, class To>
void ConvertToChunk(const FieldsFrom& from_fields, const From& from, const FieldsTo& to_fields,
                    To& to) {
  ForEachFieldPair(from_fields, to_fields,
                   [&](const auto& ff, const auto& tf) { FieldToChunk(from, ff, to, tf); });
}

// Within the edit form.

template <class Fields, class T>
void CopyEditFields(const Fields& fields, const T& from, T& to) {
  ForEachField(fields, [&]<class F>(const F& f) {
    if constexpr (requires { f.Members; }) {
      CopyEditFields(f.Members, from, to);
    } else if constexpr (requires { typename F::Chunk; }) {
      to.*f.Member = CloneOfEdit((from.*f.Member).get());
    } else if constexpr (requires { (*(from.*f.Member).begin())->Clone(); }) {
      for (const auto& record : from.*f.Member) (to.*f.Member).push_back(CloneOfEdit(record.get()));
    } else {
      to.*f.Member = from.*f.Member;
    }
  });
}

/// Gives the edit object to the slot that takes its class, which frees what it held: true. Else
/// destroys it.
template <class Fields, class T>
bool TakeSubChunkEdit(const Fields& fields, T& object, CAbstractChunkEdit* sub) {
  assert(sub != static_cast<CAbstractChunkEdit*>(&object));
  std::unique_ptr<CAbstractChunkEdit> owned(sub);
  return !AllFields(fields, [&]<class F>(const F& f) {
    if constexpr (requires { typename F::Chunk; }) {
      auto* accepted = dynamic_cast<typename F::Chunk::EditClass*>(owned.get());
      if (accepted == nullptr) return true;
      owned.release();
      (object.*f.Member).reset(accepted);
      return false;
    } else {
      return true;
    }
  });
}

}  // namespace qenzor
