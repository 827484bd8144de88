#!/usr/bin/env python3
"""Converts shapefiles to shapefiles and compares the geometry that pyshp and GDAL read in the output with the input's, record
by record: one for each part, or for each point.

    shapefile_writer.py --tesselink build/release/tesselink [--examples examples] [--data ../shared/data]

Without the data folder the examples alone are compared. Exit codes: 0 agrees, 1 deviates, 77 pyshp or GDAL is not there.
"""
import argparse
import math
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

import shapefiles
from shapefiles import Deviation, check, partner, shapefile


def expected(path):
    """The vertices of every record that the output should hold."""
    shapes = []
    elements, _ = shapefiles.expected(path, None, None, keep_origin=True)
    for kind, _, _, vertices in elements:
        shapes.append([v[:2] for v in vertices])
    return elements[0][0] if elements else None, shapes


def by_pyshp(path):
    with shapefile.Reader(shp=str(path), shx=str(path.with_suffix(".shx"))) as reader:
        check(reader.numRecords is None, "pyshp reads the table, which it was not given")
        shapes = [reader.shape(i) for i in range(len(reader))]
        box = list(reader.bbox)
    return [[tuple(map(float, p[:2])) for p in shape.points] for shape in shapes], box


def by_gdal(path):
    out = subprocess.run(["ogrinfo", "-ro", "-q", "-al", path], capture_output=True, text=True, errors="replace", check=True).stdout
    numbers = re.compile(r"[-+.\deE]+ [-+.\deE]+")
    return [[tuple(map(float, pair.split())) for pair in numbers.findall(line.split("(", 1)[1])]
            for line in out.splitlines() if re.match(r"  (POINT|LINESTRING|MULTILINESTRING) .*\(", line)]


def same(ours, theirs, exact):
    """GDAL prints 15 digits, and rounds away what looks like noise in the last ones."""
    return len(ours) == len(theirs) and all(
        len(a) == len(b) and all((p == q) if exact else all(math.isclose(c, d, rel_tol=1e-12, abs_tol=1e-12) for c, d in zip(p, q))
                                 for p, q in zip(a, b)) for a, b in zip(ours, theirs))


def check_file(program, path, folder):
    output = pathlib.Path(folder) / "out.shp"
    for file in pathlib.Path(folder).glob("out.*"):
        file.unlink()
    if not partner(path, ".shx"):
        return 0
    try:
        kind, shapes = expected(path)
    except Deviation:
        raise
    except Exception:  # pylint: disable=broad-except; what pyshp cannot read is the business of the other comparison
        return 0
    run = subprocess.run([program, "convert", "-q", path, output], capture_output=True, text=True, errors="replace", timeout=120)
    check(run.returncode == 0, run.stderr)
    read, box = by_pyshp(output)
    check(same(read, shapes, True), f"pyshp reads {len(read)} records, not the {len(shapes)} of the input")
    if shapes:
        points = [p for s in shapes for p in s]
        check(box == [f(p[i] for p in points) for f in (min, max) for i in (0, 1)], f"the box is {box}")
        check(same(by_gdal(output), shapes, False), "GDAL reads other geometry")
    return len(shapes)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--tesselink", required=True)
    parser.add_argument("--examples", type=pathlib.Path)
    parser.add_argument("--data", type=pathlib.Path)
    options = parser.parse_args()
    if not shutil.which("ogrinfo"):
        print("skipped: ogrinfo is not installed")
        return 77
    bad = total = 0
    paths = shapefiles.drawings(options)
    with tempfile.TemporaryDirectory() as folder:
        for path in paths:
            name = "/".join(path.parts[-2:])
            try:
                total += check_file(options.tesselink, path, folder)
            except (Deviation, subprocess.SubprocessError) as deviation:
                bad += 1
                print(f"DEVIATES {name}: {deviation}")
    print(f"{len(paths)} shapefiles, {total} records compared, {bad} deviate")
    return 1 if bad or not total else 0


sys.exit(main())
