#pragma once

#include <cstdint>

#include "qenzor/check/finding.h"
#include "qenzor/check/schema_impl.h"

namespace qenzor::check {

/// Hears what a document holds, in the order of its file, whatever form that has. What reading
/// drops is left out. Offsets are those of the file.
class CContentListener {
 public:
  virtual ~CContentListener() = default;
  /// A chunk begins. Its own number, if it bears one, is not known yet.
  virtual void Open(const PathNode& /*node*/, const ClassSchema& /*schema*/,
                    std::uint64_t /*offset*/) {}
  /// An integer field, or array element, that has a role.
  virtual void Value(const PathNode& /*node*/, const FieldSchema& /*field*/,
                     std::uint64_t /*value*/, std::uint64_t /*offset*/) {}
  /// A chunk ends that has kept so many elements or sub-chunks.
  virtual void Close(const PathNode& /*node*/, const ClassSchema& /*schema*/,
                     std::uint64_t /*kept*/) {}
};

}  // namespace qenzor::check
