#include "qenzor/html/script_writer_impl.h"

namespace qenzor {

namespace {

constexpr std::size_t kBlock = 65536;

}  // namespace

void CScriptWriter::PutRaw(std::string_view text) {
  m_held += text;
  if (m_held.size() >= kBlock) Flush();
}

void CScriptWriter::PutJson(std::string_view json) {
  constexpr std::string_view kSeparator = "\xE2\x80";  // as U+2028 and U+2029 begin
  for (std::size_t i = 0; i < json.size(); ++i) {
    const char c = json[i];
    const char last = i + 2 < json.size() ? json[i + 2] : '\0';
    if (c == '<') {
      m_held += "\\u003c";
    } else if (c == '>') {
      m_held += "\\u003e";
    } else if (c == '&') {
      m_held += "\\u0026";
    } else if (json.substr(i, 2) == kSeparator && (last == '\xA8' || last == '\xA9')) {
      m_held += last == '\xA8' ? "\\u2028" : "\\u2029";
      i += 2;
    } else {
      m_held += c;
    }
  }
  PutRaw("");
}

void CScriptWriter::PutText(std::string_view text) {
  for (const char c : text) {
    if (c == '<')
      m_held += "&lt;";
    else if (c == '&')
      m_held += "&amp;";
    else
      m_held += c;
  }
  PutRaw("");
}

void CScriptWriter::Flush() {
  m_file.Write(m_held.data(), static_cast<std::uint32_t>(m_held.size()));
  m_held.clear();
}

}  // namespace qenzor
