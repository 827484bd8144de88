# SPDX-License-Identifier: MIT
# The warnings that our own targets are compiled with, and the sanitizers. They are linked privately, so a
# project that takes Tesselink in keeps its own.
add_library(tesselink-strict INTERFACE)
target_compile_options(tesselink-strict INTERFACE -Wall -Wextra -Wconversion -Wshadow)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # This release sees overlaps where a literal is assigned to a string (its bug 105651).
  target_compile_options(tesselink-strict INTERFACE -Wno-restrict)
endif()
if(TESSELINK_WERROR)
  target_compile_options(tesselink-strict INTERFACE -Werror)
endif()
if(TESSELINK_SANITIZE)
  target_compile_options(tesselink-strict INTERFACE
    -fsanitize=${TESSELINK_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(tesselink-strict INTERFACE -fsanitize=${TESSELINK_SANITIZE})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    target_compile_options(tesselink-strict INTERFACE
      -fsanitize-ignorelist=${PROJECT_SOURCE_DIR}/cmake/sanitizer-ignore.txt)
  endif()
endif()
