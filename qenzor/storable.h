#pragma once

#include <optional>

#include "qenzor/platform/export.h"
#include "qenzor/platform/strings.h"

namespace qenzor {

class CQen;
class CQenEdit;
class CZor;
class CZorEdit;

/// What a document is to be stored as. Fewer things limit XML: its coordinates have 32 bits and its
/// texts no length, but an edit form's lists pass through counts all the same.
enum class StoredForm { kBinary, kXml };

/// Something that a document holds and would silently lose by being stored.
struct Unstorable {
  CString ChunkPath;  ///< as "MeshSegmentSet/MeshSegment[0]/LayerSet", positions from 0
  CString Reason;     ///< one sentence without a full stop, in English
};

/// The first thing for which the form has no room: a text, a list or a chunk too long for its
/// count, a coordinate beyond 16 bits, a text that holds a NUL, at which reading ends it, or a map
/// without map data. Nothing when all of the document will be there when it is read again. Takes
/// time in proportion to the content. Objects of classes that are not the library's are passed
/// over.
[[nodiscard]] QENZOR_EXPORT std::optional<Unstorable> FindUnstorable(
    const CQen& document, StoredForm form = StoredForm::kBinary);
[[nodiscard]] QENZOR_EXPORT std::optional<Unstorable> FindUnstorable(
    const CQenEdit& edit, StoredForm form = StoredForm::kBinary);
[[nodiscard]] QENZOR_EXPORT std::optional<Unstorable> FindUnstorable(
    const CZor& document, StoredForm form = StoredForm::kBinary);
[[nodiscard]] QENZOR_EXPORT std::optional<Unstorable> FindUnstorable(
    const CZorEdit& edit, StoredForm form = StoredForm::kBinary);

}  // namespace qenzor
