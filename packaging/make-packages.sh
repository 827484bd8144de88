#!/bin/bash
# SPDX-License-Identifier: MIT
# Makes the Debian packages of this checkout in a folder: packaging/make-packages.sh [FOLDER]
#
# The same sources give the same bytes wherever and whenever they are built, with the same compiler and libraries.
set -eu
into=$(realpath -m -- "${1:-build/packages}")
cd -- "$(dirname -- "$(readlink -f -- "$0")")/.."

# As old as the last change to what is packaged.
if [ -z "${SOURCE_DATE_EPOCH:-}" ]; then
  SOURCE_DATE_EPOCH=$(git log -1 --format=%ct 2> /dev/null || date -u -d "$(sed -n 's/^ -- .*  //p;T;q' packaging/debian/changelog)" +%s)
fi
export SOURCE_DATE_EPOCH LC_ALL=C.UTF-8 TZ=UTC
umask 022

# Nothing that was made for another date stays.
rm -rf build/package
mkdir -p build/package
cmake -B build/package -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr -DTESSELINK_PACKAGE=ON \
  -DTESSELINK_TESTS=OFF -DTESSELINK_BENCH=OFF > /dev/null
# A build without tests leaves the manual pages out, unless they are asked for.
targets=(all)
if grep -q '^build tesselink-manual:' build/package/build.ninja; then targets+=(tesselink-manual); fi
cmake --build build/package --target "${targets[@]}" > build/package/build.log || { cat build/package/build.log >&2; exit 1; }
rm -f build/package/*.deb
(cd build/package && cpack -G DEB > cpack.log) || { cat build/package/cpack.log >&2; exit 1; }
mkdir -p "$into"
mv build/package/*.deb "$into"
printf '%s\n' "$into"/*.deb
