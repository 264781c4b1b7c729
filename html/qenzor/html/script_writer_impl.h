#pragma once

#include <string>
#include <string_view>

#include "qenzor/platform/file.h"

namespace qenzor {

/// Writes a page. What is put as JSON cannot end the script that it stands in, whatever it holds.
class CScriptWriter {
 public:
  explicit CScriptWriter(CFile& file) : m_file(file) {}

  void PutRaw(std::string_view text);
  /// JSON, in whose strings alone the characters can occur that would be markup, or end a line of a
  /// script.
  void PutJson(std::string_view json);
  /// Text of an HTML element.
  void PutText(std::string_view text);
  /// Hands on what is held back. Throws CFileException, as all others do, when the file fails.
  void Flush();

 private:
  CFile& m_file;
  std::string m_held;
};

}  // namespace qenzor
