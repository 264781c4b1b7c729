# The optional components, as scripts/components.txt lists them: an option for each, and the lists
# of those that are built and of those that are not.

set(components_file ${CMAKE_CURRENT_LIST_DIR}/../scripts/components.txt)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${components_file})
file(STRINGS ${components_file} component_lines REGEX "^[a-z]")

set(components)
set(absent_components)
foreach(line IN LISTS component_lines)
  string(REGEX MATCH "^([a-z0-9]+) *(.*)" line "${line}")
  set(component ${CMAKE_MATCH_1})
  string(TOUPPER ${component} name)
  option(QENZOR_${name} "Build the component ${component}: ${CMAKE_MATCH_2}" OFF)
  if(QENZOR_${name})
    list(APPEND components ${component})
  else()
    list(APPEND absent_components ${component})
  endif()
endforeach()
