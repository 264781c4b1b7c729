# The component tinyxml of the package qenzor.

include(CMakeFindDependencyMacro)
find_dependency(PkgConfig)
pkg_check_modules(qenzor_tinyxml QUIET IMPORTED_TARGET tinyxml)
if(NOT qenzor_tinyxml_FOUND)
  set(qenzor_NOT_FOUND_MESSAGE "pkg-config does not find tinyxml")
elseif(NOT TARGET qenzor::tinyxml)
  add_library(qenzor::tinyxml INTERFACE IMPORTED)
  set_target_properties(qenzor::tinyxml PROPERTIES INTERFACE_LINK_LIBRARIES
                                                   "qenzor::qenzor;PkgConfig::qenzor_tinyxml")
endif()
