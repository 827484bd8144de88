#!/usr/bin/env python3
"""Compares our UTM conversion with PROJ's on random points of every zone and both hemispheres.

    utm.py --program build/release/tests/interop/utm-points

Exit codes: 0 agrees, 1 deviates, 77 cs2cs is not there.
"""
import argparse
import math
import random
import shutil
import subprocess
import sys

POINTS_PER_ZONE = 84  # for each hemisphere: 10,080 in all
THERE_METRES, BACK_DEGREES = 1e-4, 1e-9


def lines(command, points, form):
    text = "".join(form.format(*point) + "\n" for point in points)
    out = subprocess.run(command, input=text, capture_output=True, text=True, check=True).stdout
    return [[float(word) for word in line.split()] for line in out.splitlines()]


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--program", required=True)
    options = parser.parse_args()
    if not shutil.which("cs2cs"):
        print("skipped: cs2cs is not installed")
        return 77
    chance = random.Random(6)
    there = back = count = 0
    for zone in range(1, 61):
        for south in (False, True):
            low = 6 * zone - 186
            points = [(chance.uniform(low + 1e-9, low + 6 - 1e-9), chance.uniform(-80, 0) if south else chance.uniform(0, 84))
                      for _ in range(POINTS_PER_ZONE)]
            ours = lines([options.program], points, "{:.15f} {:.15f}")
            target = ["+proj=utm", f"+zone={zone}", "+ellps=WGS84", *(["+south"] if south else [])]
            theirs = lines(["cs2cs", "-f", "%.9f", "+proj=longlat", "+ellps=WGS84", "+to", *target], points, "{:.15f} {:.15f} 0")
            assert len(ours) == len(theirs) == len(points)
            for (x, y, lon, lat), (px, py, *_), point in zip(ours, theirs, points):
                there = max(there, math.hypot(x - px, y - py))
                back = max(back, abs(lon - point[0]), abs(lat - point[1]))
                count += 1
    print(f"{count} points: greatest distance {there:.3g} m, there and back {back:.3g} degrees")
    return 0 if there < THERE_METRES and back < BACK_DEGREES and count >= 10000 else 1


sys.exit(main())
