#pragma once

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <vector>

namespace qenzor::check {

/// Finds the lines of a text, which end at LF, CR LF or CR. Asked for place after place it looks at
/// little of the text more than once.
class CLineIndex {
 public:
  struct Place {
    std::uint32_t Line = 1;
    std::uint32_t Column = 1;  ///< in bytes
  };

  explicit CLineIndex(std::string_view text) : m_text(text) {}

  Place Find(std::uint64_t offset) {
    const std::size_t at = std::min<std::size_t>(offset, m_text.size());
    while ((m_marks.size() - 1) * kStep + kStep <= at)
      m_marks.push_back(LineAt(m_marks.size() * kStep));
    const std::uint32_t line = LineAt(at);
    std::size_t start = at;
    while (start > 0 && !EndsLine(start - 1)) --start;
    return {line, static_cast<std::uint32_t>(at - start + 1)};
  }

 private:
  static constexpr std::size_t kStep = std::size_t{64} * 1024;

  bool EndsLine(std::size_t at) const {
    return m_text[at] == '\n' ||
           (m_text[at] == '\r' && (at + 1 == m_text.size() || m_text[at + 1] != '\n'));
  }
  /// The line of a place no further than a step behind the last mark.
  std::uint32_t LineAt(std::size_t at) const {
    const std::size_t mark = std::min(at / kStep, m_marks.size() - 1);
    std::uint32_t line = m_marks[mark];
    for (std::size_t i = mark * kStep; i < at; ++i)
      if (EndsLine(i)) ++line;
    return line;
  }

  std::string_view m_text;
  /// The line at each step.
  std::vector<std::uint32_t> m_marks{1};
};

}  // namespace qenzor::check
