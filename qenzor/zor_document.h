#pragma once

#include "qenzor/core/result.h"
#include "qenzor/document.h"
#include "qenzor/zor/zor.h"
#include "qenzor/zor_xml.h"

namespace qenzor {

// Reading draw data. What is accepted, and what comes of it, is as with CZor::Read, but that a root
// chunk of another id is refused. A failure tells its kind, the byte, the chunks around it and the
// reason. Nothing is thrown but what a caller's file throws while it is read.

/// The document in the file at a path, in bytes, or in an open file at its position, which is
/// behind the document then; offsets count from there.
QENZOR_EXPORT Result<CZor> ReadZor(const CDocumentSource& source, const ReadOptions& options = {});
/// The same as the editable form.
QENZOR_EXPORT Result<CZorEdit> ReadZorEdit(const CDocumentSource& source,
                                           const ReadOptions& options = {});

// Saving draw data. Nothing is stored that would be lost (see qenzor/storable.h), and the file is
// replaced as a whole (see qenzor/platform/file_replacement.h): after a failure it is as it was.
// The failures are kCannotStore, with the place in the document, kCannotWrite and kOutOfMemory.

/// Saves the document, whose data sizes are made right, as the file at the path.
QENZOR_EXPORT Result<void> SaveZor(CZor& document, const CString& path,
                                   const SaveOptions& options = {});
/// Saves the document that an edit form, which is only read, stands for.
QENZOR_EXPORT Result<void> SaveZor(CZorEdit& edit, const CString& path,
                                   const SaveOptions& options = {});
/// The same for an edit form that is given up, so that both forms are not in memory together. It is
/// as it was where it cannot be stored.
QENZOR_EXPORT Result<void> SaveZor(CZorEdit&& edit, const CString& path,
                                   const SaveOptions& options = {});

/// The same as XML. The document is only read.
QENZOR_EXPORT Result<void> SaveZorXml(CZor& document, const CString& path,
                                      const SaveOptions& options = {});
QENZOR_EXPORT Result<void> SaveZorXml(CZorEdit& edit, const CString& path,
                                      const SaveOptions& options = {});
QENZOR_EXPORT Result<void> SaveZorXml(CZorEdit&& edit, const CString& path,
                                      const SaveOptions& options = {});

}  // namespace qenzor
