#include <algorithm>
#include <numeric>
#include <vector>

#include "qenzor/check/xml_text_impl.h"

namespace qenzor::check {

namespace {

CString Lower(std::string_view text) {
  CString lower(text);
  std::ranges::transform(lower, lower.begin(), [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
  });
  return lower;
}

}  // namespace

void CSpelling::Try(std::string_view candidate) {
  const CString from = Lower(m_word);
  const CString to = Lower(candidate);
  const std::size_t most = std::min(m_distance, 1 + to.size() / 4);
  if (from.size() > to.size() + most || to.size() > from.size() + most) return;
  // The fewest letters to change, put in or take out.
  std::vector<std::size_t> row(to.size() + 1);
  std::iota(row.begin(), row.end(), 0U);
  for (const char letter : from) {
    std::size_t diagonal = row[0]++;
    for (std::size_t j = 0; j < to.size(); ++j) {
      const std::size_t change = diagonal + (letter == to[j] ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({change, row[j] + 1, diagonal + 1});
    }
  }
  if (row.back() >= m_distance || row.back() > most) return;
  m_distance = row.back();
  m_nearest = candidate;
}

CString CSpelling::Suggest() const {
  return m_nearest.empty() ? CString() : "; did you mean " + CString(m_nearest) + '?';
}

}  // namespace qenzor::check
