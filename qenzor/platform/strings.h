#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>

#include "qenzor/platform/standard.h"

namespace qenzor {

/// Narrow text: bytes of the code page (see code_page.h).
using CString = std::string;
/// Wide text: UTF-16 code units, paired or not.
using CStringW = std::u16string;

/// Replaces every occurrence of `from` by `to`, left to right. Text put in is not searched again;
/// an empty `from` changes nothing. The cost is linear in the text. Neither view may point into
/// `text`. When memory runs out, `text` is unchanged.
template <class Char>
void ReplaceAll(std::basic_string<Char>& text,
                std::type_identity_t<std::basic_string_view<Char>> from,
                std::type_identity_t<std::basic_string_view<Char>> to) {
  auto at = from.empty() ? text.npos : text.find(from);
  if (at == text.npos) {
    return;
  }
  std::basic_string<Char> result;
  result.reserve(text.size());
  std::size_t done = 0;
  for (; at != text.npos; at = text.find(from, done)) {
    result.append(text, done, at - done).append(to);
    done = at + from.size();
  }
  result.append(text, done);
  text.swap(result);
}

}  // namespace qenzor
