#include <algorithm>
#include <cassert>
#include <memory>

#include "qenzor/text/xml_pieces_impl.h"
#include "qenzor/text/xml_scanner_for_impl.h"

namespace qenzor {

namespace {

/// Where the parser found an error, in bytes from the front of what it was given; it counts lines
/// and characters.
std::size_t PlaceOf(const TiXmlDocument& failed, std::string_view text, bool is_utf8) {
  std::size_t at = 0;
  for (int row = failed.ErrorRow(); row > 1; --row) at = text.find('\n', at) + 1;
  for (int column = failed.ErrorCol(); column > 1; --column)
    at += is_utf8 && at < text.size() ? CXmlScanner::CharacterLength(text[at]) : 1;
  return std::min(at, text.size());
}

bool IsBlank(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); });
}

}  // namespace

TiXmlElement& CXmlElement::GetValue() {
  assert(m_elem != nullptr);
  if (m_pieces != nullptr && m_elem->NoChildren()) m_pieces->ReadText(*m_elem);
  return *m_elem;
}

std::string_view CXmlElement::GetText() {
  const char* text = GetValue().GetText();
  return text == nullptr ? std::string_view() : std::string_view(text);
}

CString CXmlElement::GetNarrowText() {
  return m_encoding == TextEncoding::kCodePage ? CString(GetText()) : NarrowText(GetWideText());
}

CXmlPieces::CXmlPieces(CFile& file, const XmlReadOptions& options, const XmlPieceSizes& sizes)
    : m_window(file, sizes.Window),
      m_options(options),
      m_sizes(sizes),
      m_tail(ScannerFor(options.Encoding)) {}

CXmlPieces::Event CXmlPieces::Step(CXmlScanner& scanner) {
  if (m_window.GetFailure().has_value()) {
    m_failure = m_window.GetFailure();
    return Event::kStopped;
  }
  return scanner.Step(m_window.From(scanner.GetPosition()), m_window.IsAtEnd());
}

CXmlPieces::Found CXmlPieces::ReadChild(const TiXmlElement* parent, TiXmlElement& child) {
  while (!m_failure.has_value()) {
    CXmlScanner next = m_tail;
    switch (const Event event = Step(next); event) {
      case Event::kStart:
      case Event::kEmpty:
        return ReadElement(next, event == Event::kEmpty, child);
      case Event::kMore:
        m_window.Extend(next.GetPosition());
        break;
      case Event::kPassed:
        break;
      case Event::kEnd:
        if (!next.Closes(PassedBy(next), parent->ValueStr()))
          Fail(next.GetMarkup(),
               "the end tag is not that of the element '" + parent->ValueStr() + "'");
        [[fallthrough]];
      case Event::kStopped:
        m_tail = next;
        return Found::kNothing;
      case Event::kBroken:
      case Event::kRefused:
        Fail(next.GetMarkup(), next.GetReason());
    }
    m_tail = next;
  }
  return Found::kNothing;
}

CXmlPieces::Found CXmlPieces::ReadElement(const CXmlScanner& behind_tag, bool is_empty,
                                          TiXmlElement& elem) {
  const std::uint64_t start = behind_tag.GetMarkup();
  const bool is_short = is_empty || IsShort(behind_tag);
  m_tail = behind_tag;
  if (is_short) {
    const char* const text = m_window.From(start).data();
    const char* const end = Parse(text, start, elem);
    if (end == nullptr) return Found::kNothing;
    m_tail.SkipElement(start + static_cast<std::uint64_t>(end - text), is_empty);
    return Found::kWhole;
  }
  // The start tag alone, as an empty element.
  CString tag(PassedBy(behind_tag));
  tag.back() = '/';
  tag += '>';
  return Parse(tag.c_str(), start, elem) == nullptr ? Found::kNothing : Found::kOpen;
}

/// Whether the element, whose start tag has been passed, ends within the length of a piece.
bool CXmlPieces::IsShort(const CXmlScanner& behind_tag) {
  const std::uint64_t start = behind_tag.GetMarkup();
  const std::size_t level = behind_tag.GetDepth() - 1;
  if (m_head.GetPosition() < behind_tag.GetPosition()) {
    m_head = behind_tag;
    m_starts[level] = start;
  }
  while (m_head.GetDepth() > level && m_starts[level] == start) {
    if (m_head.GetPosition() - start > m_sizes.Piece) return false;
    switch (Step(m_head)) {
      case Event::kMore:
        m_window.Extend(m_tail.GetPosition());
        break;
      case Event::kStart:
        m_starts[m_head.GetDepth() - 1] = m_head.GetMarkup();
        break;
      case Event::kPassed:
      case Event::kEmpty:
      case Event::kEnd:
        break;
      case Event::kStopped:
      case Event::kBroken:
      case Event::kRefused:
        return false;  // the tail will come there
    }
  }
  return true;
}

void CXmlPieces::ReadText(TiXmlElement& elem) {
  using Kind = CXmlScanner::Kind;
  for (CXmlScanner next = m_tail; !m_failure.has_value();) {
    const Event event = Step(next);
    if (event == Event::kMore) {
      // Of what is no text, nothing is needed.
      if (next.IsInside(Kind::kOther)) m_tail = next;
      m_window.Extend(m_tail.GetPosition());
      continue;
    }
    if (event != Event::kPassed || next.GetKind() == Kind::kOther) return;
    auto text = std::make_unique<TiXmlText>("");
    text->SetCDATA(next.GetKind() == Kind::kCData);
    const bool begins_with_space = !text->CDATA() && !TiXmlBase::IsWhiteSpaceCondensed();
    const std::uint64_t start = begins_with_space ? m_tail.GetPosition() : next.GetMarkup();
    text->Parse(m_window.From(start).data(), nullptr, GetEncoding());
    m_tail = next;
    if (!text->CDATA() && IsBlank(text->ValueStr())) continue;
    elem.LinkEndChild(text.release());
    return;
  }
}

void CXmlPieces::Finish() {
  if (m_failure.has_value()) return;
  if (!m_tail.HasMarkup()) return Fail(m_tail.GetPosition(), "there is no element");
  while (!m_window.IsAtEnd()) m_window.Extend(m_window.GetEnd());
  m_failure = m_window.GetFailure();
  if (m_failure.has_value() || m_options.Encoding != XmlEncoding::kShiftJis || !m_options.Warn)
    return;
  if (m_tail.DeclaresOther())
    m_options.Warn("the declaration names another encoding than Shift_JIS, as which it is read");
  else if (m_window.IsUtf8())
    m_options.Warn("the text looks like UTF-8 but is read as Shift_JIS");
}

/// The text of the piece that the scanner has just passed.
std::string_view CXmlPieces::PassedBy(const CXmlScanner& scanner) const {
  return m_window.From(scanner.GetMarkup())
      .substr(0, static_cast<std::size_t>(scanner.GetPosition() - scanner.GetMarkup()));
}

TiXmlEncoding CXmlPieces::GetEncoding() const {
  return m_tail.IsUtf8() ? TIXML_ENCODING_UTF8 : TIXML_ENCODING_LEGACY;
}

TextEncoding CXmlPieces::GetTextEncoding() const {
  return m_options.Encoding != XmlEncoding::kShiftJis && m_tail.IsUtf8() ? TextEncoding::kUtf8
                                                                         : TextEncoding::kCodePage;
}

/// Parses the element that begins with the text, which stands at the position; its end, or null.
const char* CXmlPieces::Parse(const char* text, std::uint64_t position, TiXmlElement& elem) {
  const char* const end = elem.Parse(text, nullptr, GetEncoding());
  if (end != nullptr) return end;
  // Only a document remembers what went wrong.
  TiXmlDocument document;
  document.SetTabSize(1);
  document.Parse(text, nullptr, GetEncoding());
  Fail(position + PlaceOf(document, text, m_tail.IsUtf8()), document.ErrorDesc());
  return nullptr;
}

void CXmlPieces::Fail(std::uint64_t position, CString reason, FailureKind kind) {
  if (!m_failure.has_value()) m_failure = m_window.FailureAt(position, kind, std::move(reason));
}

}  // namespace qenzor
