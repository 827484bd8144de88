# SPDX-License-Identifier: MIT
# What programs that others install are built with: harder to abuse, and the same bytes from whatever folder. Code is
# independent of its place as executables need it, which Debian's compilers see to; as libraries need it, it would take
# a tenth more instructions.
add_compile_options(-ffile-prefix-map=${PROJECT_SOURCE_DIR}=. -fstack-protector-strong -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64")
  add_compile_options(-fcf-protection)
endif()
add_link_options(-Wl,-z,relro -Wl,-z,now -Wl,--as-needed)
