# What is installed besides the targets: the package files by which CMake and pkg-config find the
# library, and its documents. Nothing in them is an absolute path, so an installed tree can be moved.

include(CMakePackageConfigHelpers)

set(qenzor_cmake_dir ${CMAKE_INSTALL_LIBDIR}/cmake/qenzor)

install(EXPORT qenzor NAMESPACE qenzor:: FILE qenzorTargets.cmake DESTINATION ${qenzor_cmake_dir})
configure_package_config_file(
  cmake/qenzorConfig.cmake.in ${PROJECT_BINARY_DIR}/qenzorConfig.cmake
  INSTALL_DESTINATION ${qenzor_cmake_dir}
  NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(
  ${PROJECT_BINARY_DIR}/qenzorConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(
  FILES ${PROJECT_BINARY_DIR}/qenzorConfig.cmake ${PROJECT_BINARY_DIR}/qenzorConfigVersion.cmake
        cmake/qenzor-tinyxml.cmake cmake/qenzor-draw.cmake
        cmake/qenzor-html.cmake
  DESTINATION ${qenzor_cmake_dir})

# pkg-config knows the folder of the file it reads; the prefix is given from there.
file(RELATIVE_PATH qenzor_prefix_from_pc /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
string(REGEX REPLACE "/$" "" qenzor_prefix_from_pc "${qenzor_prefix_from_pc}")
set(packages qenzor qenzor-tinyxml)
foreach(component draw html)
  if(TARGET qenzor-${component})
    list(APPEND packages qenzor-${component})
  endif()
endforeach()
foreach(package IN LISTS packages)
  configure_file(cmake/${package}.pc.in ${PROJECT_BINARY_DIR}/${package}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${package}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()

install(FILES LICENSE README.md CHANGELOG.md TYPE DOC)
install(
  DIRECTORY docs
  TYPE DOC
  PATTERN CMakeLists.txt EXCLUDE)
