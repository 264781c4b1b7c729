#pragma once

#include <cassert>
#include <cstdint>
#include <memory>
#include <string_view>

#include "qenzor/core/result.h"
#include "qenzor/platform/file.h"

namespace qenzor {

/// Tells text that can hardly be anything but UTF-8.
class CUtf8Watch {
 public:
  void Take(std::string_view text);
  /// Whether all that has been taken is UTF-8 and there are characters beyond ASCII.
  bool IsUtf8() const { return m_is_valid && m_has_characters && m_left == 0; }

 private:
  bool m_is_valid = true;
  bool m_has_characters = false;
  std::uint32_t m_left = 0;  // bytes of the character that has been begun
};

/// The part of a text that is being looked at, read from a file as one goes along: CR LF and CR
/// have become LF. Positions count bytes from the front of the text in this form.
class CXmlWindow {
 public:
  /// Reads the file from its position on, about so many bytes at a time. What a plain file grows by
  /// in the meantime is not read.
  CXmlWindow(CFile& file, std::size_t step);

  /// What is known of the text from a position on that has not been given up. Four zeros and no
  /// other zero stand behind it.
  std::string_view From(std::uint64_t position) const {
    assert(position >= m_position && position <= GetEnd());
    return {m_text.get() + (position - m_position + m_begin), GetEnd() - position};
  }
  /// Whether nothing comes behind what is known.
  bool IsAtEnd() const { return m_is_at_end; }
  /// The position behind what is known.
  std::uint64_t GetEnd() const { return m_position + (m_end - m_begin); }
  /// Reads on, or finds that the text is at its end. What stands in front of the position is given
  /// up.
  void Extend(std::uint64_t keep);

  /// Whether all that is known of the text is UTF-8, with characters beyond ASCII.
  bool IsUtf8() const { return m_watch.IsUtf8(); }
  /// Why the text is not usable, whatever it says: it holds a NUL, or was cut short while it was
  /// being read. Nothing when it is. The text is at its end then.
  const std::optional<Failure>& GetFailure() const { return m_failure; }
  /// What is wrong at a position, with line and column; of a position that has been given up, where
  /// the text that is left begins.
  Failure FailureAt(std::uint64_t position, FailureKind kind, CString reason) const;

 private:
  void MakeRoom(std::size_t size);
  void GiveUp(std::uint64_t keep);
  void Take(std::size_t size);
  void Fail(FailureKind kind, const char* reason);

  CFile& m_file;
  std::size_t m_step;
  std::uint64_t m_left = 0;  ///< of a file that knows its length
  bool m_knows_length;
  bool m_is_at_end = false;
  bool m_is_after_cr = false;
  std::optional<Failure> m_failure;
  CUtf8Watch m_watch;

  std::unique_ptr<char[]> m_text;
  std::size_t m_capacity = 0;
  std::size_t m_begin = 0;  ///< of what has not been given up
  std::size_t m_end = 0;
  std::uint64_t m_position = 0;  ///< of the text at m_begin
  std::uint32_t m_line = 1;      ///< likewise
  std::uint32_t m_column = 1;
};

}  // namespace qenzor
