// The parser recurses on elements, so text must be known to keep the limits before it is parsed,
// and it takes many times the text's memory, so it is given long text in pieces. Both are only
// worth something if this walk and the parser agree on what is an element and where it ends. Hence
// every step below is the parser's own. Where the parser gives up, so does the walk.

#include <algorithm>
#include <array>

#include "qenzor/text/xml_file.h"
#include "qenzor/text/xml_scanner_impl.h"

namespace qenzor {

namespace {

/// What a byte is in markup; one look each, for every byte of a text comes by here.
enum Class : std::uint8_t { kSpace = 1, kNameStart = 2, kName = 4 };
constexpr auto kClasses = [] {
  std::array<std::uint8_t, 256> classes{};
  for (std::uint32_t c = 0; c < classes.size(); ++c) {
    const bool is_letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c >= 127;
    const bool is_start = is_letter || c == '_';
    const bool is_name = is_start || (c >= '0' && c <= '9') || c == '-' || c == '.' || c == ':';
    const bool is_space = c == ' ' || (c >= '\t' && c <= '\r');
    classes[c] = static_cast<std::uint8_t>((is_space ? kSpace : 0) | (is_start ? kNameStart : 0) |
                                           (is_name ? kName : 0));
  }
  return classes;
}();
constexpr bool Is(char c, Class which) {
  return (kClasses[static_cast<unsigned char>(c)] & which) != 0;
}
constexpr auto IsSpace = [](char c) { return Is(c, kSpace); };
constexpr auto IsNameStart = [](char c) { return Is(c, kNameStart); };
constexpr auto IsNameChar = [](char c) { return Is(c, kName); };
bool IsDigit(char c, bool hex) {
  return (c >= '0' && c <= '9') || (hex && ((c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F')));
}
bool StartsWithWord(std::string_view text, std::string_view lower) {
  const auto same = [](char a, char b) { return (a >= 'A' && a <= 'Z' ? a - 'A' + 'a' : a) == b; };
  return text.size() >= lower.size() && std::equal(lower.begin(), lower.end(), text.begin(),
                                                   [&](char b, char a) { return same(a, b); });
}

bool NamesCodePage(std::string_view encoding) {
  constexpr std::array<std::string_view, 8> kNames{
      "shift_jis", "shift-jis", "sjis", "x-sjis", "cp932", "ms932", "windows-31j", "ms_kanji"};
  return std::ranges::any_of(kNames, [encoding](std::string_view name) {
    return name.size() == encoding.size() && StartsWithWord(encoding, name);
  });
}

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
/// What the parser takes for white space in UTF-8.
constexpr std::array<std::string_view, 3> kSpaceMarks{kByteOrderMark, "\xEF\xBF\xBE",
                                                      "\xEF\xBF\xBF"};
constexpr std::size_t kMarkSize = kByteOrderMark.size();

constexpr std::string_view kDeclaration = "<?xml";
constexpr std::string_view kComment = "<!--";
constexpr std::string_view kCData = "<![CDATA[";

}  // namespace

/// Where text is UTF-8 the parser believes every first byte of a character about its length, and
/// does not see a mark among what follows.
std::size_t CXmlScanner::CharacterLength(char first) {
  const auto byte = static_cast<unsigned char>(first);
  if (byte < 0xC2 || byte > 0xF4) return 1;
  return byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
}

CXmlScanner::Event CXmlScanner::Step(std::string_view text, bool is_last) {
  m_rest = text;
  m_end = m_position + text.size();
  m_is_last = is_last;
  const Event event = m_mark == Mark::kNone ? StepContent() : GoOn();
  if (event != Event::kBroken && event != Event::kRefused)
    m_position += text.size() - m_rest.size();
  m_rest = {};
  return event;
}

CXmlScanner::Event CXmlScanner::StepContent() {
  if (!m_has_begun) {
    if (IsShorterThan(kMarkSize)) return Event::kMore;
    if (m_rest.starts_with(kByteOrderMark)) m_encoding = Encoding::kUtf8;
    m_has_begun = true;
  }
  const std::size_t before = m_rest.size();
  SkipSpace();
  if (m_rest.empty()) return AtEnd();
  if (IsUtf8() && IsShorterThan(kMarkSize) && m_rest.front() == kByteOrderMark.front())
    return Event::kMore;
  m_markup = m_position + (before - m_rest.size());
  if (m_rest.front() == '<') return IsShorterThan(kCData.size()) ? Event::kMore : StepMarkup();
  if (m_depth == 0) return Event::kStopped;  // text has no place outside the root
  m_mark = Mark::kText;
  m_kind = Kind::kText;
  return GoOn();
}

CXmlScanner::Event CXmlScanner::StepMarkup() {
  m_has_markup = true;
  m_kind = Kind::kOther;
  if (StartsWithWord(m_rest, kDeclaration)) return ScanWhole(&CXmlScanner::ScanDeclaration);
  if (m_rest.starts_with(kComment)) {
    m_mark = Mark::kComment;
    m_rest.remove_prefix(kComment.size());
  } else if (m_rest.starts_with(kCData)) {
    m_mark = Mark::kCData;
    m_kind = Kind::kCData;
    m_rest.remove_prefix(kCData.size());
  } else if (m_rest.size() > 1 && IsNameStart(m_rest[1])) {
    if (m_encoding == Encoding::kUnknown && m_assumed == Assumed::kUtf8Undeclared)
      m_encoding = Encoding::kUtf8;
    return ScanWhole(&CXmlScanner::ScanTag);
  } else if (m_rest.starts_with("</") && m_depth > 0) {
    return ScanWhole(&CXmlScanner::ScanEndTag);
  } else {
    m_mark = Mark::kUnknown;
    m_rest.remove_prefix(1);
  }
  return GoOn();
}

CXmlScanner::Event CXmlScanner::GoOn() {
  const bool is_over = m_mark == Mark::kText      ? SkipCharacters('<')
                       : m_mark == Mark::kComment ? SkipTo("-->")
                       : m_mark == Mark::kCData   ? SkipTo("]]>")
                                                  : SkipTo(">");
  if (m_gave_up) return Event::kBroken;
  if (!is_over) return AtEnd();
  m_mark = Mark::kNone;
  return Event::kPassed;
}

CXmlScanner::Event CXmlScanner::AtEnd() {
  if (!m_is_last) return Event::kMore;
  m_markup = m_end;
  return m_depth == 0 ? Event::kStopped : Break("the text ends inside an element");
}

/// Goes over what has to be there as a whole; when it is not, the step has not been taken.
template <class Scan>
CXmlScanner::Event CXmlScanner::ScanWhole(Scan scan) {
  const CXmlScanner before = *this;
  const Event event = (this->*scan)();
  if (m_is_last || m_gave_up || !m_rest.empty() || event == Event::kRefused) return event;
  *this = before;
  return Event::kMore;
}

CXmlScanner::Event CXmlScanner::ScanTag() {
  constexpr const char* kReason = "the tag is not well-formed";
  m_rest.remove_prefix(1);
  SkipSpace();  // a mark that counts as a letter and as white space
  if (m_rest.empty() || !IsNameStart(m_rest.front())) return Break(kReason);
  SkipWhile(IsNameChar);
  for (std::uint32_t attributes = 0;;) {
    SkipSpace();
    if (m_rest.starts_with("/>") || m_rest.starts_with('>')) {
      const bool is_empty = m_rest.front() == '/';
      m_rest.remove_prefix(is_empty ? 2 : 1);
      if (m_depth + 1 > kMaxXmlDepth) return Refuse("elements nest too deep");
      if (is_empty) return Event::kEmpty;
      ++m_depth;
      return Event::kStart;
    }
    if (m_rest.empty() || !IsNameStart(m_rest.front())) return Break(kReason);
    if (++attributes > kMaxXmlAttributes) return Refuse("an element has too many attributes");
    if (!SkipAttribute().has_value()) return Break(kReason);
  }
}

CXmlScanner::Event CXmlScanner::ScanEndTag() {
  if (!SkipTo(">")) {
    m_rest = {};
    return Break("the end tag has no end");
  }
  --m_depth;
  return Event::kEnd;
}

/// A declaration ends at the first '>' that does not stand in the value of one of three words. The
/// first one outside the root may settle the encoding.
CXmlScanner::Event CXmlScanner::ScanDeclaration() {
  std::string_view encoding;
  m_rest.remove_prefix(kDeclaration.size());
  while (!m_rest.empty() && m_rest.front() != '>') {
    SkipSpace();
    const bool tells_encoding = StartsWithWord(m_rest, "encoding");
    if (tells_encoding || StartsWithWord(m_rest, "version") ||
        StartsWithWord(m_rest, "standalone")) {
      const std::optional<std::string_view> value = SkipAttribute();
      if (!value.has_value()) break;
      if (tells_encoding) encoding = *value;
    } else {
      SkipWhile([](char c) { return c != '>' && !IsSpace(c); });
    }
  }
  if (m_rest.empty())
    return m_depth == 0 ? Event::kStopped : Break("the declaration is not well-formed");
  m_rest.remove_prefix(1);
  if (m_depth > 0) return Event::kPassed;
  if (!encoding.empty()) m_declares_other = !NamesCodePage(encoding);
  if (m_encoding != Encoding::kUnknown) return Event::kPassed;
  if (encoding.find('&') != std::string_view::npos)
    return Refuse("the name of the encoding holds an entity");
  const bool is_utf8 =
      encoding.empty() || StartsWithWord(encoding, "utf-8") || StartsWithWord(encoding, "utf8");
  m_encoding = is_utf8 ? Encoding::kUtf8 : Encoding::kOther;
  return Event::kPassed;
}

/// Name, '=' and value; the value, or nothing where the parser gives up.
std::optional<std::string_view> CXmlScanner::SkipAttribute() {
  constexpr const char* kReason = "the attribute is not well-formed";
  const auto give_up = [this] {
    GiveUp(kReason);
    return std::nullopt;
  };
  SkipWhile(IsNameChar);
  SkipSpace();
  if (!m_rest.starts_with('=')) return give_up();
  m_rest.remove_prefix(1);
  SkipSpace();
  if (m_rest.empty()) return give_up();
  const char quote = m_rest.front();
  const bool is_quoted = quote == '"' || quote == '\'';
  if (is_quoted) m_rest.remove_prefix(1);
  const std::string_view value = m_rest;
  if (is_quoted) {
    if (!SkipCharacters(quote)) return give_up();
  } else {
    SkipWhile([](char c) { return !IsSpace(c) && c != '/' && c != '>' && c != '"' && c != '\''; });
  }
  const std::size_t length = value.size() - m_rest.size();
  if (is_quoted) m_rest.remove_prefix(1);
  const bool goes_on = !m_rest.empty() && (is_quoted || (m_rest[0] != '"' && m_rest[0] != '\''));
  if (!goes_on) return give_up();
  return value.substr(0, length);
}

/// To the next mark that begins a character. False when the text ends first, or the parser gives
/// up.
bool CXmlScanner::SkipCharacters(char mark) {
  const auto is_plain = [mark, is_utf8 = IsUtf8()](char c) {
    return c != mark && c != '&' && !(is_utf8 && CharacterLength(c) > 1);
  };
  for (;;) {
    if (m_entity != Entity::kNone && !SkipEntity()) return false;
    SkipWhile(is_plain);
    if (m_rest.empty() || m_rest.front() == mark) return !m_rest.empty();
    const std::size_t length = m_rest.front() == '&' ? 1 : CharacterLength(m_rest.front());
    constexpr std::size_t kEntityStart = 3;
    if (IsShorterThan(length == 1 ? kEntityStart : length)) return false;
    if (m_rest.starts_with("&#") && m_rest.size() >= kEntityStart) {
      m_entity = m_rest[2] == 'x' ? Entity::kHex : Entity::kDecimal;
      m_is_number = true;
      m_rest.remove_prefix(m_entity == Entity::kHex ? 3 : 2);
    } else {
      m_rest.remove_prefix(std::min(length, m_rest.size()));
    }
  }
}

/// For a numeric entity the parser looks for the next ';', however far, and reads the digits in
/// front of it back to the next 'x' or '#'. It does not see what stands between that and the
/// entity's beginning.
bool CXmlScanner::SkipEntity() {
  const bool is_hex = m_entity == Entity::kHex;
  for (; !m_rest.empty(); m_rest.remove_prefix(1)) {
    const char c = m_rest.front();
    if (c == ';') {
      m_rest.remove_prefix(1);
      m_entity = Entity::kNone;
      if (!m_is_number) {
        m_reason = "the character reference is no number";
        m_gave_up = true;
      }
      return m_is_number;
    }
    m_is_number = c == (is_hex ? 'x' : '#') || (m_is_number && IsDigit(c, is_hex));
  }
  return false;
}

void CXmlScanner::SkipSpace() {
  SkipWhile(IsSpace);
  while (IsUtf8() &&
         std::ranges::any_of(kSpaceMarks, [this](auto mark) { return m_rest.starts_with(mark); })) {
    m_rest.remove_prefix(kMarkSize);
    SkipWhile(IsSpace);
  }
}

template <class Is>
void CXmlScanner::SkipWhile(Is is) {
  std::size_t at = 0;
  while (at < m_rest.size() && is(m_rest[at])) ++at;
  m_rest.remove_prefix(at);
}

/// Behind the mark. When it does not come, what may be its beginning stays.
bool CXmlScanner::SkipTo(std::string_view mark) {
  const std::size_t at = m_rest.find(mark);
  const bool is_there = at != std::string_view::npos;
  m_rest.remove_prefix(is_there ? at + mark.size()
                                : m_rest.size() - std::min(m_rest.size(), mark.size() - 1));
  return is_there;
}

/// The parser gives up here, unless it is what comes next that decides.
void CXmlScanner::GiveUp(const char* reason) {
  constexpr std::size_t kLongestCharacter = 4;
  if (!IsShorterThan(kLongestCharacter) && !m_gave_up) {
    m_gave_up = true;
    m_reason = reason;
  }
  m_rest = {};
}

CXmlScanner::Event CXmlScanner::Break(const char* reason) {
  GiveUp(reason);
  return Event::kBroken;
}

CXmlScanner::Event CXmlScanner::Refuse(const char* reason) {
  m_reason = reason;
  return Event::kRefused;
}

bool CXmlScanner::Closes(std::string_view end_tag, std::string_view name) const {
  CXmlScanner scanner = *this;
  scanner.m_rest = end_tag.substr(2);
  if (!scanner.m_rest.starts_with(name)) return false;
  scanner.m_rest.remove_prefix(name.size());
  scanner.SkipSpace();
  return scanner.m_rest == ">";
}

}  // namespace qenzor
