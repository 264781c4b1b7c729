#pragma once

#include <tinyxml.h>

#include <array>
#include <optional>
#include <string_view>

#include "qenzor/platform/code_page.h"
#include "qenzor/text/xml_file.h"
#include "qenzor/text/xml_options.h"
#include "qenzor/text/xml_scanner_impl.h"
#include "qenzor/text/xml_window_impl.h"

namespace qenzor {

class CXmlPieces;

/// How much of a text is held at a time.
struct XmlPieceSizes {
  /// Bytes that are read at a time.
  std::size_t Window = std::size_t{64} * 1024;
  /// An element whose text is longer is not parsed as a whole. The parser's tree takes up to 60
  /// bytes for a byte of text.
  std::size_t Piece = std::size_t{32} * 1024;
};

/// An element that is read: one that has been parsed with all below it, or a long one, which is
/// read piece by piece. Its content is taken once, in order, and only while it is being handed out.
class CXmlElement {
 public:
  explicit CXmlElement(TiXmlElement& elem, TextEncoding encoding = TextEncoding::kCodePage,
                       CXmlPieces* pieces = nullptr)
      : m_elem(&elem), m_pieces(pieces), m_encoding(encoding) {}

  std::string_view GetTag() const { return m_elem->ValueStr(); }
  /// The element with its attributes and the text that stands first in it; for what is below, there
  /// is ForEachChild.
  TiXmlElement& GetValue();
  /// That text; empty when the element begins otherwise.
  std::string_view GetText();
  CStringW GetWideText() { return DecodeText(GetText(), m_encoding); }
  /// In the code page.
  CString GetNarrowText();
  /// Calls f with each child element, in document order.
  template <class F>
  void ForEachChild(F&& f);

 private:
  friend class CXmlPieces;
  explicit CXmlElement(CXmlPieces& document) : m_pieces(&document) {}
  /// Passes over what has not been taken.
  void Skip() {
    if (m_pieces != nullptr) ForEachChild([](CXmlElement& /*child*/) {});
  }

  TiXmlElement* m_elem = nullptr;  ///< null for the document itself
  CXmlPieces* m_pieces;            ///< null once there is no more to come from there
  TextEncoding m_encoding = TextEncoding::kCodePage;
};

/// Parses a text in pieces. What is accepted, refused and understood is what it would be if the
/// parser were given all of it at once.
class CXmlPieces {
 public:
  explicit CXmlPieces(CFile& file, const XmlReadOptions& options = {},
                      const XmlPieceSizes& sizes = {});

  /// Calls read_root with the first element and goes through the text to its end.
  template <class F>
  void ReadDocument(F&& read_root);
  /// Reads no further: the element just handed out is not what was asked for.
  void Stop(CString reason) {
    Fail(m_tail.GetMarkup(), std::move(reason), FailureKind::kNotSuchDocument);
  }
  /// Why the text cannot be parsed; nothing when it can. What has been made of it is void then.
  const std::optional<Failure>& GetFailure() const { return m_failure; }

 private:
  friend class CXmlElement;
  using Event = CXmlScanner::Event;
  enum class Found : std::uint8_t { kNothing, kWhole, kOpen };

  /// The next child of the innermost element that has been opened, the parent.
  Found ReadChild(const TiXmlElement* parent, TiXmlElement& child);
  Found ReadElement(const CXmlScanner& behind_tag, bool is_empty, TiXmlElement& elem);
  /// Gives the element just opened the text that comes next, if it begins with text.
  void ReadText(TiXmlElement& elem);
  /// What comes behind the part that the parser reads must still be text.
  void Finish();

  Event Step(CXmlScanner& scanner);
  bool IsShort(const CXmlScanner& behind_tag);
  std::string_view PassedBy(const CXmlScanner& scanner) const;
  TiXmlEncoding GetEncoding() const;
  TextEncoding GetTextEncoding() const;
  const char* Parse(const char* text, std::uint64_t position, TiXmlElement& elem);
  void Fail(std::uint64_t position, CString reason, FailureKind kind = FailureKind::kDamaged);

  CXmlWindow m_window;
  XmlReadOptions m_options;
  XmlPieceSizes m_sizes;
  CXmlScanner m_tail;  ///< what is before it has been taken
  CXmlScanner m_head;  ///< how far elements have been followed to find their ends
  /// Where the elements begin that are open at the head.
  std::array<std::uint64_t, kMaxXmlDepth> m_starts{};
  std::optional<Failure> m_failure;
};

template <class F>
void CXmlElement::ForEachChild(F&& f) {
  if (m_pieces == nullptr) {
    for (TiXmlElement* child = m_elem->FirstChildElement(); child != nullptr;
         child = child->NextSiblingElement()) {
      CXmlElement elem(*child, m_encoding);
      f(elem);
    }
    return;
  }
  for (;;) {
    TiXmlElement child("");
    const CXmlPieces::Found found = m_pieces->ReadChild(m_elem, child);
    if (found == CXmlPieces::Found::kNothing) break;
    CXmlElement elem(child, m_pieces->GetTextEncoding(),
                     found == CXmlPieces::Found::kOpen ? m_pieces : nullptr);
    f(elem);
    elem.Skip();
  }
  m_pieces = nullptr;
}

template <class F>
void CXmlPieces::ReadDocument(F&& read_root) {
  bool is_root = true;
  CXmlElement(*this).ForEachChild([&](CXmlElement& elem) {
    if (is_root) read_root(elem);
    is_root = false;
  });
  Finish();
}

}  // namespace qenzor
