#pragma once

#include <string>

namespace qenzor {
class CQenEdit;
class CZorEdit;
}  // namespace qenzor

namespace tool {

/// The first object whose text or list is too long for its count in a file, by its path, with what
/// is too long; empty when the document can be stored.
std::string FindUnstorable(const qenzor::CQenEdit& edit);
std::string FindUnstorable(const qenzor::CZorEdit& edit);

}  // namespace tool
