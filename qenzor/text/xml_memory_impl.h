#pragma once

// XML text in memory as a file that is read or written.

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <utility>

#include "qenzor/core/result.h"
#include "qenzor/platform/file.h"
#include "qenzor/text/xml_options.h"

namespace qenzor {

inline Failure FailureAtPath(const CString& path, FailureKind kind, const char* reason) try {
  Failure failure;
  failure.Kind = kind;
  failure.Path = path;
  failure.Reason = reason;
  return failure;
} catch (const std::bad_alloc&) {
  return OutOfMemory(path);
}

/// Text of the caller's that is read from front to end.
class CTextView final : public CFile {
 public:
  explicit CTextView(std::string_view text) : m_text(text) {}

  std::uint32_t Read(void* data, std::uint32_t size) override {
    const std::size_t count = std::min<std::size_t>(size, m_text.size() - m_position);
    if (count != 0) std::memcpy(data, m_text.data() + m_position, count);
    m_position += count;
    return static_cast<std::uint32_t>(count);
  }
  std::uint64_t GetLength() const override { return m_text.size(); }
  std::uint64_t GetPosition() const override { return m_position; }

 private:
  std::string_view m_text;
  std::size_t m_position = 0;
};

/// Puts what is written behind a string.
class CStringSink final : public CFile {
 public:
  explicit CStringSink(std::string& text) : m_text(text) {}

  void Write(const void* data, std::uint32_t size) override {
    m_text.append(static_cast<const char*>(data), size);
  }
  void Flush() override {}
  void Close() override {}

 private:
  std::string& m_text;
};

/// Calls write with a text file in that encoding over the file.
template <class Write>
Result<void> WriteXmlText(CFile& file, XmlEncoding encoding, Write&& write) try {
  CStdioFile text(file);
  text.SetEncoding(encoding == XmlEncoding::kUtf8 ? TextEncoding::kUtf8 : TextEncoding::kCodePage);
  write(text);
  text.Close();
  return {};
} catch (const CFileException& error) {
  return FailureAtPath({}, FailureKind::kCannotWrite, error.what());
} catch (const std::bad_alloc&) {
  return OutOfMemory({});
}

/// What write puts into a file.
template <class Write>
Result<std::string> XmlTextOf(Write&& write) try {
  auto text = std::make_unique<std::string>();
  CStringSink sink(*text);
  const Result<void> written = write(sink);
  if (!written) return written.GetFailure();
  return text;
} catch (const std::bad_alloc&) {
  return OutOfMemory({});
}

}  // namespace qenzor
