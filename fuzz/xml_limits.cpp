// The walk that keeps text from the XML parser, held against the parser: what it lets through never
// makes a tree beyond the limits, and what it refuses would have made one, or none at all.

#include <tinyxml.h>

#include <algorithm>
#include <array>
#include <string>

#include "qenzor/text/xml_file.h"
#include "support/require.h"
#include "support/xml_hooks.h"

namespace {

struct Extent {
  std::uint32_t Depth = 0;
  std::uint32_t Attributes = 0;
};

/// Walks without recursion: the tree may be deeper than the stack.
Extent ExtentOf(TiXmlNode& document) {
  Extent extent;
  std::uint32_t depth = 0;
  for (TiXmlNode* node = document.FirstChild(); node != nullptr;) {
    if (const TiXmlElement* element = node->ToElement(); element != nullptr) {
      extent.Depth = std::max(extent.Depth, depth + 1);
      std::uint32_t attributes = 0;
      for (auto* next = element->FirstAttribute(); next != nullptr; next = next->Next())
        ++attributes;
      extent.Attributes = std::max(extent.Attributes, attributes);
    }
    if (node->FirstChild() != nullptr) {
      node = node->FirstChild();
      ++depth;
      continue;
    }
    while (node != &document && node->NextSibling() == nullptr) {
      node = node->Parent();
      --depth;
    }
    node = node == &document ? nullptr : node->NextSibling();
  }
  return extent;
}

/// A front, a piece that comes again and again, and an end: depth in a few bytes of input. How
/// often stands in the second byte, above the size of the piece: mostly once, so that most runs are
/// short, and more often than elements nest or attributes stand side by side.
std::string TextOf(const std::uint8_t* data, std::size_t size) {
  constexpr std::array<std::size_t, 8> kRepeats{1, 300, 1, 1, 1, 2, 70, 1};
  if (size < 2) return {};
  const std::string rest(reinterpret_cast<const char*>(data) + 2, size - 2);
  const std::size_t front = std::min<std::size_t>(data[0], rest.size());
  const std::size_t piece = std::min<std::size_t>(data[1] % 32, rest.size() - front);
  std::string text = rest.substr(0, front);
  for (std::size_t i = 0; i < kRepeats[data[1] / 32]; ++i) text += rest.substr(front, piece);
  return text + rest.substr(front + piece);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = TextOf(data, size);
  if (text.find('\0') != std::string::npos) {
    fuzz::Require(!qenzor::IsWithinXmlLimits(text));
    return 0;
  }
  const auto error = qenzor::FindXmlLimitError(text);
  TiXmlDocument xml;
  xml.Parse((text + std::string(4, '\0')).c_str(), nullptr, TIXML_DEFAULT_ENCODING);
  const Extent extent = ExtentOf(xml);
  const bool within =
      extent.Depth <= qenzor::kMaxXmlDepth && extent.Attributes <= qenzor::kMaxXmlAttributes;
  if (!error.has_value())
    fuzz::Require(within);
  else
    fuzz::Require(!within || xml.Error() || error->Reason.find("entity") != std::string::npos);
  return 0;
}
