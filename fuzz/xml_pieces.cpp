// XML read in pieces beside XML read as a whole: the same document, or the same refusal, whatever
// the sizes of window and pieces.

#include <string_view>

#include "support/require.h"
#include "support/xml_hooks.h"
#include "tests/support/xml_readings.h"

namespace {

using qenzor::XmlPieceSizes;

template <class Xml>
void RequireSame(std::string_view text, const XmlPieceSizes& sizes) {
  using namespace qenzor::testing;
  fuzz::Require(ReadInPieces<Xml>(text, sizes) == ReadWhole<Xml>(text));
}

}  // namespace

/// The first two bytes are the sizes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  const XmlPieceSizes sizes{data[0] % 64U + 1U, data[1] * 2U};
  const std::string_view text(reinterpret_cast<const char*>(data) + 2, size - 2);
  RequireSame<qenzor::testing::QenXml>(text, sizes);
  RequireSame<qenzor::testing::ZorXml>(text, sizes);
  return 0;
}
