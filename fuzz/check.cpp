// Checks of XML text and of bytes, beside the reading of both: what is refused there is an error
// here.

#include "qenzor/check/check.h"

#include <string_view>
#include <vector>

#include "qenzor/qen_xml.h"
#include "qenzor/storable.h"
#include "qenzor/zor_xml.h"
#include "support/require.h"

namespace {

using namespace qenzor;  // NOLINT(google-build-using-namespace): it is about all of it

/// Looks at all that a finding says.
class CReadingSink : public CFindingSink {
 public:
  bool Take(const Finding& finding) override {
    fuzz::Require(!finding.Reason.empty() && finding.Offset <= m_size);
    fuzz::Require(RenderPath(finding.Path).size() < std::size_t{1} << 16U);
    return true;
  }
  explicit CReadingSink(std::size_t size) : m_size(size) {}

 private:
  std::size_t m_size;
};

void Check(std::string_view text, std::span<const std::uint8_t> bytes, XmlEncoding encoding) {
  CheckOptions options;
  options.Encoding = encoding;
  XmlReadOptions reading;
  reading.Encoding = encoding;
  CReadingSink sink(bytes.size());
  const auto is_sound = [](const CCheckCounts& counts) { return counts.Of(Severity::kError) == 0; };
  const auto qen = ParseQenXml(text, reading);
  const bool is_map = qen && !FindUnstorable(*qen).has_value();
  fuzz::Require(!is_sound(CheckXml(text, BinaryKind::kQen, options, sink)) || is_map);
  const auto zor = ParseZorXml(text, reading);
  const bool is_drawing = zor && !FindUnstorable(*zor).has_value();
  fuzz::Require(!is_sound(CheckXml(text, BinaryKind::kZor, options, sink)) || is_drawing);
  options.RoundTrip = true;
  const auto size = static_cast<std::uint32_t>(bytes.size());
  fuzz::Require(is_sound(CheckBinary(bytes, BinaryKind::kQen, options, sink)) ==
                CQen().Read(bytes.data(), size));
  fuzz::Require(is_sound(CheckBinary(bytes, BinaryKind::kZor, options, sink)) ==
                CZor().Read(bytes.data(), size));
}

}  // namespace

/// The first byte is the encoding.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  // Blocks of the exact size, so that a byte too far is seen.
  const std::vector<std::uint8_t> bytes(data + 1, data + size);
  const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  Check(text, bytes, static_cast<XmlEncoding>(data[0] % 3));
  return 0;
}
