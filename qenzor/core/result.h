#pragma once

#include <cassert>
#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <utility>

#include "qenzor/platform/export.h"
#include "qenzor/platform/strings.h"

namespace qenzor {

enum class FailureKind : std::uint8_t {
  kCannotOpen,       ///< the file is not there, or may not be read
  kCannotRead,       ///< the device or the pipe failed while it was read
  kNotSuchDocument,  ///< the content is not that of a document of this kind
  kDamaged,          ///< the content begins as such a document does and breaks off or goes wrong
  kTooLarge,         ///< beyond what the format can hold, or a limit that the caller set
  kCancelled,        ///< the caller asked to stop
  kOutOfMemory,
  kCannotStore,  ///< the document holds what its file format has no room for
  kCannotWrite,  ///< the file system does not take the file
  kWrongUsage,   ///< what the caller asked for has no meaning
};

/// Why something failed, and where. What does not apply is empty.
struct QENZOR_EXPORT Failure {
  FailureKind Kind = FailureKind::kDamaged;
  CString Path;                         ///< the file, as the caller named it
  std::optional<std::uint64_t> Offset;  ///< in bytes from the front of a binary document
  std::uint32_t Line = 0;               ///< of XML text, from 1; 0 when no line is meant
  std::uint32_t Column = 0;             ///< in bytes, from 1
  CString ChunkPath;  ///< as "MeshSegmentSet/MeshSegment[0]/LayerSet", positions from 0
  CString Reason;     ///< one sentence without a full stop, in English

  /// All of it in one line, as "a.qen: byte 76: LayerSet/LayerData[1]: truncated: …".
  CString Describe() const;
};

/// A failure as an exception, for those who ask for one: see Result::OrThrow.
class QENZOR_EXPORT CFailureException : public std::runtime_error {
 public:
  /// what() is the failure in one line.
  explicit CFailureException(Failure failure);
  ~CFailureException() override;
  const Failure& GetFailure() const noexcept { return *m_failure; }

 private:
  std::shared_ptr<const Failure> m_failure;  // shared, as copying an exception must not throw
};

/// For want of memory. Nothing is thrown: the path is left out where there is no memory for it.
QENZOR_EXPORT Failure OutOfMemory(const CString& path) noexcept;

/// A new object, owned by this result until it is taken, or the reason why there is none.
template <class T>
class [[nodiscard]] Result {
 public:
  // NOLINTBEGIN(google-explicit-constructor,hicpp-explicit-conversions): functions return either
  Result(std::unique_ptr<T> value) noexcept : m_value(std::move(value)) {
    assert(m_value != nullptr);
  }
  Result(Failure failure) noexcept : m_failure(std::move(failure)) {}
  // NOLINTEND(google-explicit-constructor,hicpp-explicit-conversions)

  explicit operator bool() const noexcept { return m_value != nullptr; }
  /// The object; only where there is one.
  T& operator*() const noexcept {
    assert(m_value != nullptr);
    return *m_value;
  }
  T* operator->() const noexcept { return &**this; }
  /// Hands the object over; null where there is none, and from the second time on.
  [[nodiscard]] std::unique_ptr<T> Take() noexcept { return std::move(m_value); }
  /// The same, but throws CFailureException where there is no object.
  [[nodiscard]] std::unique_ptr<T> OrThrow() {
    if (m_value == nullptr) throw CFailureException{m_failure};
    return Take();
  }
  /// Why there is no object; says nothing where there is one.
  const Failure& GetFailure() const noexcept { return m_failure; }

 private:
  std::unique_ptr<T> m_value;
  Failure m_failure;
};

/// The same for what makes no object.
template <>
class [[nodiscard]] Result<void> {
 public:
  Result() noexcept = default;
  // NOLINTNEXTLINE(google-explicit-constructor,hicpp-explicit-conversions): functions return either
  Result(Failure failure) noexcept : m_failure(std::move(failure)) {}

  explicit operator bool() const noexcept { return !m_failure.has_value(); }
  /// Throws CFailureException after a failure.
  void OrThrow() const {
    if (m_failure.has_value()) throw CFailureException{*m_failure};
  }
  /// Why it failed; only where it did.
  const Failure& GetFailure() const noexcept {
    assert(m_failure.has_value());
    return *m_failure;
  }

 private:
  std::optional<Failure> m_failure;
};

}  // namespace qenzor
