# npm_package(NAME VERSION SHA256 RESULT): has npm bring a package into the build folder when CMake
# configures it, and takes none but the one with this sum. RESULT becomes its folder, or is unset when
# it cannot be had.
function(npm_package name version sum result)
  set(${result} PARENT_SCOPE)
  set(parent ${PROJECT_BINARY_DIR}/npm)
  set(archive ${parent}/${name}-${version}.tgz)
  set(folder ${parent}/${name}-${version})
  if(NOT EXISTS ${folder})
    find_program(QENZOR_NPM npm)
    if(NOT QENZOR_NPM)
      message(STATUS "npm is missing, which brings ${name}")
      return()
    endif()
    file(MAKE_DIRECTORY ${parent})
    execute_process(
      COMMAND ${QENZOR_NPM} pack --silent --fetch-retries=1 --fetch-timeout=30000
              ${name}@${version}
      WORKING_DIRECTORY ${parent}
      RESULT_VARIABLE status
      OUTPUT_QUIET ERROR_QUIET)
    if(NOT status EQUAL 0)
      message(STATUS "npm does not bring ${name} ${version}")
      return()
    endif()
    file(SHA256 ${archive} found)
    if(NOT found STREQUAL sum)
      message(STATUS "what npm brings is not the ${name} ${version} that is known")
      return()
    endif()
    file(ARCHIVE_EXTRACT INPUT ${archive} DESTINATION ${parent})
    file(RENAME ${parent}/package ${folder})
  endif()
  set(${result} ${folder} PARENT_SCOPE)
endfunction()
