# SPDX-License-Identifier: MIT
# A module: a part of the program in a file of its own, loaded when a run needs it (src/core/io/Module.h). It implements an
# interface of the core, and takes from there only what headers hold.
function(tesselink_module name)
  cmake_parse_arguments(PARSE_ARGV 1 MODULE "" "" "SOURCES;LIBRARIES")
  set(target tesselink-${name}-module)
  add_library(${target} MODULE ${MODULE_SOURCES})
  set_target_properties(${target} PROPERTIES
    PREFIX "" OUTPUT_NAME tesselink-${name} NO_SONAME ON LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR})
  target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR}/src)
  target_compile_features(${target} PRIVATE cxx_std_20)
  target_link_libraries(${target} PRIVATE tesselink-strict ${MODULE_LIBRARIES})
  add_dependencies(tesselink ${target})  # whoever builds one program alone gets it too
  install(TARGETS ${target} LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/tesselink COMPONENT program)
endfunction()
