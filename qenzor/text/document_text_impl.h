#pragma once

// What the converters of the two documents share.

#include <algorithm>
#include <array>
#include <charconv>
#include <memory>
#include <new>

#include "qenzor/core/file_info.h"
#include "qenzor/core/result.h"
#include "qenzor/edit/field_edit_impl.h"
#include "qenzor/platform/bulk_phase_impl.h"
#include "qenzor/text/field_text_impl.h"
#include "qenzor/text/xml_memory_impl.h"

namespace qenzor {

// The two fields that only a file info has.

inline void WriteXmlValue(CXmlWriter& xml, std::string_view tag, const std::array<char, 9>& ident,
                          IdentCoding) {
  const std::string_view six(ident.data(), 6);
  const std::string_view characters = six.substr(0, six.find('\0'));
  const TextEncoding encoding = xml.GetFile().GetEncoding();
  if (encoding == TextEncoding::kCodePage)
    xml.Text(tag, characters);
  else
    xml.Text(tag, EncodeText(WidenText(characters), encoding));
}

/// Sixteen signed bits: a magic of 0x8000 or more shows the sign's bits in front.
inline void WriteXmlValue(CXmlWriter& xml, std::string_view tag, std::uint16_t magic, MagicCoding) {
  std::array<char, 16> text{'0', 'x'};
  const auto value = static_cast<std::uint32_t>(static_cast<std::int16_t>(magic));
  char* end = std::to_chars(text.data() + 2, text.data() + text.size(), value, 16).ptr;
  std::transform(text.data() + 2, end, text.data() + 2,
                 [](char c) { return c >= 'a' ? static_cast<char>(c - 'a' + 'A') : c; });
  xml.Text(tag, {text.data(), static_cast<std::size_t>(end - text.data())});
}

/// Text shorter than the identification ends with a zero; what stood behind that stays.
template <class T, class O>
void TakeXmlField(CXmlElement& elem, T& object,
                  const Field<O, std::array<char, 9>, IdentCoding>& f) {
  std::array<char, 9>& ident = object.*f.Member;
  const CString text = elem.GetNarrowText().substr(0, ident.size() - 1);
  *std::copy(text.begin(), text.end(), ident.begin()) = '\0';
  ident[6] = '\r';
  ident[7] = '\n';
  ident[8] = '\x1A';
}

/// The magic is recognised, never parsed: any other text leaves it as it is.
inline void ReadXmlValue(TiXmlElement& elem, std::uint16_t& magic, MagicCoding) {
  if (TextOf(elem).starts_with("0x4041")) magic = 0x4041;
}

/// Writes declaration, document element, file info and root chunk. Name is the document's word.
template <class Info>
void WriteXmlDocument(CXmlWriter xml, const CString& name, const Info& info,
                      std::string_view root_tag, CAbstractChunk* root) {
  xml.Indent();
  const bool is_utf8 = xml.GetFile().GetEncoding() == TextEncoding::kUtf8;
  xml.GetFile().WriteString(is_utf8 ? "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n"
                                    : "<?xml version=\"1.0\" encoding=\"Shift_JIS\" ?>\n");
  xml.OpenTag(name);
  CXmlWriter inner = xml.Deeper();
  const CString info_tag = name + "FileInfo";
  inner.OpenTag(info_tag);
  WriteXmlFields(inner.Deeper(), Info::Fields(), info);
  inner.CloseTag(info_tag);
  CAbstractChunkTextConverter::ConvertChunkToString(xml.GetFile(), CString(root_tag), root,
                                                    inner.GetLevel());
  xml.CloseTag(name);
}

/// Creates the XML file and lets write fill it. False when it cannot be opened.
template <class Write>
bool WriteXmlFile(const CString& path, Write&& write) {
  CStdioFile file;
  if (!file.Open(path, CFile::modeCreate | CFile::modeWrite)) return false;
  write(file);
  file.Close();
  return true;
}

/// The document edit that fill makes of the root element, or why there is none.
template <class Edit, class Fill>
Result<Edit> ReadXmlDocument(CFile& text, const XmlReadOptions& options, const XmlPieceSizes& sizes,
                             std::string_view name, Fill&& fill) try {
  const CBulkPhase phase;
  CXmlPieces pieces(text, options, sizes);
  std::unique_ptr<Edit> edit;
  pieces.ReadDocument([&](CXmlElement& root) {
    if (root.GetTag() != name)
      return pieces.Stop("the root element is not '" + CString(name) + "'");
    edit = std::make_unique<Edit>();
    fill(*edit, root);
  });
  if (pieces.GetFailure().has_value()) return *pieces.GetFailure();
  if (edit != nullptr) return edit;
  return FailureAtPath({}, FailureKind::kNotSuchDocument, "there is no element");
} catch (const std::bad_alloc&) {
  return OutOfMemory({});
}

}  // namespace qenzor
