#include <algorithm>
#include <array>

#include "qenzor/check/xml_text_impl.h"
#include "qenzor/text/xml_window_impl.h"

namespace qenzor::check {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::array<std::string_view, 9> kCodePageNames{"shift_jis", "shift-jis",  "sjis",
                                                         "x-sjis",    "cp932",      "windows-31j",
                                                         "ms932",     "csshiftjis", "ms_kanji"};
constexpr std::array<std::string_view, 2> kUtf8Names{"utf-8", "utf8"};

/// The encoding that the declaration at the front names; empty when there is none.
std::string_view DeclaredEncoding(std::string_view text) {
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  if (!text.starts_with("<?xml")) return {};
  const std::string_view declaration = text.substr(0, text.find('>'));
  constexpr std::string_view kWord = "encoding";
  std::size_t at = declaration.find(kWord);
  if (at == std::string_view::npos) return {};
  at = declaration.find_first_of("\"'", at + kWord.size());
  if (at == std::string_view::npos) return {};
  const std::size_t end = declaration.find(declaration[at], at + 1);
  return end == std::string_view::npos ? std::string_view()
                                       : declaration.substr(at + 1, end - at - 1);
}

bool IsOneOf(std::string_view name, std::span<const std::string_view> names) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
  return std::ranges::any_of(
      names, [&](std::string_view known) { return std::ranges::equal(name, known, {}, lower); });
}

/// Whether all of the text is UTF-8, with characters beyond ASCII.
bool LooksUtf8(std::string_view text) {
  CUtf8Watch watch;
  watch.Take(text);
  return watch.IsUtf8();
}

}  // namespace

void CheckXmlEncoding(std::string_view text, XmlEncoding encoding, CReporter& reporter) {
  const std::string_view declared = DeclaredEncoding(text);
  const bool is_utf8 =
      encoding == XmlEncoding::kUtf8 ||
      (encoding == XmlEncoding::kAuto &&
       (text.starts_with(kByteOrderMark) || declared.empty() || IsOneOf(declared, kUtf8Names)));
  const char* const read_as = is_utf8 ? "UTF-8" : "Shift_JIS (code page 932)";
  if (!declared.empty() &&
      !(is_utf8 ? IsOneOf(declared, kUtf8Names) : IsOneOf(declared, kCodePageNames)))
    reporter.Report(Code::kXmlEncoding, static_cast<std::uint64_t>(declared.data() - text.data()),
                    nullptr, [&] {
                      return "the declaration names " + CString(declared) +
                             ", but the text is read as " + read_as;
                    });
  if (is_utf8 || !LooksUtf8(text)) return;
  const auto* const beyond =
      std::ranges::find_if(text, [](char c) { return static_cast<unsigned char>(c) > 0x7F; });
  reporter.Report(Code::kXmlLooksUtf8, static_cast<std::uint64_t>(beyond - text.begin()), nullptr,
                  [&] { return CString("the text looks like UTF-8, but is read as ") + read_as; });
}

}  // namespace qenzor::check
