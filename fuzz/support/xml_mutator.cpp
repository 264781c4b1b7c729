#include "support/xml_mutator.h"

#include <algorithm>
#include <array>
#include <string>

#include "qenzor/catalogue.h"
#include "support/pantry.h"
#include "support/random.h"
#include "support/xml_tree.h"

using namespace std::string_view_literals;

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t max_size);

namespace fuzz {
namespace {

using Nodes = std::vector<XmlNode>;

/// What stands where a text or a value may, read in a way of its own each.
constexpr std::array kTexts{"0"sv,
                            "-1"sv,
                            "65536"sv,
                            "-32769"sv,
                            "4294967296"sv,
                            "18446744073709551616"sv,
                            "+7x"sv,
                            "  12"sv,
                            "1.5e3"sv,
                            ".5"sv,
                            "1e999"sv,
                            "0x4041"sv,
                            "nan"sv,
                            "\n"sv,
                            "a\r\n\t b"sv,
                            "\r"sv,
                            "&amp;"sv,
                            "&lt;br /&gt;&amp;nbsp;"sv,
                            "&#65;"sv,
                            "&#x42;"sv,
                            "&#x110000;"sv,
                            "&#x;"sv,
                            "&#0;"sv,
                            "&#12354;"sv,
                            "&unknown;"sv,
                            "&"sv,
                            "&amp"sv,
                            "<"sv,
                            ">"sv,
                            "]]>"sv,
                            "<![CDATA[ a<b ]]>"sv,
                            "<![CDATA["sv,
                            "<!-- a - b -->"sv,
                            "<!--"sv,
                            "<!DOCTYPE Qen [ <!ENTITY a \"b\"> ]>"sv,
                            "<?pi ?>"sv,
                            "</"sv,
                            "</Qen>"sv,
                            "\x82\xA0"sv,
                            "\x82"sv,
                            "\x83\x5C"sv,
                            "\xE3\x81\x82"sv,
                            "\xE3\x81"sv,
                            "\xFF"sv,
                            "\xB1"sv,
                            "\0"sv,
                            "\xEF\xBB\xBF"sv,
                            "'"sv,
                            "\""sv,
                            "="sv};

constexpr std::array kFronts{"<?xml version=\"1.0\" encoding=\"Shift_JIS\" ?>"sv,
                             "<?xml version=\"1.0\" encoding=\"UTF-8\"?>"sv,
                             "<?xml version='1.0' encoding='utf-8' standalone='yes'?>"sv,
                             "<?xml version=\"1.0\" encoding=\"EUC-JP\"?>"sv,
                             "<?xml version=\"1.0\"?>"sv,
                             "<?xml encoding=\"UTF8\" > ?>"sv,
                             "<?xml"sv,
                             "\xEF\xBB\xBF"sv,
                             "\xFF\xFE"sv};

constexpr std::array kAttributes{"x"sv, "y"sv, "A"sv, "R"sv, "G"sv, "B"sv,
                                 "W"sv, "S"sv, "E"sv, "N"sv, "z"sv};

/// An empty element of each class.
Nodes EmptyElements() {
  Nodes nodes;
  qenzor::ForEachClass([&nodes](auto row) {
    XmlNode node;
    node.Tag = row.kTag;
    nodes.push_back(std::move(node));
  });
  return nodes;
}

Pantry<XmlNode>& ThePantry() {
  static Pantry<XmlNode> s_pantry(EmptyElements());
  return s_pantry;
}

/// A node by the list that holds it.
struct Seat {
  Nodes* List = nullptr;
  std::size_t Index = 0;
  XmlNode& Node() const { return (*List)[Index]; }
  auto Iterator() const { return List->begin() + static_cast<std::ptrdiff_t>(Index); }
};

void Collect(Nodes& nodes, std::vector<Seat>& elements, std::vector<Seat>& others) {
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    (nodes[i].Tag.empty() ? others : elements).push_back({&nodes, i});
    Collect(nodes[i].Children, elements, others);
  }
}

void Insert(Nodes& nodes, XmlNode node, Random& random) {
  const auto at = static_cast<std::ptrdiff_t>(random.Below(nodes.size() + 1));
  nodes.insert(nodes.begin() + at, std::move(node));
}

std::string AnyText(Random& random) {
  if (random.OneIn(4)) return std::to_string(static_cast<std::int64_t>(random.Number()));
  std::string text(random.Of(kTexts));
  while (random.OneIn(3)) text += random.Of(kTexts);
  return text;
}

void ChangeText(std::string& text, Random& random, std::size_t room) {
  switch (random.Below(4)) {
    case 0:
      text = AnyText(random);
      break;
    case 1:
      text.insert(random.Below(text.size() + 1), AnyText(random));
      break;
    case 2:
      for (std::size_t i = random.OneIn(9) ? 300 : 3; i > 0 && !text.empty(); --i)
        text += text[random.Below(text.size())];
      break;
    default: {
      const std::size_t before = text.size();
      text.resize(before + std::min<std::size_t>(room, 16));
      if (text.empty()) break;
      text.resize(
          LLVMFuzzerMutate(reinterpret_cast<std::uint8_t*>(text.data()), before, text.size()));
    }
  }
}

void ChangeAttributes(XmlNode& node, Random& random, std::size_t room) {
  auto& attributes = node.Attributes;
  const auto add = [&] {
    attributes.emplace_back(random.Of(kAttributes), AnyText(random));
    if (attributes.size() > 12) attributes.back().first += std::to_string(attributes.size());
  };
  if (attributes.empty()) {
    add();
    return;
  }
  auto& attribute = random.Of(attributes);
  switch (random.Below(6)) {
    case 0:
      add();
      break;
    case 1:  // about as many as are read
      if (random.OneIn(9))
        while (attributes.size() < 63 + random.Below(4)) add();
      break;
    case 2:
      std::swap(attribute, attributes.back());
      attributes.pop_back();
      break;
    case 3:
      attribute.first = random.Of(kAttributes);
      break;
    case 4:
      node.Quote = node.Quote == '"' ? '\'' : '"';
      break;
    default:
      ChangeText(attribute.second, random, room);
  }
}

void ChangeElement(Nodes& nodes, const Seat& seat, Random& random, std::size_t room) {
  XmlNode& node = seat.Node();
  switch (random.Below(12)) {
    case 0:
      Insert(node.Children, ThePantry().Take(random), random);
      break;
    case 1: {
      XmlNode text;
      text.Raw = AnyText(random);
      Insert(random.OneIn(6) ? nodes : node.Children, std::move(text), random);
      break;
    }
    case 2:  // some more of it
      for (std::size_t more = 1 + random.Below(random.OneIn(9) ? 40 : 3); more > 0; --more)
        seat.List->insert(seat.Iterator(), XmlNode(seat.Node()));
      break;
    case 3:
      seat.List->erase(seat.Iterator());
      break;
    case 4:
      std::swap(node, random.Of(*seat.List));
      break;
    case 5: {  // to another place
      XmlNode moved = std::move(node);
      seat.List->erase(seat.Iterator());
      std::vector<Seat> elements;
      std::vector<Seat> others;
      Collect(nodes, elements, others);
      Insert(elements.empty() ? nodes : random.Of(elements).Node().Children, std::move(moved),
             random);
      break;
    }
    case 6:
      node = ThePantry().Take(random);
      break;
    case 7:  // deeper
      for (std::size_t depth = random.OneIn(9) ? 250 + random.Below(20) : 1 + random.Below(3);
           depth > 0; --depth) {
        XmlNode outer;
        outer.Tag = node.Tag;
        outer.Children.push_back(std::move(node));
        node = std::move(outer);
      }
      break;
    case 8:
      node.Tag = ThePantry().Take(random).Tag;
      break;
    case 9:
      node.Closed = random.OneIn(4)   ? XmlNode::End::kNone
                    : random.OneIn(2) ? XmlNode::End::kSelf
                                      : XmlNode::End::kTag;
      break;
    default:
      ChangeAttributes(node, random, room);
  }
}

void ChangeFront(Nodes& nodes, Random& random) {
  if (!nodes.empty() && nodes.front().Raw.starts_with("<?")) nodes.erase(nodes.begin());
  XmlNode front;
  front.Raw = random.Of(kFronts);
  nodes.insert(nodes.begin(), std::move(front));
}

void ChangeTree(Nodes& nodes, Random& random, std::size_t room) {
  std::vector<Seat> elements;
  std::vector<Seat> others;
  Collect(nodes, elements, others);
  if (random.OneIn(24))
    ChangeFront(nodes, random);
  else if (!others.empty() && random.OneIn(3))
    ChangeText(random.Of(others).Node().Raw, random, room);
  else if (!elements.empty())
    ChangeElement(nodes, random.Of(elements), random, room);
  else
    nodes.push_back(ThePantry().Take(random));
}

std::size_t Deliver(const std::string& text, std::uint8_t* out, std::size_t room) {
  const std::size_t size = std::min(text.size(), room);
  std::copy_n(text.begin(), size, out);
  return size;
}

/// How much stands in front of the markup: numbers of the target's own, or nothing.
std::size_t FrontOf(const std::uint8_t* data, std::size_t size) {
  return static_cast<std::size_t>(std::find(data, data + std::min<std::size_t>(size, 4), '<') -
                                  data) %
         4;
}

std::string_view AsText(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

}  // namespace

std::size_t MutateXml(std::uint8_t* data, std::size_t size, std::size_t max_size, unsigned seed) {
  Random random(seed);
  const std::size_t front = FrontOf(data, size);
  if (random.OneIn(8)) return LLVMFuzzerMutate(data, size, max_size);
  if (front > 0 && random.OneIn(8)) {
    LLVMFuzzerMutate(data, front, front);
    return size;
  }
  Nodes nodes = ParseXml(AsText(data + front, size - front));
  std::vector<Seat> elements;
  std::vector<Seat> others;
  Collect(nodes, elements, others);
  constexpr std::size_t kLargestKept = 2048;
  if (!elements.empty())
    if (const XmlNode& node = random.Of(elements).Node(); WriteXml({node}).size() <= kLargestKept)
      ThePantry().Keep(node, random);
  std::size_t changes = 1;
  while (changes < 4 && random.OneIn(3)) ++changes;
  // What has become too long is cut, so no more is added to it.
  for (; changes > 0 && WriteXml(nodes).size() <= max_size; --changes)
    ChangeTree(nodes, random, max_size - size);
  std::string text = WriteXml(nodes);
  if (random.OneIn(32)) text.resize(random.Below(text.size() + 1));
  return front + Deliver(text, data + front, max_size - front);
}

std::size_t CrossXml(const std::uint8_t* first, std::size_t first_size, const std::uint8_t* second,
                     std::size_t second_size, std::uint8_t* out, std::size_t max_out_size,
                     unsigned seed) {
  Random random(seed);
  const std::size_t front = FrontOf(first, first_size);
  const std::size_t other_front = FrontOf(second, second_size);
  if (front > max_out_size) return 0;
  Nodes nodes = ParseXml(AsText(first + front, first_size - front));
  Nodes other = ParseXml(AsText(second + other_front, second_size - other_front));
  std::vector<Seat> places;
  std::vector<Seat> given;
  std::vector<Seat> texts;
  Collect(nodes, places, texts);
  Collect(other, given, texts);
  if (places.empty() || given.empty()) return 0;
  XmlNode& place = random.Of(places).Node();
  XmlNode node = std::move(random.Of(given).Node());
  if (random.OneIn(2))
    Insert(place.Children, std::move(node), random);
  else
    place = std::move(node);
  std::copy_n(first, front, out);
  return front + Deliver(WriteXml(nodes), out + front, max_out_size - front);
}

}  // namespace fuzz
