#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "support/random.h"

namespace fuzz {

/// What is planted where something new is wanted: an empty node of each class, and what has been
/// seen on the way.
template <class Node>
class Pantry {
 public:
  explicit Pantry(std::vector<Node> empty) : m_nodes(std::move(empty)), m_empty(m_nodes.size()) {}

  const Node& Take(Random& random) { return random.Of(m_nodes); }

  void Keep(const Node& node, Random& random) {
    constexpr std::size_t kMost = 256;
    if (m_nodes.size() < kMost)
      m_nodes.push_back(node);
    else
      m_nodes[m_empty + random.Below(kMost - m_empty)] = node;
  }

 private:
  std::vector<Node> m_nodes;
  std::size_t m_empty;
};

}  // namespace fuzz
