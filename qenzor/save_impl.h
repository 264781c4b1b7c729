#pragma once

// How documents of either kind are saved. Kind names what differs.

#include <memory>
#include <new>
#include <string>
#include <type_traits>
#include <utility>

#include "qenzor/core/fields.h"
#include "qenzor/core/result.h"
#include "qenzor/document.h"
#include "qenzor/platform/file_replacement.h"
#include "qenzor/storable.h"
#include "qenzor/text/xml_memory_impl.h"

namespace qenzor {

inline Failure SavingFailure(FailureKind kind, const CString& path, CString reason) {
  Failure failure;
  failure.Kind = kind;
  failure.Path = path;
  failure.Reason = std::move(reason);
  return failure;
}

/// Whether all of what the object holds can be stored; else why not.
template <class Object>
Result<void> Storable(const Object& object, const CString& path, StoredForm form) {
  std::optional<Unstorable> found = FindUnstorable(object, form);
  if (!found.has_value()) return {};
  Failure failure = SavingFailure(FailureKind::kCannotStore, path, std::move(found->Reason));
  failure.ChunkPath = std::move(found->ChunkPath);
  return failure;
}

/// Has write fill the file that takes the path's place. What write gives counts for nothing once
/// the file has not taken something.
template <class Write>
Result<void> ReplaceFile(const CString& path, const SaveOptions& options, Write&& write) {
  CFileReplacement file;
  bool done = file.Open(path);
  try {
    done = done && write(file.GetFile()) && file.Finish(options.Sync);
  } catch (const CFileException&) {
    done = false;
  }
  if (done) return {};
  return SavingFailure(FailureKind::kCannotWrite, path, file.GetError());
}

/// Writes the document as XML at the file's position.
template <class Kind>
Result<void> WriteXml(CFile& file, typename Kind::Document& document, XmlEncoding encoding) {
  return WriteXmlText(file, encoding, [&](CStdioFile& text) { Kind::WriteXml(text, document); });
}

template <class Kind>
Result<std::string> ToXml(typename Kind::Document& document, XmlEncoding encoding) {
  return XmlTextOf([&](CFile& file) { return WriteXml<Kind>(file, document, encoding); });
}

template <class Kind>
Result<void> WriteDocument(typename Kind::Document& document, const CString& path, StoredForm form,
                           const SaveOptions& options) {
  return ReplaceFile(path, options, [&](CFile& file) {
    if (form == StoredForm::kXml) {
      const auto written = WriteXml<Kind>(file, document, options.Encoding);
      if (!written && written.GetFailure().Kind == FailureKind::kOutOfMemory)
        throw std::bad_alloc();
      return static_cast<bool>(written);
    }
    // Sets do not look at what became of their elements: all is there when as many bytes are.
    return document.Write(&file) &&
           file.GetPosition() ==
               std::uint64_t{PackedSize<typename Kind::Info>()} + Kind::RootSizeOf(document);
  });
}

template <class Kind>
Result<void> SaveDocument(typename Kind::Document& document, const CString& path, StoredForm form,
                          const SaveOptions& options) try {
  if (auto storable = Storable(document, path, form); !storable) return storable;
  return WriteDocument<Kind>(document, path, form, options);
} catch (const std::bad_alloc&) {
  return OutOfMemory(path);
}

/// An edit form that is handed over is given up on the way.
template <class Kind, class Edit>
Result<void> SaveEdit(Edit&& edit, const CString& path, StoredForm form,
                      const SaveOptions& options) try {
  if (auto storable = Storable(edit, path, form); !storable) return storable;
  const std::unique_ptr<typename Kind::Document> document(
      std::is_lvalue_reference_v<Edit> ? Kind::Convert(edit) : Kind::Take(edit));
  if (document == nullptr) return OutOfMemory(path);
  return WriteDocument<Kind>(*document, path, form, options);
} catch (const std::bad_alloc&) {
  return OutOfMemory(path);
}

}  // namespace qenzor
