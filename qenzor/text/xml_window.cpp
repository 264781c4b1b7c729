#include <algorithm>
#include <cstring>
#include <limits>

#include "qenzor/text/xml_window_impl.h"

namespace qenzor {

namespace {

/// The parser believes a character's first byte about its length, so that it might pass over one
/// zero.
constexpr std::size_t kZeros = 4;

/// Line ends as the parser's own loading makes them: CR LF and CR become LF. The new end of the
/// text.
char* NormaliseLineEnds(char* from, char* end) {
  const auto line_end = [end](char* line) {
    void* found = std::memchr(line, '\r', static_cast<std::size_t>(end - line));
    return found == nullptr ? end : static_cast<char*>(found);
  };
  char* to = line_end(from);
  for (from = to; from != end;) {
    from += from + 1 != end && from[1] == '\n' ? 2 : 1;
    *to++ = '\n';
    char* const next = line_end(from);
    to = std::copy(from, next, to);
    from = next;
  }
  return to;
}

/// How much ASCII stands at the front.
std::size_t AsciiLength(std::string_view text) {
  constexpr std::size_t kBlock = 32;  // looked at as a whole, which is quick
  const auto is_ascii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
  std::size_t length = 0;
  for (; text.size() - length >= kBlock; length += kBlock) {
    char all = 0;
    for (std::size_t i = 0; i < kBlock; ++i) all = static_cast<char>(all | text[length + i]);
    if (!is_ascii(all)) break;
  }
  while (length < text.size() && is_ascii(text[length])) ++length;
  return length;
}

/// Moves line and column over the text.
void Advance(std::string_view text, std::uint32_t& line, std::uint32_t& column) {
  for (std::size_t at = text.find('\n'); at != std::string_view::npos; at = text.find('\n')) {
    ++line;
    column = 1;
    text.remove_prefix(at + 1);
  }
  column += static_cast<std::uint32_t>(text.size());
}

}  // namespace

void CUtf8Watch::Take(std::string_view text) {
  while (m_is_valid && !text.empty()) {
    if (m_left == 0) {
      text.remove_prefix(AsciiLength(text));
      if (text.empty()) return;
    }
    const auto byte = static_cast<unsigned char>(text.front());
    text.remove_prefix(1);
    if (m_left > 0) {
      m_is_valid = (byte & 0xC0U) == 0x80;
      --m_left;
    } else {
      m_is_valid = byte >= 0xC2 && byte <= 0xF4;
      m_left = byte < 0xE0 ? 1 : byte < 0xF0 ? 2 : 3;
      m_has_characters = true;
    }
  }
}

CXmlWindow::CXmlWindow(CFile& file, std::size_t step)
    : m_file(file), m_step(std::min<std::size_t>(step, std::numeric_limits<std::uint32_t>::max())) {
  assert(step != 0);
  const std::uint64_t length = file.GetLength();
  m_knows_length = length != 0;  // a pipe has none
  if (m_knows_length) m_left = length - std::min(length, file.GetPosition());
  MakeRoom(m_step);
}

void CXmlWindow::Extend(std::uint64_t keep) {
  GiveUp(keep);
  // A long piece of markup is gone over anew when more of it is there, so more is read of it.
  const std::size_t size = std::max(m_step, (m_end - m_begin) / 4);
  MakeRoom(size);
  const std::uint64_t most = m_knows_length ? std::min<std::uint64_t>(size, m_left) : size;
  const auto wanted = static_cast<std::uint32_t>(
      std::min<std::uint64_t>(most, std::numeric_limits<std::uint32_t>::max()));
  const std::uint32_t got = m_file.Read(m_text.get() + m_end, wanted);
  if (m_knows_length) m_left -= got;
  m_is_at_end = got == 0;
  Take(got);
  if (got < wanted && m_knows_length)
    Fail(FailureKind::kCannotRead, "the file was cut short while it was read");
}

/// Makes text of the bytes that have been read behind it.
void CXmlWindow::Take(std::size_t size) {
  char* from = m_text.get() + m_end;
  char* end = from + size;
  if (size != 0) {
    const bool goes_on = m_is_after_cr && *from == '\n';
    m_is_after_cr = end[-1] == '\r';
    if (goes_on) end = std::copy(from + 1, end, from);
    end = NormaliseLineEnds(from, end);
  }
  char* const behind = end;
  if (auto* nul = static_cast<char*>(std::memchr(from, '\0', static_cast<std::size_t>(end - from)));
      nul != nullptr)
    end = nul;
  const bool has_nul = end != behind;
  m_watch.Take({from, static_cast<std::size_t>(end - from)});
  m_end = static_cast<std::size_t>(end - m_text.get());
  std::fill_n(end, kZeros, '\0');
  if (has_nul) Fail(FailureKind::kDamaged, "the text holds a NUL");
}

void CXmlWindow::GiveUp(std::uint64_t keep) {
  assert(keep >= m_position && keep <= GetEnd());
  const auto size = static_cast<std::size_t>(keep - m_position);
  Advance({m_text.get() + m_begin, size}, m_line, m_column);
  m_begin += size;
  m_position = keep;
}

/// Room for so many bytes behind the text and its zeros. What is moved is less than what has been
/// given up since, or taken since.
void CXmlWindow::MakeRoom(std::size_t size) {
  const std::size_t kept = m_end - m_begin;
  const std::size_t needed = kept + size + kZeros;
  if (m_capacity - m_end >= size + kZeros && m_text != nullptr) return;
  if (m_capacity >= needed && m_begin >= kept) {
    std::memcpy(m_text.get(), m_text.get() + m_begin, kept);
  } else {
    // Twice what it has to hold and no more, so that this too is rare.
    const std::size_t capacity = needed + kept + m_step;
    auto larger = std::make_unique_for_overwrite<char[]>(capacity);
    if (kept != 0) std::memcpy(larger.get(), m_text.get() + m_begin, kept);
    m_text = std::move(larger);
    m_capacity = capacity;
  }
  m_begin = 0;
  m_end = kept;
}

void CXmlWindow::Fail(FailureKind kind, const char* reason) {
  if (!m_failure.has_value()) m_failure = FailureAt(GetEnd(), kind, reason);
  m_is_at_end = true;
}

Failure CXmlWindow::FailureAt(std::uint64_t position, FailureKind kind, CString reason) const {
  Failure failure;
  failure.Kind = kind;
  failure.Line = m_line;
  failure.Column = m_column;
  failure.Reason = std::move(reason);
  // A long piece of text may have begun before what is still there.
  const std::uint64_t at = std::max(position, m_position);
  Advance({m_text.get() + m_begin, static_cast<std::size_t>(at - m_position)}, failure.Line,
          failure.Column);
  return failure;
}

}  // namespace qenzor
