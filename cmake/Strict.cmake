# The warnings that our own targets are compiled with, and the sanitizers. They are linked privately, so a
# project that takes Tesselink in keeps its own.
add_library(tesselink-strict INTERFACE)
target_compile_options(tesselink-strict INTERFACE -Wall -Wextra -Wconversion -Wshadow)
if(TESSELINK_WERROR)
  target_compile_options(tesselink-strict INTERFACE -Werror)
endif()
if(TESSELINK_SANITIZE)
  target_compile_options(tesselink-strict INTERFACE
    -fsanitize=${TESSELINK_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(tesselink-strict INTERFACE -fsanitize=${TESSELINK_SANITIZE})
endif()
