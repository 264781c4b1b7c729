#include "support/xml_tree.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace fuzz {
namespace {

constexpr int kDeepest = 400;
constexpr std::string_view kSpace = " \t\r\n";

class Parser {
 public:
  explicit Parser(std::string_view text) : m_text(text) {}

  /// Up to the end tag of the open element, which is taken, or to the end of the text.
  std::vector<XmlNode> Nodes(std::string_view open, bool& closed, int depth) {
    std::vector<XmlNode> nodes;
    while (!m_text.empty()) {
      const std::string end = "</" + std::string(open);
      if (!open.empty() && m_text.starts_with(end)) {
        Take(std::min(m_text.find('>'), m_text.size() - 1) + 1);
        closed = true;
        return nodes;
      }
      nodes.push_back(Node(depth));
    }
    return nodes;
  }

 private:
  std::string_view Take(std::size_t size) {
    const std::string_view taken = m_text.substr(0, size);
    m_text.remove_prefix(taken.size());
    return taken;
  }

  /// Through the end mark, or all where there is none.
  std::string_view TakeThrough(std::string_view end) {
    const std::size_t at = m_text.find(end);
    return Take(at == std::string_view::npos ? m_text.size() : at + end.size());
  }

  XmlNode Node(int depth) {
    static constexpr std::array<std::pair<std::string_view, std::string_view>, 4> kMarkup{
        {{"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}, {"<!", ">"}}};
    XmlNode node;
    for (const auto& [begin, end] : kMarkup)
      if (m_text.starts_with(begin)) {
        node.Raw = TakeThrough(end);
        return node;
      }
    const bool is_element = m_text.size() > 1 && m_text[0] == '<' && depth < kDeepest &&
                            std::isalpha(static_cast<unsigned char>(m_text[1])) != 0;
    if (is_element) return Element(depth);
    node.Raw = Take(std::min(m_text.find('<', 1), m_text.size()));
    return node;
  }

  XmlNode Element(int depth) {
    XmlNode node;
    Take(1);
    node.Tag = Take(std::min(m_text.find_first_of(" \t\r\n/>"), m_text.size()));
    while (!m_text.empty() && m_text[0] != '>' && m_text[0] != '/') {
      if (kSpace.find(m_text[0]) != std::string_view::npos)
        Take(1);
      else
        Attribute(node);
    }
    if (Take(1) == "/") {
      node.Closed = XmlNode::End::kSelf;
      if (m_text.starts_with('>')) Take(1);
      return node;
    }
    bool closed = false;
    node.Children = Nodes(node.Tag, closed, depth + 1);
    if (!closed) node.Closed = XmlNode::End::kNone;
    return node;
  }

  void Attribute(XmlNode& node) {
    auto& [name, value] = node.Attributes.emplace_back();
    name =
        Take(std::max<std::size_t>(1, std::min(m_text.find_first_of("= \t\r\n/>"), m_text.size())));
    if (!m_text.starts_with('=')) return;
    Take(1);
    if (m_text.empty() || (m_text[0] != '"' && m_text[0] != '\'')) return;
    node.Quote = Take(1)[0];
    value = Take(std::min(m_text.find(node.Quote), m_text.size()));
    Take(1);
  }

  std::string_view m_text;
};

void Append(std::string& text, const XmlNode& node) {
  if (node.Tag.empty()) {
    text += node.Raw;
    return;
  }
  text += '<' + node.Tag;
  for (const auto& [name, value] : node.Attributes)
    text += ' ' + name + '=' + node.Quote + value + node.Quote;
  if (node.Closed == XmlNode::End::kSelf) {
    text += " />";
    return;
  }
  text += '>';
  for (const XmlNode& child : node.Children) Append(text, child);
  if (node.Closed == XmlNode::End::kTag) text += "</" + node.Tag + '>';
}

}  // namespace

std::vector<XmlNode> ParseXml(std::string_view text) {
  bool closed = false;
  return Parser(text).Nodes({}, closed, 0);
}

std::string WriteXml(const std::vector<XmlNode>& nodes) {
  std::string text;
  for (const XmlNode& node : nodes) Append(text, node);
  return text;
}

}  // namespace fuzz
