#pragma once

// What the document targets do with a document that has been read.

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "qenzor/qen_xml.h"
#include "qenzor/zor_xml.h"
#include "support/chunk_tree.h"
#include "support/require.h"

namespace fuzz {

struct Qen {
  using Document = qenzor::CQen;
  using Edit = qenzor::CQenEdit;
  static void FillEdit(Edit& edit, Document& document) { edit.QenDataToEditData(&document); }
  static Document* ToDocument(Edit& edit) { return edit.EditDataToQenData(); }
  static void ToText(qenzor::CStdioFile& file, Document& document) {
    qenzor::CQenTextConverter().ConvertChunkToText(file, document, 0);
  }
  static Edit* FromText(const qenzor::CString& path) {
    return qenzor::CQenTextConverter().ConvertTextToQenEdit(path);
  }
  static auto LoadXml(std::string_view text, const qenzor::XmlReadOptions& options) {
    return qenzor::ParseQenXml(text, options);
  }
  static auto LoadXml(const qenzor::CString& path, const qenzor::XmlReadOptions& options) {
    return qenzor::ReadQenXml(path, options);
  }
};

struct Zor {
  using Document = qenzor::CZor;
  using Edit = qenzor::CZorEdit;
  static void FillEdit(Edit& edit, Document& document) { edit.ZorDataToEditData(&document); }
  static Document* ToDocument(Edit& edit) { return edit.EditDataToZorData(); }
  static void ToText(qenzor::CStdioFile& file, Document& document) {
    qenzor::CZorTextConverter().ConvertChunkToText(file, document, 0);
  }
  static Edit* FromText(const qenzor::CString& path) {
    return qenzor::CZorTextConverter().ConvertTextToZorEdit(path);
  }
  static auto LoadXml(std::string_view text, const qenzor::XmlReadOptions& options) {
    return qenzor::ParseZorXml(text, options);
  }
  static auto LoadXml(const qenzor::CString& path, const qenzor::XmlReadOptions& options) {
    return qenzor::ReadZorXml(path, options);
  }
};

/// A number of the input by which a run chooses what to do, so that it does the same every time.
inline std::uint32_t ChoiceOf(std::span<const std::uint8_t> input) {
  std::uint32_t hash = 2166136261U;  // FNV-1a
  for (const std::uint8_t byte : input) hash = (hash ^ byte) * 16777619U;
  return hash >> 16U ^ hash;
}

/// Calls f with the kind that the bytes would be a document of, by the id of the root chunk; where
/// that is gone, one bit decides.
template <class F>
void WithKindOf(std::span<const std::uint8_t> input, F&& f) {
  const auto has_root = [input](std::size_t offset, std::uint32_t id) {
    return input.size() >= offset + 4 && GetNumber(input, offset, 4) == id;
  };
  const bool is_map = has_root(kQenInfoSize, qenzor::CQenMapData::kChunkId);
  const bool is_drawing = has_root(kZorInfoSize, qenzor::CZorDrawData::kChunkId);
  if (is_drawing == is_map ? !input.empty() && input.front() % 2 == 0 : is_drawing)
    f(Zor{});
  else
    f(Qen{});
}

template <class Document>
std::vector<std::uint8_t> BytesOf(Document& document) {
  qenzor::CMemFile file;
  Require(document.Write(&file));
  return file.GetBytes();
}

template <class Document>
std::unique_ptr<Document> ReadBack(const std::vector<std::uint8_t>& bytes) {
  auto document = std::make_unique<Document>();
  Require(document->Read(bytes.data(), static_cast<std::uint32_t>(bytes.size())));
  return document;
}

template <class Kind>
std::unique_ptr<typename Kind::Document> ThroughEdit(typename Kind::Document& document) {
  typename Kind::Edit edit;
  Kind::FillEdit(edit, document);
  std::unique_ptr<typename Kind::Document> again(Kind::ToDocument(edit));
  Require(again != nullptr);
  return again;
}

// The passages. Keys that share a bucket of the keyed set change their order with each, so that
// every second one gives the same bytes.

/// What is written reads to the same again.
template <class Document>
void TakeThroughBytes(Document& document) {
  const std::vector<std::uint8_t> written = BytesOf(document);
  const std::vector<std::uint8_t> once = BytesOf(*ReadBack<Document>(written));
  Require(once.size() == written.size());
  if (once != written) Require(BytesOf(*ReadBack<Document>(once)) == written);
}

template <class Document>
void TakeThroughClones(Document& document) {
  const std::unique_ptr<Document> clone(document.Clone());
  Require(clone != nullptr);
  const std::unique_ptr<Document> twin(clone->Clone());
  Require(twin != nullptr && BytesOf(*twin) == BytesOf(document));
}

/// The edit form narrows names and gives every draw attribute an index set; beyond the first
/// passage nothing changes but the order within buckets.
template <class Kind>
void TakeThroughEdits(typename Kind::Document& document) {
  const auto first = ThroughEdit<Kind>(document);
  const auto second = ThroughEdit<Kind>(*first);
  const auto third = ThroughEdit<Kind>(*second);
  Require(BytesOf(*third) == BytesOf(*first));
}

template <class Kind>
std::vector<std::uint8_t> Text(typename Kind::Document& document) {
  qenzor::CMemFile sink;
  qenzor::CStdioFile text(sink);
  Kind::ToText(text, document);
  text.Close();
  Require(!sink.GetBytes().empty());
  return sink.GetBytes();
}

/// One passage or none, as the choice says: what one input spares another one takes.
template <class Kind>
void TakePassage(typename Kind::Document& document, std::uint32_t choice) {
  switch (choice % 32) {
    case 0:
      Text<Kind>(document);
      break;
    case 1:
    case 2:
      TakeThroughEdits<Kind>(document);
      break;
    case 3:
    case 4:
      TakeThroughClones(document);
      break;
    case 5:
    case 6:
    case 7:
    case 8:
      TakeThroughBytes(document);
      break;
    default:
      break;
  }
}

}  // namespace fuzz
