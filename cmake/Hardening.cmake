# SPDX-License-Identifier: MIT
# What programs that others install are built with: harder to abuse, and the same bytes from whatever folder. A checkout's
# own Release is built alike, so that what is tested and measured is what is shipped. Code is independent of its place as
# executables need it, which Debian's compilers see to; as libraries need it, it would take a tenth more instructions.
# Guards of the stack would take a twentieth; arrays are watched by the sanitizers, over the tests and the fuzzers' corpora.
if(NOT PROJECT_IS_TOP_LEVEL OR TESSELINK_SANITIZE OR NOT CMAKE_BUILD_TYPE MATCHES "^Rel")
  return()
endif()
add_compile_options(-ffile-prefix-map=${PROJECT_SOURCE_DIR}=. -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
add_link_options(-Wl,-z,relro -Wl,-z,now -Wl,--as-needed)
