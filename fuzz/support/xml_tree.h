#pragma once

// XML text as a tree, well-formed or not: what a mutator changes. Nothing is lost on the way to the
// tree and back but white space inside of tags.

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace fuzz {

struct XmlNode {
  /// Of an element; empty for anything else, which stands in Raw as it is: text, a comment, CDATA,
  /// a declaration.
  std::string Tag;
  std::string Raw;
  std::vector<std::pair<std::string, std::string>> Attributes;
  std::vector<XmlNode> Children;
  enum class End { kTag, kSelf, kNone } Closed = End::kTag;
  char Quote = '"';
};

/// The nodes beside the root and the root.
std::vector<XmlNode> ParseXml(std::string_view text);
std::string WriteXml(const std::vector<XmlNode>& nodes);

}  // namespace fuzz
