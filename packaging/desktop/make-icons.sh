#!/bin/bash
# SPDX-License-Identifier: MIT
# Draws the icon's pictures from its SVG anew, for systems that show no SVG icons (Debian: librsvg2-bin).
set -eu
cd -- "$(dirname -- "$(readlink -f -- "$0")")"
for size in 16 32 48 128; do
  rsvg-convert --width $size --height $size org.tesselink.Tesselink.svg --output icons/$size.png
done
