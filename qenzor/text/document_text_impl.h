#pragma once

// What the converters of the two documents share.

#include <algorithm>
#include <array>
#include <charconv>
#include <memory>
#include <new>

#include "qenzor/core/file_info.h"
#include "qenzor/edit/field_edit_impl.h"
#include "qenzor/platform/bulk_phase_impl.h"
#include "qenzor/text/field_text_impl.h"
#include "qenzor/text/xml_file.h"

namespace qenzor {

// The two fields that only a file info has.

inline void WriteXmlValue(CXmlWriter& xml, std::string_view tag, const std::array<char, 9>& ident,
                          IdentCoding) {
  const std::string_view characters(ident.data(), 6);
  xml.Text(tag, characters.substr(0, characters.find('\0')));
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
inline void ReadXmlValue(TiXmlElement& elem, std::array<char, 9>& ident, IdentCoding) {
  const std::string_view text = TextOf(elem).substr(0, ident.size() - 1);
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
  xml.GetFile().WriteString("<?xml version=\"1.0\" encoding=\"Shift_JIS\" ?>\n");
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

/// Parses the XML file at the path; false when it cannot be read or parsed.
bool LoadXmlFile(const CString& path, TiXmlDocument& xml);

/// The document edit that fill makes of the root element, owned by the caller; null when the file
/// cannot be loaded or its root element has another name.
template <class Edit, class Fill>
Edit* ReadXmlDocument(const CString& path, const char* name, Fill&& fill) try {
  TiXmlDocument xml;
  if (!LoadXmlFile(path, xml)) return nullptr;
  TiXmlElement* root = xml.FirstChildElement();
  if (root == nullptr || root->ValueStr() != name) return nullptr;
  const CBulkPhase phase;
  auto edit = std::make_unique<Edit>();
  fill(edit.get(), root);
  return edit.release();
} catch (const std::bad_alloc&) {
  return nullptr;
}

}  // namespace qenzor
