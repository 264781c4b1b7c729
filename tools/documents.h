#pragma once

#include <cstdio>
#include <memory>
#include <string>

#include "failure.h"
#include "input.h"
#include "qenzor/check/check.h"
#include "qenzor/qen/qen.h"
#include "qenzor/zor/zor.h"
#include "storable.h"

namespace tool {

/// The two kinds of document under the same names.
struct QenKind {
  static constexpr BinaryKind kKind = BinaryKind::kQen;
  static constexpr const char* kRoot = "Qen";
  using Document = qenzor::CQen;
  using Edit = qenzor::CQenEdit;

  static void ToEdit(Document& document, Edit& edit) { edit.QenDataToEditData(&document); }
  static Document* ToDocument(Edit& edit) { return edit.EditDataToQenData(); }
  static void ToText(qenzor::CStdioFile& file, Document& document) {
    qenzor::CQenTextConverter().ConvertChunkToText(file, document, 0);
  }
  static Edit* FromText(const std::string& path) {
    return qenzor::CQenTextConverter().ConvertTextToQenEdit(path);
  }
  static bool HasRoot(const Document& document) { return document.MapData != nullptr; }
};

struct ZorKind {
  static constexpr BinaryKind kKind = BinaryKind::kZor;
  static constexpr const char* kRoot = "Zor";
  using Document = qenzor::CZor;
  using Edit = qenzor::CZorEdit;

  static void ToEdit(Document& document, Edit& edit) { edit.ZorDataToEditData(&document); }
  static Document* ToDocument(Edit& edit) { return edit.EditDataToZorData(); }
  static void ToText(qenzor::CStdioFile& file, Document& document) {
    qenzor::CZorTextConverter().ConvertChunkToText(file, document, 0);
  }
  static Edit* FromText(const std::string& path) {
    return qenzor::CZorTextConverter().ConvertTextToZorEdit(path);
  }
  static bool HasRoot(const Document& /*document*/) { return true; }
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

/// The path of the input as a file; what can be read only once gets a file without a name.
class CXmlPath {
 public:
  explicit CXmlPath(const Input& input);

  const std::string& Get() const { return m_path; }

 private:
  std::string m_path;
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> m_copy{nullptr, &std::fclose};
};

/// Why XML does not load, with line and column; for text that loads, that its root is another.
std::string DescribeXmlError(const std::string& path);

template <class Kind>
std::unique_ptr<typename Kind::Edit> ReadXmlEdit(const Input& input) {
  const CXmlPath path(input);
  std::unique_ptr<typename Kind::Edit> edit(Kind::FromText(path.Get()));
  if (edit == nullptr) throw CFailure(input.Name, DescribeXmlError(path.Get()));
  return edit;
}

/// The document that an edit form stands for. Throws CFailure for one that cannot be stored.
template <class Kind>
std::unique_ptr<typename Kind::Document> StoreEdit(const Input& input, typename Kind::Edit& edit) {
  if (const std::string limit = FindUnstorable(edit); !limit.empty())
    throw CFailure(input.Name, limit);
  std::unique_ptr<typename Kind::Document> document(Kind::ToDocument(edit));
  if (document == nullptr) throw CFailure(input.Name, "out of memory");
  return document;
}

}  // namespace tool
