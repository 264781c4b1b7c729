// Builds the drawing of the sample map, for the countries that the map holds:
//
//     world_style samples/world.qen world.zor
//
// Shows how a draw-data document is built from nothing: draw infos, the draw attributes that tie
// them to the map's z-ids, and marks (support/world_style_builder.cpp). Read world_map first.

#include <cstdlib>
#include <exception>
#include <iostream>
#include <utility>

#include "examples/support/world_style_builder.h"
#include "qenzor/qen_document.h"
#include "qenzor/zor_document.h"

int main(int argc, char** argv) try {
  if (argc != 3) {
    std::cerr << "usage: world_style MAP.qen OUTPUT.zor\n";
    return EXIT_FAILURE;
  }
  const auto map = qenzor::ReadQen(argv[1]).OrThrow();
  const auto style = world::BuildWorldStyle(world::AreaIdsOf(*map));
  qenzor::SaveZor(std::move(*style), argv[2]).OrThrow();
  return EXIT_SUCCESS;
} catch (const std::exception& error) {
  std::cerr << "world_style: " << error.what() << '\n';
  return EXIT_FAILURE;
}
