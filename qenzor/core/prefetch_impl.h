#pragma once

#include <array>
#include <cstddef>
#include <utility>

#include "qenzor/core/fields.h"
#include "qenzor/platform/prefetch.h"

namespace qenzor {

/// Has what the object's arrays hold fetched into the processor's cache, and what those of its
/// slots do. The objects themselves are looked into.
template <class Object>
void PrefetchArrays(const Object& object) noexcept {
  ForEachField(FieldsOf<Object>(), [&object]<class F>(const F& f) {
    if constexpr (requires { typename F::Chunk; }) {
      if (const auto* below = (object.*f.Member).get(); below != nullptr) PrefetchArrays(*below);
    } else if constexpr (requires { typename F::Array; }) {
      Prefetch((object.*f.Member).data());
    }
  });
}

/// Has visit called with every object that walk gives, in that order but some objects later: in the
/// meantime what its arrays hold is fetched. For walks that jump about in memory.
template <class Object, class Walk, class Visit>
void VisitTrailing(Walk&& walk, Visit&& visit) {
  constexpr std::size_t kBehind = 8;
  std::array<Object*, kBehind> waiting{};
  std::size_t count = 0;
  walk([&](Object* object) {
    PrefetchArrays(*object);
    Object* const due = std::exchange(waiting[count++ % kBehind], object);
    if (due != nullptr) visit(due);
  });
  for (std::size_t i = 0; i < kBehind; ++i)
    if (Object* const due = waiting[(count + i) % kBehind]; due != nullptr) visit(due);
}

}  // namespace qenzor
