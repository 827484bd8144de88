#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Writes data/dxf-colours.csv: the colour of each DXF colour number, by the rule below.

1 to 9 are named colours. 10 to 249 are 24 hues (i / 10 - 1, in six sextants of four steps) by five values, each full
(even numbers) or half mixed with white (odd numbers). 250 to 255 are greys. 0, "by block", is white like 7.
Run it from the top of the tree.
"""

NAMED = [
    (255, 255, 255), (255, 0, 0), (255, 255, 0), (0, 255, 0), (0, 255, 255), (0, 0, 255), (255, 0, 255),
    (255, 255, 255), (128, 128, 128), (192, 192, 192),
]
GREYS = [84, 118, 152, 186, 220, 255]
VALUES = [1, 0.65, 0.5, 0.3, 0.15]


def colour(i):
    if i < 10:
        return NAMED[i]
    if i >= 250:
        return (GREYS[i - 250],) * 3
    hue = i // 10 - 1
    sextant, step = divmod(hue, 4)
    v = 255 * VALUES[i % 10 // 2]
    lo = 0 if i % 2 == 0 else v / 2
    up = lo + (v - lo) * step / 4
    dn = lo + (v - lo) * (4 - step) / 4
    rgb = [(v, up, lo), (dn, v, lo), (lo, v, up), (lo, dn, v), (up, lo, v), (v, lo, dn)][sextant]
    return tuple(int(part) for part in rgb)


def main():
    with open("data/dxf-colours.csv", "w", newline="\n") as out:
        out.write("number,red,green,blue\n")
        for i in range(256):
            out.write("%d,%d,%d,%d\n" % ((i,) + colour(i)))


main()
