#pragma once

// Whether objects hold the same to the last bit, and hashes of what they hold, from the field
// lists. Beside ==, which compares numbers as numbers, zeros of both signs differ here, and a NaN
// equals itself.

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>

#include "qenzor/core/fields.h"
#include "qenzor/visit.h"

namespace qenzor::work {

template <class Chunk>
concept Set = requires {
  typename Chunk::Element;
};
template <class Chunk>
concept KeyedSet = Set<Chunk> && requires {
  typename Chunk::Key;
};
template <class V>
concept Slot = requires {
  typename V::element_type;
};
template <class V>
concept Array = requires {
  typename V::count_type;
};
template <class Chunk>
concept HasFieldList = std::is_base_of_v<CAbstractChunk, Chunk> && requires {
  typename Chunk::DataType;
};

/// Values whose bytes are all content.
template <class V>
inline constexpr bool kIsPlain = std::has_unique_object_representations_v<V>;

/// Hands every value of a record to f, without the groups around them.
template <class Fields, class F>
constexpr bool AllValues(const Fields& fields, F&& f) {
  return AllFields(fields, [&]<class Entry>(const Entry& entry) {
    if constexpr (requires { entry.Members; })
      return AllValues(entry.Members, f);
    else
      return f(entry);
  });
}

template <class T>
constexpr auto ListOf() {
  if constexpr (HasFieldList<T>)
    return FieldsOf<T>();
  else
    return T::Fields();
}

template <class V>
bool Same(const V& a, const V& b) {
  if constexpr (std::is_floating_point_v<V>) {
    return std::memcmp(&a, &b, sizeof(V)) == 0;
  } else if constexpr (kIsPlain<V>) {
    return a == b;
  } else if constexpr (Slot<V>) {
    return a == nullptr || b == nullptr ? a == b : Same(*a, *b);
  } else if constexpr (Array<V>) {
    using Element = typename V::value_type;
    if (a.size() != b.size()) return false;
    if constexpr (kIsPlain<Element>)
      return a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(Element)) == 0;
    return std::equal(a.begin(), a.end(), b.begin(), &Same<Element>);
  } else if constexpr (KeyedSet<V>) {
    bool same = a.size() == b.size();
    a.ForEachElem([&](const auto* elem) {
      const auto* other = same ? b.GetElem(elem->GetKey()) : nullptr;
      same = other != nullptr && Same(*elem, *other);
    });
    return same;
  } else if constexpr (Set<V>) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const auto* x, const auto* y) {
      return x == nullptr || y == nullptr ? x == y : Same(*x, *y);
    });
  } else if constexpr (HasFieldList<V> || HasFields<V>) {
    return AllValues(ListOf<V>(), [&](const auto& f) { return Same(a.*f.Member, b.*f.Member); });
  } else if constexpr (std::is_base_of_v<CAbstractChunk, V>) {
    if (&a.GetRuntimeClass() != &b.GetRuntimeClass()) return false;
    bool same = false;
    Visit(a, [&]<HasFieldList Chunk>(const Chunk& chunk) {
      same = Same(chunk, static_cast<const Chunk&>(b));
    });
    return same;
  } else {
    return a == b;
  }
}

class CHasher {
 public:
  template <class V>
  void Add(const V& value) {
    if constexpr (std::is_floating_point_v<V>) {
      Mix(std::bit_cast<std::uint32_t>(value));
    } else if constexpr (kIsPlain<V>) {
      AddBytes(&value, sizeof(V));
    } else if constexpr (Slot<V>) {
      Mix(value == nullptr ? 1U : 2U);
      if (value != nullptr) Add(*value);
    } else if constexpr (Array<V>) {
      Mix(value.size());
      if constexpr (kIsPlain<typename V::value_type>)
        AddBytes(value.data(), value.size() * sizeof(typename V::value_type));
      else
        for (const auto& elem : value) Add(elem);
    } else if constexpr (Set<V>) {
      Mix(value.size());
      for (const auto* elem : value)
        if (elem != nullptr) Add(*elem);
    } else if constexpr (HasFieldList<V> || HasFields<V>) {
      AllValues(ListOf<V>(), [&](const auto& f) {
        Add(value.*f.Member);
        return true;
      });
    } else if constexpr (std::is_base_of_v<CAbstractChunk, V>) {
      Visit(value, [&]<HasFieldList Chunk>(const Chunk& chunk) {
        Mix(Chunk::kChunkId);
        Add(chunk);
      });
    } else {
      Mix(value.size());
      AddBytes(value.data(), value.size() * sizeof(value[0]));
    }
  }
  std::uint64_t Get() const noexcept { return m_hash; }

 private:
  void Mix(std::uint64_t value) noexcept {
    constexpr std::uint64_t kOdd = 0x9E3779B97F4A7C15U;
    m_hash = (m_hash ^ value) * kOdd;
    m_hash ^= m_hash >> 29U;
  }
  void AddBytes(const void* bytes, std::size_t size) noexcept {
    const auto* at = static_cast<const char*>(bytes);
    std::uint64_t word = 0;
    for (; size >= sizeof(word); at += sizeof(word), size -= sizeof(word)) {
      std::memcpy(&word, at, sizeof(word));
      Mix(word);
    }
    word = 0;
    if (size > 0) std::memcpy(&word, at, size);
    Mix(word);
  }

  std::uint64_t m_hash = 0x243F6A8885A308D3U;
};

}  // namespace qenzor::work
