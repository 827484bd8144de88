#!/usr/bin/env python3
"""Converts shapefiles to DXF and compares what ezdxf reads there with what pyshp reads from the shapefile: every vertex, text
and layer in order, and the extents in the header.

    shapefiles.py --tesselink build/release/tesselink [--examples examples] [--data ../shared/data]

Without the data folder the examples alone are compared. Exit codes: 0 agrees, 1 deviates, 77 ezdxf or pyshp is not there.
"""
import argparse
import logging
import math
import pathlib
import struct
import subprocess
import sys
import tempfile

try:
    import ezdxf
    import shapefile
except ImportError as error:
    print(f"skipped: {error}")
    sys.exit(77)

logging.disable(logging.CRITICAL)

CHAINS = {3, 5, 13, 15}
READ = {0, 1, 8} | CHAINS
# What a DXF reader accepts as the name of a layer; ours writes whatever the table holds.
NO_LAYER_NAME = set('<>/\\":;?*|=`')
EXPLAINED = {
    "OSGeo__shapelib/3dpoints.shp": ("19 shapes are said not to be read, 6 are not",
                                     "pyshp takes the number of records from the index's header, which is wrong; the file's "
                                     "length counts"),
}
NOTHING = 1e20


class Deviation(Exception):
    pass


def check(condition, message):
    if not condition:
        raise Deviation(message)


def single(value):
    return struct.unpack("<f", struct.pack("<f", value))[0]


class Table:
    """A dBase table as bytes: fields by the terminator, rows by position."""

    def __init__(self, path):
        self.bytes = path.read_bytes()
        self.header, self.length = struct.unpack_from("<HH", self.bytes, 8)
        self.fields, offset = {}, 1
        for at in range(32, self.header - 31, 32):
            if self.bytes[at] == 0x0D:
                break
            name = self.bytes[at:at + 11].split(b"\0")[0].decode("latin-1")
            self.fields.setdefault(name, (offset, self.bytes[at + 16], chr(self.bytes[at + 11])))
            offset += self.bytes[at + 16]

    def chosen(self):
        """A field for the layer and one for the text, of characters where there are some."""
        names = [n for n, (_, _, kind) in self.fields.items() if kind == "C" and n.strip()] or [n for n in self.fields if n.strip()]
        rows = range((len(self.bytes) - self.header) // self.length)
        layers = [n for n in names if not any(NO_LAYER_NAME & set(self.value(n, row)) for row in rows)]
        return (layers[0], names[-1]) if layers else None

    def value(self, name, row):
        offset, length, _ = self.fields[name]
        start = self.header + self.length * row + offset
        text = self.bytes[start:start + length].split(b"\0")[0].strip(b" ")
        return bytes(32 if byte < 32 else byte for byte in text).decode("cp1252", "surrogateescape")


def expected(path, table, fields, keep_origin=False):
    """(kind, layer, text, vertices) of everything a DXF reader should find, in order, and what is not read. A DXF drawing has
    no vertices at (0, 0, 0)."""
    elements, unread = [], 0
    with shapefile.Reader(shp=str(path), shx=str(partner(path, ".shx"))) as reader:
        for number in range(1, len(reader) + 1):
            shape = reader.shape(number - 1)
            if shape.shapeType not in READ:
                unread += 1
                continue
            if not shape.points or (shape.shapeType in CHAINS and not len(shape.parts)):
                continue
            # The row behind the shape's own.
            # An element with attributes but an empty layer gets that of its code.
            layer = table.value(fields[0], number) or "Unassociated" if fields else "0"
            z = [single(v) for v in getattr(shape, "z", [])] if shape.shapeType in (13, 15) else []
            vertices = [(*map(float, p[:2]), z[i] if i < len(z) else 0.0) for i, p in enumerate(shape.points)]
            if not all(math.isfinite(c) for v in vertices for c in v):
                check(shape.shapeType == 1, "only points were expected to have coordinates that are no numbers")
                continue
            if shape.shapeType in CHAINS:
                ends = [*shape.parts[1:], len(vertices)]
                for start, end in zip(shape.parts, ends):
                    part = [v for v in vertices[start:end] if keep_origin or v != (0, 0, 0)]
                    if start < end and not (end - start == 1 and vertices[start][:2] == (0, 0)):
                        elements.append(("POLYLINE", layer, None, part))
            else:
                alone = len(vertices) == 1 and vertices[0][:2] == (0, 0)
                elements += [("POINT", layer, None, [v]) for v in vertices
                             if (keep_origin or v != (0, 0, 0)) and not alone]
            if fields:
                centre = tuple((min(c) + max(c)) / 2 for c in zip(*vertices))
                centre = (*centre[:2], single(centre[2]))
                if centre[:2] != (0, 0):
                    elements.append(("TEXT", layer, table.value(fields[1], number), [centre]))
    return elements, unread


def found(drawing):
    for entity in drawing.modelspace():
        kind = entity.dxftype()
        if kind == "POLYLINE":
            vertices = [tuple(v.dxf.location) for v in entity.vertices]
        else:
            vertices = [tuple(entity.dxf.location if kind == "POINT" else entity.dxf.insert)]
        yield kind, entity.dxf.layer, entity.dxf.text if kind == "TEXT" else None, vertices


def near(ours, theirs, digits):
    return math.isclose(ours, theirs, rel_tol=10.0 ** -digits, abs_tol=1e-300)


def compare(drawing, elements):
    ours = list(found(drawing))
    check(len(ours) == len(elements), f"{len(ours)} entities, {len(elements)} expected")
    low, high = [NOTHING] * 3, [-NOTHING] * 3
    for index, (our, their) in enumerate(zip(ours, elements), 1):
        where = f"entity {index}"
        check(our[0] == their[0], f"{where} is a {our[0]}, not a {their[0]}")
        check(our[1] == their[1], f"{where} has layer {our[1]!r}, not {their[1]!r}")
        check(our[2] == their[2], f"{where} has text {our[2]!r}, not {their[2]!r}")
        check(len(our[3]) == len(their[3]), f"{where} has {len(our[3])} vertices, not {len(their[3])}")
        for one, other in zip(our[3], their[3]):
            check(all(near(a, b, d) for a, b, d in zip(one, other, (14, 14, 6))), f"{where} has a vertex {one}, not {other}")
            low, high = [min(p) for p in zip(low, other)], [max(p) for p in zip(high, other)]
    for name, bounds in (("$EXTMIN", low), ("$EXTMAX", high)):
        header = drawing.header[name]
        check(all(near(a, b, d) for a, b, d in zip(header, bounds, (14, 14, 6))), f"{name} is {header}, not {bounds}")
    layers = {layer.dxf.name for layer in drawing.layers}
    check({e[1] for e in elements} - {""} <= layers, "a layer is not in the table")
    return len(ours)


def partner(path, extension):
    same = [p for p in path.parent.iterdir() if p.stem == path.stem and p.suffix.lower() == extension]
    return same[0] if same else None


def convert(program, path, folder, *options):
    output = folder / "out.dxf"
    output.unlink(missing_ok=True)
    run = subprocess.run([program, "convert", *options, path, output], capture_output=True, text=True, errors="replace", timeout=120)
    check(run.returncode in (0, 1), f"exit code {run.returncode}: {run.stderr}")
    check(run.returncode == 0 or run.stderr.startswith("tesselink: "), f"failed without a reason: {run.stderr!r}")
    return run, output


def check_file(program, path, folder):
    """How many entities were compared, and a remark."""
    if not partner(path, ".shx"):
        run, output = convert(program, path, folder)
        check(run.returncode == 1 and "Could not find file" in run.stderr and not output.exists(), "a missing index is not told")
        return 0, "no index: refused"
    try:
        elements, unread = expected(path, None, None)
    except Exception as error:  # pylint: disable=broad-except; pyshp raises what struct raises
        run, _ = convert(program, path, folder)
        check(run.returncode == 1 or "warning" in run.stderr, f"pyshp gives up ({error}), and nothing is said of it")
        return 0, f"pyshp gives up, tesselink says: {run.stderr.strip().splitlines()[0]}"
    count = 0
    dbf = partner(path, ".dbf")
    table = Table(dbf) if dbf and dbf.stat().st_size > 32 else None
    for fields in dict.fromkeys((None, table.chosen() if table else None)):
        options = ["--layer-field", fields[0], "--text-field", fields[1]] if fields else []
        run, output = convert(program, path, folder, *options)
        check(run.returncode == 0, run.stderr)
        told = sum(int(line.split(": ")[-1].split()[0]) for line in run.stderr.splitlines() if "not read, and so not converted" in line)
        check(told == unread, f"{told} shapes are said not to be read, {unread} are not")
        if fields:
            elements, _ = expected(path, table, fields)
        count += compare(ezdxf.readfile(output, errors="surrogateescape"), elements)
    return count, ""


def drawings(options):
    """The examples' shapefiles, and the real ones where they are."""
    paths = sorted(options.examples.glob("*.shp")) if options.examples else []
    if options.data and options.data.is_dir():
        return paths + sorted(p for p in (options.data / "shp").rglob("*") if p.suffix.lower() == ".shp")
    print("the real drawings were skipped: their folder is not there")
    return paths


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--tesselink", required=True)
    parser.add_argument("--examples", type=pathlib.Path)
    parser.add_argument("--data", type=pathlib.Path)
    options = parser.parse_args()
    paths = drawings(options)
    bad = total = 0
    with tempfile.TemporaryDirectory() as folder:
        for path in paths:
            name = "/".join(path.parts[-2:])
            try:
                count, remark = check_file(options.tesselink, path, pathlib.Path(folder))
                total += count
                if remark:
                    print(f"{name}: {remark}")
            except (Deviation, subprocess.TimeoutExpired, ezdxf.DXFError) as deviation:
                what, why = EXPLAINED.get(name, (None, None))
                if what == str(deviation):
                    print(f"{name}: {what}: {why}")
                else:
                    bad += 1
                    print(f"DEVIATES {name}: {deviation}")
    print(f"{len(paths)} shapefiles, {total} entities compared, {bad} deviate")
    return 1 if bad or not total else 0


if __name__ == "__main__":
    sys.exit(main())
