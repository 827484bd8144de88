#!/usr/bin/env python3
"""Converts every shapefile to a shapefile in the standard dialect and compares the copy with it by pyshp: type, parts, vertices,
z, m, Null shapes and rows. Then by way of a drawing, which holds single chains without m.

    shapes.py --tesselink build/release/tesselink --data tests/data

Exit codes: 0 agrees, 1 deviates, 77 a program that reads is not there.
"""
import argparse
import pathlib
import struct
import sys
import tempfile

try:
    import shapefile
    import matrix_readers as read
    import matrix_rules as rules
except ImportError as error:
    print(f"skipped: {error}")
    sys.exit(77)
from matrix import near, same_value
from matrix_readers import Deviation, check, partner, tesselink

RINGS, PATCH = (5, 15, 25), 31


def shapes_of(path, deleted=()):
    """The file's type, and of each shape the type and what it holds."""
    with read.pyshp(path, "shp", "shx") as reader:
        index = partner(path, ".shx")
        count = (index.stat().st_size - 100) // 8 if index else len(reader)
        shapes = [reader.shape(i) for i in range(count) if i not in deleted]
        elements = [read.whole(s) for s in shapes]
        return reader.shapeType, [(s.shapeType, e) if e.xyz else (0, None) for s, e in zip(shapes, elements)]


def convert(program, source, output, *options):
    code, _, errors = tesselink(program, "convert", "-q", "--dialect", "standard", *options, source, output)
    check(code == 0, f"exit code {code}: {errors.strip()[:200]}")


def compare(path, copy, deleted):
    """The number of shapes."""
    (kind, shapes), (found_kind, found) = shapes_of(path, deleted), shapes_of(copy)
    check(found_kind == (13 if kind == PATCH else kind), f"the file's type is {found_kind}, not {kind}")
    check(len(found) == len(shapes), f"{len(found)} records, not {len(shapes)}")
    for i, ((wanted_kind, e), shape) in enumerate(zip(shapes, found), 1):
        wanted = wanted_kind, e and rules.apply([rules.WITH_CLOSING, rules.TURNED], [e])[0][0]
        check(kind == PATCH or shape == wanted, f"record {i} is {str(shape)[:200]}, not {str(wanted)[:200]}")
    if partner(path, ".dbf"):
        rows = [row for i, row in enumerate(read.attributes(path)[1]) if i not in deleted]
        with read.pyshp(copy, "dbf") as reader:
            for i, (wanted, row) in enumerate(zip(rows, reader.iterRecords()), 1):
                check(all(map(same_value, wanted, row)), f"record {i} has the attributes {list(row)}, not {wanted}")
    return len(shapes)


def through_a_drawing(program, path, folder, deleted):
    """Each part comes back as a shape of its own; of polygons those that surround something."""
    kind, shapes = shapes_of(path, deleted)
    if kind == PATCH:
        return
    option = "points" if kind in read.POINT_TYPES else "polygons" if kind in RINGS else "polylines"
    convert(program, path, folder / "way.dxf")
    convert(program, folder / "way.dxf", folder / "back.shp", "--shape-type", option)
    single = [(None, rules.each(rules.part_by_part)), rules.TOGETHER, (None, rules.when(rules.always, measures=())), rules.CLOSE]
    wanted = rules.apply([*single, rules.TURNED], [e for _, e in shapes if e])[0]
    least = {"points": 1, "polylines": 2, "polygons": 4}[option]
    wanted = [e.xyz for e in wanted if len(e.xyz) >= least]
    found = [e.xyz for _, e in shapes_of(folder / "back.shp")[1]]
    check(len(found) == len(wanted), f"{len(found)} parts by way of a drawing, not {len(wanted)}")
    for a, b in zip(wanted, found):
        same = len(a) == len(b) and all(near(p, q, 1e-14) for v, w in zip(a, b) for p, q in zip(v, w))
        check(same, f"by way of a drawing {str(b)[:200]}, not {str(a)[:200]}")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    for name in ("--tesselink", "--data"):
        parser.add_argument(name, type=pathlib.Path, required=True)
    options = parser.parse_args()
    compared = faults = 0
    for path in sorted(p for p in options.data.rglob("*") if p.suffix.lower() == ".shp"):
        with tempfile.TemporaryDirectory() as name:
            folder, deleted = pathlib.Path(name), read.deleted_rows(partner(path, ".dbf"))
            try:
                convert(options.tesselink, path, folder / "copy.shp")
                compared += compare(path, folder / "copy.shp", deleted)
                through_a_drawing(options.tesselink, path, folder, deleted)
            except (struct.error, shapefile.ShapefileException, IndexError, UnicodeError) as error:
                print(f"not readable by pyshp: {path.name}: {error!r}")
            except Deviation as deviation:
                faults += 1
                print(f"DEVIATES {path}: {deviation}")
    print(f"{compared} shapes, {faults} files deviate")
    return 1 if faults or not compared else 0


if __name__ == "__main__":
    sys.exit(main())
