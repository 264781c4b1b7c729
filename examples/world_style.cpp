// Builds the drawing of the sample map, for the countries that the map holds:
//
//     world_style samples/world.qen world.zor
//
// Shows how a draw-data document is built from nothing: draw infos, the draw attributes that tie
// them to the map's z-ids, and marks (support/world_style_builder.cpp). Read world_map first.

#include <cstdlib>
#include <exception>
#include <iostream>
#include <memory>

#include "examples/support/world_style_builder.h"

int main(int argc, char** argv) try {
  if (argc != 3) {
    std::cerr << "usage: world_style MAP.qen OUTPUT.zor\n";
    return EXIT_FAILURE;
  }
  qenzor::CQen map;
  if (!map.Read(argv[1])) {
    std::cerr << argv[1] << ": not a map\n";
    return EXIT_FAILURE;
  }
  const auto edit = world::BuildWorldStyle(world::AreaIdsOf(map));
  const std::unique_ptr<qenzor::CZor> style(edit->EditDataToZorData());
  if (!style || !style->Write(argv[2])) {
    std::cerr << argv[2] << ": cannot be written\n";
    return EXIT_FAILURE;
  }
  return EXIT_SUCCESS;
} catch (const std::exception& error) {
  std::cerr << "world_style: " << error.what() << '\n';
  return EXIT_FAILURE;
}
