# What is installed besides the targets: the package files by which CMake and pkg-config find the
# library. Nothing in them is an absolute path, so an installed tree can be moved.

include(CMakePackageConfigHelpers)

set(qenzor_cmake_dir ${CMAKE_INSTALL_LIBDIR}/cmake/qenzor)

install(EXPORT qenzor NAMESPACE qenzor:: FILE qenzorConfig.cmake DESTINATION ${qenzor_cmake_dir})

write_basic_package_version_file(
  ${PROJECT_BINARY_DIR}/qenzorConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/qenzorConfigVersion.cmake DESTINATION ${qenzor_cmake_dir})

# pkg-config knows the folder of the file it reads; the prefix is given from there.
file(RELATIVE_PATH qenzor_prefix_from_pc /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
string(REGEX REPLACE "/$" "" qenzor_prefix_from_pc "${qenzor_prefix_from_pc}")
configure_file(cmake/qenzor.pc.in ${PROJECT_BINARY_DIR}/qenzor.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/qenzor.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
