#include "qenzor/text/escape_impl.h"
#include "qenzor/text/xml_writer_impl.h"

namespace qenzor {

void CXmlWriter::TextElement(std::string_view tag, std::string_view value) {
  constexpr std::size_t kStep = 2048;
  static_assert(kStep * kMaxEscapeLength <= CStdioFile::kMaxBlock);
  Put(tag.size() + 2, [&](CTextCursor& out) { out << '<' << tag << '>'; });
  for (; !value.empty(); value.remove_prefix(std::min(kStep, value.size()))) {
    const std::string_view part = value.substr(0, kStep);
    Put(part.size() * kMaxEscapeLength, [&](CTextCursor& out) {
      for (const char c : part) {
        const std::string_view escape = EscapeOf(static_cast<unsigned char>(c));
        if (escape.empty())
          out << c;
        else
          out << escape;
      }
    });
  }
  Put(tag.size() + 3, [&](CTextCursor& out) { out << "</" << tag << '>'; });
}

}  // namespace qenzor
