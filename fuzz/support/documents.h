#pragma once

// What the document targets do with a document that has been read.

#include <cstdint>
#include <memory>
#include <vector>

#include "qenzor/qen/qen.h"
#include "qenzor/zor/zor.h"
#include "support/require.h"

namespace fuzz {

struct Qen {
  using Document = qenzor::CQen;
  static std::unique_ptr<Document> ThroughEdit(Document& document) {
    qenzor::CQenEdit edit;
    edit.QenDataToEditData(&document);
    return std::unique_ptr<Document>(edit.EditDataToQenData());
  }
  static void ToText(qenzor::CStdioFile& file, Document& document) {
    qenzor::CQenTextConverter().ConvertChunkToText(file, document, 0);
  }
};

struct Zor {
  using Document = qenzor::CZor;
  static std::unique_ptr<Document> ThroughEdit(Document& document) {
    qenzor::CZorEdit edit;
    edit.ZorDataToEditData(&document);
    return std::unique_ptr<Document>(edit.EditDataToZorData());
  }
  static void ToText(qenzor::CStdioFile& file, Document& document) {
    qenzor::CZorTextConverter().ConvertChunkToText(file, document, 0);
  }
};

template <class Document>
std::vector<std::uint8_t> Bytes(Document& document) {
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

/// A document that reads can be written, and what is written reads to the same again, however it is
/// copied on the way. Keys that share a bucket of the keyed set change their order with each
/// passage, so that every second one gives the same bytes.
template <class Kind>
void TakeRound(typename Kind::Document& document) {
  using Document = typename Kind::Document;
  const std::vector<std::uint8_t> written = Bytes(document);
  const std::vector<std::uint8_t> once = Bytes(*ReadBack<Document>(written));
  Require(once.size() == written.size() && Bytes(*ReadBack<Document>(once)) == written);

  const std::unique_ptr<Document> clone(document.Clone());
  Require(clone != nullptr && Bytes(*clone).size() == written.size());
  const std::unique_ptr<Document> twin(clone->Clone());
  Require(twin != nullptr && Bytes(*twin) == written);

  // The edit form narrows names and gives every draw attribute an index set; beyond the first
  // passage nothing changes but the order within buckets.
  const std::unique_ptr<Document> first = Kind::ThroughEdit(document);
  Require(first != nullptr);
  const std::unique_ptr<Document> second = Kind::ThroughEdit(*first);
  Require(second != nullptr);
  const std::unique_ptr<Document> third = Kind::ThroughEdit(*second);
  Require(third != nullptr && Bytes(*third) == Bytes(*first));

  qenzor::CMemFile sink;
  qenzor::CStdioFile text(sink);
  Kind::ToText(text, document);
  text.Close();
  Require(!sink.GetBytes().empty());
}

}  // namespace fuzz
