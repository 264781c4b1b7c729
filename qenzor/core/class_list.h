#pragma once

#include "qenzor/platform/standard.h"

namespace qenzor {

/// Classes to be walked at compile time, in an order that means something to whoever lists them.
template <class... Classes>
struct ClassList {};

/// The classes of both lists, the first list's in front.
template <class... First, class... Second>
constexpr ClassList<First..., Second...> operator+(ClassList<First...> /*first*/,
                                                   ClassList<Second...> /*second*/) noexcept {
  return {};
}

}  // namespace qenzor
