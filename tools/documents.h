#pragma once

#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "commands.h"
#include "failure.h"
#include "input.h"
#include "qenzor/check/check.h"
#include "qenzor/qen_document.h"
#include "qenzor/qen_xml.h"
#include "qenzor/storable.h"
#include "qenzor/zor_document.h"
#include "qenzor/zor_xml.h"

namespace tool {

/// The bytes of an input that is XML.
inline std::string_view TextOf(const Input& input) {
  return {reinterpret_cast<const char*>(input.Bytes.data()), input.Bytes.size()};
}

qenzor::XmlEncoding EncodingOf(const Options& options);

/// How messages call a document of the kind: "a map".
inline const char* KindWord(BinaryKind kind) {
  return kind == BinaryKind::kQen ? "a map" : "draw data";
}
inline const char* KindName(BinaryKind kind) { return kind == BinaryKind::kQen ? "Qen" : "Zor"; }

/// Says what the content looks like when that is another kind than the one given.
std::optional<std::string> FindOtherKind(const Input& input, BinaryKind kind);

/// All of the text of an input that is XML, of which the front alone may be in memory. Throws
/// CFailure when it cannot be read.
std::string LoadText(const Input& input);

/// The two kinds of document under the same names.
struct QenKind {
  static constexpr BinaryKind kKind = BinaryKind::kQen;
  static constexpr const char* kRoot = "Qen";
  using Document = qenzor::CQen;
  using Edit = qenzor::CQenEdit;

  static void ToEdit(Document& document, Edit& edit) { edit.QenDataToEditData(&document); }
  static Document* TakeDocument(Edit& edit) { return edit.TakeQenData(); }
  template <class Content>
  static auto Save(Content&& content, const std::string& path) {
    return qenzor::SaveQen(std::forward<Content>(content), path);
  }
  static auto SaveXml(Document& document, const std::string& path, qenzor::XmlEncoding encoding) {
    qenzor::SaveOptions options;
    options.Encoding = encoding;
    return qenzor::SaveQenXml(document, path, options);
  }
  static auto ToText(qenzor::CFile& file, Document& document) {
    return qenzor::WriteQenXml(file, document);
  }
  static auto FromText(const Input& input, const qenzor::XmlReadOptions& options = {}) {
    return input.IsRegular ? qenzor::ReadQenXml(input.Path, options)
                           : qenzor::ParseQenXml(TextOf(input), options);
  }
};

struct ZorKind {
  static constexpr BinaryKind kKind = BinaryKind::kZor;
  static constexpr const char* kRoot = "Zor";
  using Document = qenzor::CZor;
  using Edit = qenzor::CZorEdit;

  static void ToEdit(Document& document, Edit& edit) { edit.ZorDataToEditData(&document); }
  static Document* TakeDocument(Edit& edit) { return edit.TakeZorData(); }
  template <class Content>
  static auto Save(Content&& content, const std::string& path) {
    return qenzor::SaveZor(std::forward<Content>(content), path);
  }
  static auto SaveXml(Document& document, const std::string& path, qenzor::XmlEncoding encoding) {
    qenzor::SaveOptions options;
    options.Encoding = encoding;
    return qenzor::SaveZorXml(document, path, options);
  }
  static auto ToText(qenzor::CFile& file, Document& document) {
    return qenzor::WriteZorXml(file, document);
  }
  static auto FromText(const Input& input, const qenzor::XmlReadOptions& options = {}) {
    return input.IsRegular ? qenzor::ReadZorXml(input.Path, options)
                           : qenzor::ParseZorXml(TextOf(input), options);
  }
};

/// Calls f with the kind's names.
template <class F>
auto WithKind(BinaryKind kind, F&& f) {
  return kind == BinaryKind::kQen ? f(QenKind{}) : f(ZorKind{});
}

/// The reason why a document's bytes do not read, with its place.
std::string DescribeError(const Input& input, BinaryKind kind);

template <class Kind>
std::unique_ptr<typename Kind::Document> ReadDocument(const Input& input) {
  auto document = std::make_unique<typename Kind::Document>();
  const bool read =
      input.IsRegular
          ? document->Read(input.Path)
          : document->Read(input.Bytes.data(), static_cast<std::uint32_t>(input.Bytes.size()));
  if (!read) throw CFailure(input.Name, DescribeError(input, Kind::kKind));
  return document;
}

/// Why XML does not make a document of the kind, with line and column and the element that is open.
std::string DescribeXmlError(const Input& input, BinaryKind kind, const qenzor::Failure& failure,
                             qenzor::XmlEncoding encoding = {});

template <class Kind>
std::unique_ptr<typename Kind::Edit> ReadXmlEdit(const Input& input) {
  auto edit = Kind::FromText(input);
  if (!edit) throw CFailure(input.Name, DescribeXmlError(input, Kind::kKind, edit.GetFailure()));
  return edit.Take();
}

/// What cannot be stored, in one line.
inline std::string Describe(const qenzor::Unstorable& found) {
  return (found.ChunkPath.empty() ? "" : found.ChunkPath + ": ") + found.Reason;
}

/// The document that an edit form stands for, which is given up. Throws CFailure where something
/// would be lost on the way.
template <class Kind>
std::unique_ptr<typename Kind::Document> ConvertEdit(const Input& input,
                                                     typename Kind::Edit& edit) {
  const auto lost = FindUnstorable(edit, qenzor::StoredForm::kXml);
  if (lost.has_value()) throw CFailure(input.Name, Describe(*lost));
  std::unique_ptr<typename Kind::Document> document(Kind::TakeDocument(edit));
  if (document == nullptr) throw CFailure(input.Name, "out of memory");
  return document;
}

/// The document that a file holds in either form.
template <class Kind>
std::unique_ptr<typename Kind::Document> ReadEitherForm(const Input& input, bool is_xml) {
  return is_xml ? ConvertEdit<Kind>(input, *ReadXmlEdit<Kind>(input)) : ReadDocument<Kind>(input);
}

/// A document of this kind, binary or XML.
template <class Kind>
std::unique_ptr<typename Kind::Document> ReadAny(const std::string& path, const char* what) {
  const Input input = ReadInput(path, "", Need::kFront);
  const DocumentKind found = FindKind(input, "");
  if (found.Kind != Kind::kKind) throw CFailure(input.Name, std::string("is not a ") + what);
  return ReadEitherForm<Kind>(input, found.IsXml);
}

}  // namespace tool
