#pragma once

#include <cassert>
#include <cstdint>
#include <optional>
#include <string_view>

namespace qenzor {

/// Steps over XML text as the parser does, in malformed text too: what looks like an attribute's
/// value here must not be elements there. The text may come in parts; a scanner is a small value
/// that can be copied to go over the same text again.
class CXmlScanner {
 public:
  enum class Event : std::uint8_t {
    kMore,     ///< the text ends too early to tell; what was gone over is not needed any more
    kPassed,   ///< text, a comment or another piece without elements
    kStart,    ///< a start tag
    kEmpty,    ///< an empty element
    kEnd,      ///< an end tag, whatever its name
    kStopped,  ///< the parser reads no further and is content with what it has
    kBroken,   ///< the parser gives up
    kRefused,  ///< beyond the limits
  };
  /// What has just been passed.
  enum class Kind : std::uint8_t { kText, kCData, kOther };

  CXmlScanner() = default;
  /// Texts that declare no encoding: what the parser makes of them, or UTF-8; or of all texts.
  enum class Assumed : std::uint8_t { kParsers, kUtf8Undeclared, kUtf8 };
  explicit CXmlScanner(Assumed assumed)
      : m_encoding(assumed == Assumed::kUtf8 ? Encoding::kUtf8 : Encoding::kUnknown),
        m_assumed(assumed) {}

  /// Goes over what comes next. The text begins at the scanner's position and reaches to the end of
  /// what is known; nothing comes behind it when is_last is set.
  Event Step(std::string_view text, bool is_last);

  /// Bytes from the front of the whole text.
  std::uint64_t GetPosition() const { return m_position; }
  /// Moves on to the end of the element whose tag has just been passed.
  void SkipElement(std::uint64_t end, bool is_empty) {
    assert(end >= m_position && (is_empty || m_depth > 0));
    m_position = end;
    if (!is_empty) --m_depth;
  }
  /// Where the piece of the last event begins, without the white space in front of it; the end of a
  /// text that ends too early.
  std::uint64_t GetMarkup() const { return m_markup; }
  Kind GetKind() const { return m_kind; }
  /// Whether it stopped for more text in the middle of a piece of that kind.
  bool IsInside(Kind kind) const { return m_mark != Mark::kNone && m_kind == kind; }
  /// Elements that are open.
  std::uint32_t GetDepth() const { return m_depth; }
  bool IsUtf8() const { return m_encoding == Encoding::kUtf8; }
  /// Whether a declaration names an encoding that is not Shift_JIS by any name.
  bool DeclaresOther() const { return m_declares_other; }
  /// Whether anything has been seen that the parser makes a node of.
  bool HasMarkup() const { return m_has_markup; }
  /// Why the text is broken or refused.
  const char* GetReason() const { return m_reason; }

  /// The length that a character in UTF-8 claims to have.
  static std::size_t CharacterLength(char first);
  /// Whether the text of an end tag closes an element of that name.
  bool Closes(std::string_view end_tag, std::string_view name) const;

 private:
  enum class Encoding : std::uint8_t { kUnknown, kUtf8, kOther };
  /// What the piece that has been begun ends with.
  enum class Mark : std::uint8_t { kNone, kText, kComment, kCData, kUnknown };
  enum class Entity : std::uint8_t { kNone, kDecimal, kHex };

  Event StepContent();
  Event StepMarkup();
  Event GoOn();
  Event AtEnd();
  Event ScanTag();
  Event ScanEndTag();
  Event ScanDeclaration();
  template <class Scan>
  Event ScanWhole(Scan scan);
  std::optional<std::string_view> SkipAttribute();
  bool SkipCharacters(char mark);
  bool SkipEntity();
  void SkipSpace();
  template <class Is>
  void SkipWhile(Is is);
  bool SkipTo(std::string_view mark);
  bool IsShorterThan(std::size_t size) const { return !m_is_last && m_rest.size() < size; }

  Event Break(const char* reason);
  Event Refuse(const char* reason);
  void GiveUp(const char* reason);

  std::string_view m_rest;  // while a step lasts
  std::uint64_t m_position = 0;
  std::uint64_t m_markup = 0;
  std::uint64_t m_end = 0;  // of what is known of the text
  const char* m_reason = nullptr;
  std::uint32_t m_depth = 0;
  Encoding m_encoding = Encoding::kUnknown;
  Assumed m_assumed = Assumed::kParsers;
  Mark m_mark = Mark::kNone;
  Kind m_kind = Kind::kOther;
  Entity m_entity = Entity::kNone;
  bool m_is_number = false;  // whether what stands in front of an entity's end would be one
  bool m_is_last = false;
  bool m_gave_up = false;
  bool m_has_begun = false;
  bool m_has_markup = false;
  bool m_declares_other = false;
};

}  // namespace qenzor
