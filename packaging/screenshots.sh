#!/bin/bash
# SPDX-License-Identifier: MIT
# Takes pictures of every window and dialog, light and dark, at 96 and 192 dpi, in English and in German: packaging/screenshots.sh FOLDER
set -eu
folder=$(realpath -m -- "${1:?usage: packaging/screenshots.sh FOLDER}")
cd -- "$(dirname -- "$(readlink -f -- "$0")")/.."
packaging/prepare.sh tests
cmake --build --preset release --target window-screenshots > /dev/null
export QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8
for style in light dark; do
  for scale in 1 2; do
    for language in en de; do
      pictures=$folder/$style-$((scale * 96))dpi-$language
      mkdir -p "$pictures"
      QT_SCALE_FACTOR=$scale build/release/packaging/screenshots/window-screenshots "$pictures" "$style" "$language"
    done
  done
done
echo "The pictures are in $folder"
