// Builds the sample map of the world from a TopoJSON file:
//
//     world_map samples/world/countries-110m.json world.qen
//
// Shows how a map-project document is built from nothing: the map is put together in its editable
// form (support/world_map_builder.cpp) and saved.

#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <utility>

#include "examples/support/world_map_builder.h"
#include "qenzor/qen_document.h"

int main(int argc, char** argv) try {
  if (argc != 3) {
    std::cerr << "usage: world_map INPUT.json OUTPUT.qen\n";
    return EXIT_FAILURE;
  }
  std::ifstream input(argv[1], std::ios::binary);
  if (!input) {
    std::cerr << argv[1] << ": cannot be read\n";
    return EXIT_FAILURE;
  }
  const auto map = world::BuildWorldMap(world::ReadTopology(input));
  qenzor::SaveQen(std::move(*map), argv[2]).OrThrow();
  return EXIT_SUCCESS;
} catch (const std::exception& error) {
  std::cerr << "world_map: " << error.what() << '\n';
  return EXIT_FAILURE;
}
