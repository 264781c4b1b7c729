#pragma once

// What field lists do to compare objects of one form.

#include <algorithm>

#include "qenzor/core/fields.h"

namespace qenzor {

template <class Fields, class T>
bool EqualFields(const Fields& fields, const T& a, const T& b);

/// Whether two values, records, owned records or owned sub-objects hold the same.
template <class V>
bool EqualValues(const V& a, const V& b) {
  if constexpr (requires { typename V::element_type; }) {
    return a == nullptr || b == nullptr ? a == b : EqualValues(*a, *b);
  } else if constexpr (requires { a == b; }) {
    return a == b;
  } else {
    return EqualFields(V::Fields(), a, b);
  }
}

template <class Fields, class T>
bool EqualFields(const Fields& fields, const T& a, const T& b) {
  return AllFields(fields, [&]<class F>(const F& f) {
    if constexpr (requires { f.Members; })
      return EqualFields(f.Members, a, b);
    else if constexpr (requires { typename F::Array; })
      return std::equal((a.*f.Member).begin(), (a.*f.Member).end(), (b.*f.Member).begin(),
                        (b.*f.Member).end(),
                        [](const auto& x, const auto& y) { return EqualValues(x, y); });
    else
      return EqualValues(a.*f.Member, b.*f.Member);
  });
}

/// Whether two sets hold equal elements, in the same order or, if they are keyed, under the same
/// keys.
template <class Set>
bool EqualSets(const Set& a, const Set& b) {
  if (a.size() != b.size()) return false;
  if constexpr (requires { typename Set::Key; }) {
    bool equal = true;
    for (const auto* elem : a) {
      const auto* other = equal ? b.GetElem(elem->GetKey()) : nullptr;
      equal = other != nullptr && *elem == *other;
    }
    return equal;
  } else {
    return std::equal(a.begin(), a.end(), b.begin(), [](const auto* x, const auto* y) {
      return x == nullptr || y == nullptr ? x == y : *x == *y;
    });
  }
}

}  // namespace qenzor
