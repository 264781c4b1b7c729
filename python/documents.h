#pragma once

// The two documents in their two forms, under the same names.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "node.h"
#include "qenzor/check/check.h"
#include "qenzor/core/result.h"
#include "qenzor/document.h"
#include "qenzor/qen_document.h"
#include "qenzor/zor_document.h"

namespace qenzor::python {

/// What all documents and their edit forms do. What takes long is called without the interpreter's
/// lock.
class Document {
 public:
  virtual ~Document() = default;
  Document() = default;
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;

  virtual BinaryKind GetKind() const = 0;
  virtual Store& GetStore() = 0;
  virtual const ClassInfo& GetRootClass() const = 0;
  virtual Object GetInfo() = 0;

  virtual Result<void> Save(const CString& path, const SaveOptions& options) = 0;
  virtual Result<void> SaveXml(const CString& path, const SaveOptions& options) = 0;
  virtual Result<std::vector<std::uint8_t>> ToBytes() = 0;
  /// A document of the same form, of the other, or what the other cannot hold. Neither is known to
  /// Python yet.
  virtual Result<Document> Clone() = 0;
  virtual Result<Document> Convert() = 0;
  virtual bool Equals(const Document& other) const = 0;

  /// The map project in its chunk form, or the draw data; null for all others.
  virtual const CQen* GetQen() const { return nullptr; }
  virtual const CZor* GetZor() const { return nullptr; }
  /// Of an edit form: destroys what it holds, and all that Python knows of it raises from now on.
  virtual void Close() {}
};

/// Where a document comes from: a file, or bytes.
struct Source {
  std::optional<CString> Path;
  std::span<const std::uint8_t> Bytes;
};

struct ReadChoice {
  std::optional<BinaryKind> Kind;  ///< else as the content says
  XmlEncoding Encoding = XmlEncoding::kShiftJis;
};

/// Reads a document of either kind, binary or XML.
Result<Document> ReadAny(const Source& source, const ReadChoice& choice);

/// What a source holds: all bytes of a document, and what it is.
struct Content {
  std::vector<std::uint8_t> Bytes;
  BinaryKind Kind = BinaryKind::kQen;
  bool IsXml = false;
};
Result<Content> LoadAny(const Source& source, const ReadChoice& choice);

/// A new edit form.
std::unique_ptr<Document> NewEdit(BinaryKind kind);

/// Raises the Python exception that tells of the failure.
[[noreturn]] void RaiseFailure(const Failure& failure, bool writing);

}  // namespace qenzor::python
