#include "losses.h"

#include <array>
#include <string_view>
#include <vector>

namespace tool {

namespace {

/// What is counted, under the name of its finding, and what one and several are called.
struct Loss {
  std::string_view Name;
  const char* One;
  const char* Many;
};

constexpr std::array<Loss, 5> kLosses{
    {{"roundtrip-link", "link", "links"},
     {"roundtrip-character", "character", "characters"},
     {"roundtrip-space", "text's white space", "texts' white space"},
     {"roundtrip-number", "number's decimals", "numbers' decimals"},
     {"roundtrip-file-info", "field of the file info", "fields of the file info"}}};

class CDeafSink : public qenzor::CFindingSink {
 public:
  bool Take(const qenzor::Finding& /*finding*/) override { return true; }
};

}  // namespace

std::string DescribeLosses(const Input& input, BinaryKind kind, qenzor::XmlEncoding encoding) {
  qenzor::CheckOptions options;
  options.RoundTrip = true;
  options.MaxDetails = 0;
  options.Encoding = encoding;
  // To find what has no name of its own, the document would go through XML once more.
  options.Skipped.insert(qenzor::FindFindingKind("roundtrip-other")->Code);
  const char* const asked = kind == BinaryKind::kQen ? "qen" : "zor";
  const Input again = input.IsRegular ? ReadInput(input.Path, asked, Need::kAll) : Input{};
  CDeafSink nobody;
  const qenzor::CCheckCounts counts =
      qenzor::CheckBinary(input.IsRegular ? again.Bytes : input.Bytes, kind, options, nobody);
  std::vector<std::string> parts;
  std::uint64_t all = 0;
  for (const Loss& loss : kLosses) {
    const std::uint64_t count = counts.Of(*qenzor::FindFindingKind(loss.Name));
    all += count;
    if (count > 0)
      parts.push_back(std::to_string(count) + ' ' + (count == 1 ? loss.One : loss.Many));
  }
  std::string text;
  for (std::size_t i = 0; i < parts.size(); ++i)
    text += (i == 0 ? "" : i + 1 == parts.size() ? " and " : ", ") + parts[i];
  return text.empty() ? text
                      : text + (all == 1 ? " is" : " are") +
                            " not in the XML form (check --roundtrip tells where)";
}

}  // namespace tool
