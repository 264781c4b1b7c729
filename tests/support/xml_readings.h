#pragma once

#include <tinyxml.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "qenzor/qen/qen_xml_impl.h"
#include "qenzor/zor/zor_xml_impl.h"
namespace qenzor::testing {

// XML text read as a whole, by the parser's own document, and in pieces. Both give all that the
// document edit holds, as text; a text that is refused gives "refused".

inline constexpr const char* kRefused = "refused";

template <class Document>
std::string Describe(Document& document) {
  CMemFile xml;
  {
    CStdioFile file(xml);
    if constexpr (std::is_same_v<Document, CQen>)
      CQenTextConverter().ConvertChunkToText(file, document, 0);
    else
      CZorTextConverter().ConvertChunkToText(file, document, 0);
  }
  CMemFile bytes;
  static_cast<void>(document.Write(&bytes));
  return {std::string(xml.GetBytes().begin(), xml.GetBytes().end()) +
          std::string(bytes.GetBytes().begin(), bytes.GetBytes().end())};
}

struct QenXml : CQenTextConverter {
  using Edit = CQenEdit;
  static constexpr std::string_view kRoot = "Qen";
  static Result<CQenEdit> Read(CFile& file, const XmlPieceSizes& sizes) {
    return ReadQenXmlPieces(file, {}, sizes);
  }
  void Fill(CQenEdit& edit, TiXmlElement& root) { SetQenEditParam(&edit, &root); }
  static std::string Describe(CQenEdit& edit) {
    const std::unique_ptr<CQen> document(edit.EditDataToQenData());
    return testing::Describe(*document);
  }
};

struct ZorXml : CZorTextConverter {
  using Edit = CZorEdit;
  static constexpr std::string_view kRoot = "Zor";
  static Result<CZorEdit> Read(CFile& file, const XmlPieceSizes& sizes) {
    return ReadZorXmlPieces(file, {}, sizes);
  }
  void Fill(CZorEdit& edit, TiXmlElement& root) { SetZorEditParam(&edit, &root); }
  static std::string Describe(CZorEdit& edit) {
    const std::unique_ptr<CZor> document(edit.EditDataToZorData());
    return testing::Describe(*document);
  }
};

/// CR LF and CR as LF.
inline std::string WithPlainLineEnds(std::string_view text) {
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\n' && i > 0 && text[i - 1] == '\r') continue;
    plain += text[i] == '\r' ? '\n' : text[i];
  }
  return plain;
}

template <class Xml>
std::string ReadWhole(std::string_view text) {
  const std::string plain = WithPlainLineEnds(text);
  if (plain.find('\0') != std::string::npos || !IsWithinXmlLimits(plain)) return kRefused;
  TiXmlDocument document;
  document.Parse((plain + std::string(4, '\0')).c_str(), nullptr, TIXML_DEFAULT_ENCODING);
  TiXmlElement* root = document.Error() ? nullptr : document.FirstChildElement();
  if (root == nullptr || root->ValueStr() != Xml::kRoot) return kRefused;
  typename Xml::Edit edit;
  Xml().Fill(edit, *root);
  return Xml::Describe(edit);
}

template <class Xml>
std::string ReadInPieces(std::string_view text, const XmlPieceSizes& sizes) {
  CMemFile file(std::vector<std::uint8_t>(text.begin(), text.end()));
  const Result<typename Xml::Edit> edit = Xml::Read(file, sizes);
  return edit ? Xml::Describe(*edit) : kRefused;
}

}  // namespace qenzor::testing
