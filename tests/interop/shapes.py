#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
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


def rings(e, release):
    """The parts of a shape that a drawing holds, each from its least vertex on, whatever their order; of a HATCH whatever their
    direction, which is that of outer rings and holes."""
    def begun(ring):
        least = ring.index(min(ring[:-1]))
        return ring[least:-1] + ring[:least + 1]

    def turned(ring):
        return min(begun(ring), begun(ring[::-1])) if release == "2007" else begun(ring)
    return sorted(turned(part.xyz) if part.xyz[0] == part.xyz[-1] and len(part.xyz) > 1 else part.xyz
                  for part in rules.apply([(None, rules.by_part)], [e])[0])


def through_a_drawing(program, path, folder, deleted, release):
    """A shape comes back with all of its parts and with its row; only m values and Null shapes have no place in a drawing."""
    kind, shapes = shapes_of(path, deleted)
    if kind == PATCH:
        return
    convert(program, path, folder / "way.dxf", "-O", "--release", release)
    convert(program, folder / "way.dxf", folder / "back.shp", "-O")
    rows = read.attributes(folder / "copy.shp")[1] if partner(path, ".dbf") and any(read.attributes(path)[1]) else []
    found, found_rows = shapes_of(folder / "back.shp")[1], read.attributes(folder / "back.shp")[1]
    wanted = [rules.apply([rules.WITH_CLOSING, rules.TURNED], [e])[0][0] if e else None for _, e in shapes]
    check(len(found) == sum(e is not None for e in wanted), f"{len(found)} records by way of a drawing, not {len(wanted)}")
    for e, row, (_, back), back_row in zip([e for e in wanted if e], [r for r, e in zip(rows, wanted) if e] or found_rows, found, found_rows):
        a, b = rings(e, release), rings(back, release)
        same = len(a) == len(b) and all(len(p) == len(q) and all(near(s, t, 1e-14) for v, w in zip(p, q) for s, t in zip(v, w)) for p, q in zip(a, b))
        check(same, f"by way of a drawing {str(b)[:200]}, not {str(a)[:200]}")
        check(not rows or all(map(same_value, row, back_row)), f"by way of a drawing a row is {back_row}, not {row}")
    if rows and all(wanted):
        same = (folder / "copy.dbf").read_bytes() == (folder / "back.dbf").read_bytes()
        check(same, "by way of a drawing the table is another one")


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
                for release in ("r12", "2007"):
                    through_a_drawing(options.tesselink, path, folder, deleted, release)
            except (struct.error, shapefile.ShapefileException, IndexError, UnicodeError) as error:
                print(f"not readable by pyshp: {path.name}: {error!r}")
            except Deviation as deviation:
                faults += 1
                print(f"DEVIATES {path}: {deviation}")
    print(f"{compared} shapes, {faults} files deviate")
    return 1 if faults or not compared else 0


if __name__ == "__main__":
    sys.exit(main())
