# Adds each peer whose package is there to the library bench-peers, and writes the list of those
# that are. A peer PEER is the source peers/PEER.cpp, which defines AddPEER.
include(FindPkgConfig)

set(peer_declarations)
set(peer_calls)

# add_peer(NAME FUNCTION LIBRARY...)
macro(add_peer name function)
  target_sources(bench-peers PRIVATE peers/${name}.cpp)
  target_link_libraries(bench-peers PRIVATE ${ARGN})
  string(APPEND peer_declarations "void ${function}(Suite& suite, const Corpus& corpus);\n")
  string(APPEND peer_calls "  ${function}(suite, corpus);\n")
endmacro()

pkg_check_modules(TINYXML IMPORTED_TARGET tinyxml)
if(TINYXML_FOUND)
  add_peer(tinyxml AddTinyXml PkgConfig::TINYXML)
endif()

find_package(pugixml QUIET)
if(pugixml_FOUND)
  add_peer(pugixml AddPugiXml pugixml::pugixml)
endif()

# What the compilers of the peers make. It is not held to this project's warnings.
set(generated ${CMAKE_CURRENT_BINARY_DIR}/generated)
file(MAKE_DIRECTORY ${generated})
target_include_directories(bench-peers SYSTEM PRIVATE ${generated})

find_package(Protobuf QUIET)
if(Protobuf_FOUND AND Protobuf_PROTOC_EXECUTABLE)
  add_custom_command(
    OUTPUT ${generated}/map.pb.cc ${generated}/map.pb.h
    COMMAND protobuf::protoc --cpp_out=${generated} -I${CMAKE_CURRENT_SOURCE_DIR}/peers map.proto
    DEPENDS peers/map.proto)
  set_source_files_properties(${generated}/map.pb.cc PROPERTIES COMPILE_OPTIONS -w)
  target_sources(bench-peers PRIVATE ${generated}/map.pb.cc)
  add_peer(protobuf AddProtobuf protobuf::libprotobuf)
endif()

find_package(FlatBuffers QUIET)
find_program(FLATC flatc)
if(FlatBuffers_FOUND AND FLATC)
  add_custom_command(
    OUTPUT ${generated}/map_generated.h
    COMMAND ${FLATC} --cpp --gen-object-api -o ${generated}
            ${CMAKE_CURRENT_SOURCE_DIR}/peers/map.fbs
    DEPENDS peers/map.fbs)
  target_sources(bench-peers PRIVATE ${generated}/map_generated.h)
  add_peer(flatbuffers AddFlatBuffers flatbuffers::flatbuffers)
endif()

pkg_check_modules(LIBPLIST IMPORTED_TARGET libplist-2.0)
if(LIBPLIST_FOUND)
  add_peer(libplist AddLibPlist PkgConfig::LIBPLIST)
endif()

configure_file(peers/all_peers.cpp.in ${generated}/all_peers.cpp)
target_sources(bench-peers PRIVATE ${generated}/all_peers.cpp)
target_link_libraries(bench-peers PRIVATE qenzor::qenzor)
