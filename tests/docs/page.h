#pragma once

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

/// A page of the documentation, by its path from the top of the source tree.
inline std::string LoadPage(const std::string& path) {
  std::ifstream file(QENZOR_SAMPLES "/../" + path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// The text between the first `from` and the next `to` after it; empty when either is missing.
inline std::string Between(const std::string& text, const std::string& from,
                           const std::string& to) {
  const std::size_t start = text.find(from);
  if (start == std::string::npos) return {};
  const std::size_t end = text.find(to, start + from.size());
  if (end == std::string::npos) return {};
  return text.substr(start + from.size(), end - start - from.size());
}

/// The cells of every row of the table that follows `heading` in the page, without the head.
inline std::vector<std::vector<std::string>> TableAfter(const std::string& page,
                                                        const std::string& heading) {
  std::vector<std::vector<std::string>> rows;
  const std::string rule = "|---|";
  std::size_t at = page.find(rule, page.find(heading));
  while ((at = page.find('\n', at)) != std::string::npos && page[++at] == '|') {
    std::vector<std::string> cells;
    const std::size_t end = page.find('\n', at);
    while (at + 1 < end) {
      const std::size_t next = page.find(" |", at + 1);
      cells.push_back(page.substr(at + 2, next - at - 2));
      at = next + 1;
    }
    rows.push_back(std::move(cells));
  }
  return rows;
}
