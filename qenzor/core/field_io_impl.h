#pragma once

// What field lists do in the chunk form: sizes, reading, writing, copying, releasing.

#include <algorithm>
#include <cassert>
#include <memory>
#include <new>
#include <vector>

#include "qenzor/core/abstract_chunk.h"
#include "qenzor/core/block.h"
#include "qenzor/core/fields.h"
#include "qenzor/core/source_impl.h"
#include "qenzor/core/stored_text.h"

namespace qenzor {

template <class Source, class Fields, class T>
bool ReadFields(Source& source, const Fields& fields, T& object);
template <class Fields, class T>
std::uint32_t SizeOfFields(const Fields& fields, const T& object);
template <class Out, class Fields, class T>
void WriteFields(Out& out, const Fields& fields, const T& object);
template <class Fields, class T>
void CopyFields(const Fields& fields, const T& from, T& to);

/// A clone that belongs to its owner at once. A clone that comes back null for want of memory is
/// an error here, or the copy would silently lack a branch.
template <class Owned>
std::unique_ptr<Owned> CloneOf(Owned* original) {
  if (original == nullptr) return nullptr;
  auto* clone = original->Clone();
  if (clone == nullptr) throw std::bad_alloc();
  return std::unique_ptr<Owned>(static_cast<Owned*>(clone));
}

// Reading.

template <class Source, class T, class O, class Value>
bool ReadValue(Source& source, T& object, const TextField<O, Value>& f) {
  const std::uint8_t* count = source.TakeValue(kStoredTextCountSize);
  if (count == nullptr) return source.Misses(f.Tag, kStoredTextCountSize);
  const auto size = little_endian::Load<std::uint16_t>(count);
  if (size > f.MaxBytes) return source.Refuses(f.Tag, size, f.MaxBytes);
  const std::uint8_t* bytes = source.TakeValue(size);
  if (bytes == nullptr) return source.Misses(f.Tag, size);
  DecodeStoredText(bytes, size, object.*f.Member);
  return source.IsWhole() || source.Misses(f.Tag, size);
}

template <class Element>
void LoadPackedElements(const std::uint8_t* bytes, Element* element, Element* end) {
  for (; element != end; ++element, bytes += PackedSize<Element>()) LoadPacked(bytes, *element);
}

/// Elements whose bytes are there, but not in one piece.
template <class Source, class Array>
bool ReadPackedPieces(Source& source, typename Array::count_type count, Array& array) {
  using Element = typename Array::value_type;
  constexpr std::uint32_t kElementSize = PackedSize<Element>();
  array.ResetForOverwrite(count);
  for (Element* next = array.begin(); next != array.end();) {
    constexpr std::ptrdiff_t kAtOnce = CFileSource::kPiece / kElementSize;
    const std::ptrdiff_t elements = std::min(array.end() - next, kAtOnce);
    const std::uint8_t* bytes = source.Take(static_cast<std::uint64_t>(elements) * kElementSize);
    if (bytes == nullptr) {
      array.clear();
      return false;
    }
    LoadPackedElements(bytes, next, next + elements);
    next += elements;
  }
  return true;
}

/// Elements of fixed size. The array is made when their bytes are known to be there.
template <class Source, class Array>
bool ReadPackedElements(Source& source, typename Array::count_type count, Array& array) {
  const std::uint64_t size = std::uint64_t{count} * PackedSize<typename Array::value_type>();
  const std::uint8_t* bytes = source.Take(size);
  if (bytes == nullptr) return source.Has(size) && ReadPackedPieces(source, count, array);
  array.ResetForOverwrite(count);
  LoadPackedElements(bytes, array.begin(), array.end());
  return true;
}

template <class Source, class Array>
bool ReadElements(Source& source, std::string_view tag, typename Array::count_type count,
                  Array& array) {
  using Element = typename Array::value_type;
  if constexpr (IsFixedSize<Element>()) {
    return ReadPackedElements(source, count, array) ||
           source.Misses(tag, std::uint64_t{count} * PackedSize<Element>());
  } else if (source.Has(std::uint64_t{count} * LeastSize<Element>())) {
    array.Reset(count);
    return std::all_of(array.begin(), array.end(), [&source](Element& element) {
      return ReadFields(source, Element::Fields(), element);
    });
  } else {
    // None is made before its bytes are there.
    std::vector<Element> elements;
    for (std::uint32_t i = 0; i < count; ++i)
      if (!ReadFields(source, Element::Fields(), elements.emplace_back())) return false;
    array.ResetForOverwrite(count);
    std::move(elements.begin(), elements.end(), array.begin());
    return true;
  }
}

template <class Source, class T, class O, class Array>
bool ReadValue(Source& source, T& object, const ArrayField<O, Array>& f) {
  using Count = typename Array::count_type;
  const std::uint8_t* bytes = source.Take(sizeof(Count));
  if (bytes == nullptr) return source.Misses(f.Tag, sizeof(Count));
  return ReadElements(source, f.Tag, little_endian::Load<Count>(bytes), object.*f.Member);
}

template <class Source, class T, class O, class Value, class Coding>
bool ReadValue(Source& source, T& object, const Field<O, Value, Coding>& f) {
  const std::uint8_t* bytes = source.TakeValue(Coding::template kSize<Value>);
  if (bytes == nullptr) return source.Misses(f.Tag, Coding::template kSize<Value>);
  Coding::Load(bytes, object.*f.Member);
  return source.IsWhole() || source.Misses(f.Tag, Coding::template kSize<Value>);
}

template <class Source, class T, class Members>
bool ReadValue(Source& source, T& object, const FieldGroup<Members>& f) {
  return ReadFields(source, f.Members, object);
}

template <class Source, class T, class O, class Slot, class Chunk>
bool ReadValue(Source& /*source*/, T& /*object*/, const SlotField<O, Slot, Chunk>& /*f*/) {
  return true;  // sub-chunks arrive through SubChunkSet
}

template <class Source, class Fields, class T>
bool ReadFields(Source& source, const Fields& fields, T& object) {
  return AllFields(fields, [&](const auto& f) { return ReadValue(source, object, f); });
}

// Sizes.

template <class T, class O, class Value, class Coding>
std::uint32_t SizeOfValue(const T& /*object*/, const Field<O, Value, Coding>& /*f*/) {
  return Coding::template kSize<Value>;
}

template <class T, class O, class Value>
std::uint32_t SizeOfValue(const T& object, const TextField<O, Value>& f) {
  return kStoredTextCountSize + StoredTextBytes((object.*f.Member).size());
}

template <class T, class O, class Array>
std::uint32_t SizeOfValue(const T& object, const ArrayField<O, Array>& f) {
  using Element = typename Array::value_type;
  const Array& array = object.*f.Member;
  std::uint32_t size = sizeof(typename Array::count_type);
  if constexpr (IsFixedSize<Element>()) {
    size += static_cast<std::uint32_t>(array.size()) * PackedSize<Element>();
  } else {
    for (const Element& element : array) size += SizeOfFields(Element::Fields(), element);
  }
  return size;
}

template <class T, class Members>
std::uint32_t SizeOfValue(const T& object, const FieldGroup<Members>& f) {
  return SizeOfFields(f.Members, object);
}

/// A present sub-chunk recalculates itself first; an absent one counts nothing.
template <class T, class O, class Slot, class Chunk>
std::uint32_t SizeOfValue(const T& object, const SlotField<O, Slot, Chunk>& f) {
  Chunk* chunk = (object.*f.Member).get();
  if (chunk == nullptr) return 0;
  chunk->RecursiveReCalcDataSize();
  return chunk->GetChunkSize();
}

template <class Fields, class T>
std::uint32_t SizeOfFields(const Fields& fields, const T& object) {
  std::uint32_t size = 0;
  ForEachField(fields, [&](const auto& f) { size += SizeOfValue(object, f); });
  return size;
}

/// Bytes that WriteFields puts out, in 64 bits, in which no count and no text wraps; more than any
/// file lends room for where elements differ in size.
template <class Fields, class T>
std::uint64_t SizeOfBlock(const Fields& fields, const T& object) {
  constexpr auto kNoBlock = std::uint64_t{1} << 40;
  std::uint64_t size = 0;
  ForEachField(fields, [&]<class F>(const F& f) {
    if constexpr (requires { typename F::Array; }) {
      using Element = typename F::Array::value_type;
      size += sizeof(typename F::Array::count_type);
      if constexpr (IsFixedSize<Element>())
        size += std::uint64_t{(object.*f.Member).size()} * PackedSize<Element>();
      else
        size += kNoBlock;
    } else if constexpr (requires { f.Members; }) {
      size += SizeOfBlock(f.Members, object);
    } else if constexpr (requires { f.MaxBytes; }) {
      const std::uint64_t units = (object.*f.Member).size();
      size += units == 0 ? 2 : 4 + 2 * units;
    } else if constexpr (!requires { typename F::Chunk; }) {
      size += SizeOfValue(object, f);
    }
  });
  return size;
}

/// Bytes of the elements of the arrays, without their counts.
template <class Fields, class T>
std::uint32_t SizeOfElements(const Fields& fields, const T& object) {
  std::uint32_t size = 0;
  ForEachField(fields, [&]<class F>(const F& f) {
    if constexpr (requires { typename F::Array; })
      size += SizeOfValue(object, f) -
              static_cast<std::uint32_t>(sizeof(typename F::Array::count_type));
  });
  return size;
}

// Writing, to a file or to an address. Sub-chunks are written by their owner, since their result is
// its result.

template <class Out, class T, class O, class Value, class Coding>
void WriteValue(Out& out, const T& object, const Field<O, Value, Coding>& f) {
  WriteBlock(out, Coding::template kSize<Value>,
             [&](std::uint8_t* bytes) { Coding::Store(bytes, object.*f.Member); });
}

template <class Out, class T, class O, class Value>
void WriteValue(Out& out, const T& object, const TextField<O, Value>& f) {
  const Value& text = object.*f.Member;
  const std::uint32_t size = StoredTextBytes(text.size());
  WriteBlock(out, size == 0 ? 2 : 4, [size](std::uint8_t* bytes) {
    little_endian::Store(bytes, static_cast<std::uint16_t>(size));
    if (size != 0) little_endian::Store(bytes + 2, std::uint16_t{0xFEFF});
  });
  constexpr std::size_t kUnitsInBlock = kMaxBlockSize / 2;
  for (std::size_t from = 0; from < text.size(); from += kUnitsInBlock) {
    const std::size_t count = std::min(text.size() - from, kUnitsInBlock);
    WriteBlock(out, static_cast<std::uint32_t>(count * 2), [&](std::uint8_t* bytes) {
      for (std::size_t i = 0; i < count; ++i)
        little_endian::Store(bytes + 2 * i, static_cast<std::uint16_t>(text[from + i]));
    });
  }
}

template <class Out, class T, class O, class Array>
void WriteValue(Out& out, const T& object, const ArrayField<O, Array>& f) {
  using Element = typename Array::value_type;
  const Array& array = object.*f.Member;
  WriteBlock(out, sizeof(typename Array::count_type),
             [&](std::uint8_t* bytes) { little_endian::Store(bytes, array.size()); });
  if constexpr (IsFixedSize<Element>()) {
    constexpr std::uint32_t kElementSize = PackedSize<Element>();
    constexpr std::size_t kElementsInBlock = kMaxBlockSize / kElementSize;
    const Element* next = array.begin();
    while (next != array.end()) {
      const auto left = static_cast<std::size_t>(array.end() - next);
      const std::size_t count = std::min(left, kElementsInBlock);
      WriteBlock(out, static_cast<std::uint32_t>(count) * kElementSize, [&](std::uint8_t* bytes) {
        for (const Element* end = next + count; next != end; ++next, bytes += kElementSize)
          StorePacked(bytes, *next);
      });
    }
  } else {
    for (const Element& element : array) WriteFields(out, Element::Fields(), element);
  }
}

template <class Out, class T, class Members>
void WriteValue(Out& out, const T& object, const FieldGroup<Members>& f) {
  WriteFields(out, f.Members, object);
}

template <class Out, class T, class O, class Slot, class Chunk>
void WriteValue(Out& /*out*/, const T& /*object*/, const SlotField<O, Slot, Chunk>& /*f*/) {}

template <class Out, class Fields, class T>
void WriteFields(Out& out, const Fields& fields, const T& object) {
  ForEachField(fields, [&](const auto& f) { WriteValue(out, object, f); });
}

/// Writes every present sub-chunk of a field list, in order; true when all were written.
template <class Fields, class T>
bool WriteSlots(CFile& file, bool recalc, const Fields& fields, T& object) {
  bool written = true;
  ForEachField(fields, [&]<class F>(const F& f) {
    if constexpr (requires { typename F::Chunk; }) {
      auto* chunk = (object.*f.Member).get();
      if (chunk != nullptr) written = chunk->Write(&file, recalc) && written;
    }
  });
  return written;
}

// Copying.

template <class T, class O, class Value, class Coding>
void CopyValue(const T& from, T& to, const Field<O, Value, Coding>& f) {
  to.*f.Member = from.*f.Member;
}

template <class T, class O, class Value>
void CopyValue(const T& from, T& to, const TextField<O, Value>& f) {
  to.*f.Member = from.*f.Member;
}

template <class T, class O, class Array>
void CopyValue(const T& from, T& to, const ArrayField<O, Array>& f) {
  using Element = typename Array::value_type;
  const Array& source = from.*f.Member;
  Array& target = to.*f.Member;
  target.ResetForOverwrite(source.size());
  if constexpr (std::is_trivially_copyable_v<Element>) {
    std::copy(source.begin(), source.end(), target.begin());
  } else {
    for (std::size_t i = 0; i < source.size(); ++i)
      CopyFields(Element::Fields(), source[i], target[i]);
  }
}

template <class T, class Members>
void CopyValue(const T& from, T& to, const FieldGroup<Members>& f) {
  CopyFields(f.Members, from, to);
}

template <class T, class O, class Slot, class Chunk>
void CopyValue(const T& from, T& to, const SlotField<O, Slot, Chunk>& f) {
  to.*f.Member = CloneOf((from.*f.Member).get());
}

template <class Fields, class T>
void CopyFields(const Fields& fields, const T& from, T& to) {
  ForEachField(fields, [&](const auto& f) { CopyValue(from, to, f); });
}

// Releasing.

/// Empties the lists and slots; values stay.
template <class Fields, class T>
void ReleaseFields(const Fields& fields, T& object) {
  ForEachField(fields, [&]<class F>(const F& f) {
    if constexpr (requires { typename F::Chunk; })
      (object.*f.Member).reset();
    else if constexpr (
        requires { (object.*f.Member).clear(); } && !requires { f.MaxBytes; })
      (object.*f.Member).clear();
  });
}

// Sub-chunks.

/// Gives the chunk to the slot that takes its class, which frees what it held; else deletes it.
template <class Fields, class T>
void TakeSubChunk(const Fields& fields, T& object, CAbstractChunk* chunk) {
  assert(chunk != static_cast<CAbstractChunk*>(&object));
  std::unique_ptr<CAbstractChunk> owned(chunk);
  AllFields(fields, [&]<class F>(const F& f) {
    if constexpr (requires { typename F::Chunk; }) {
      auto* accepted = class_cast<typename F::Chunk>(owned.get());
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
