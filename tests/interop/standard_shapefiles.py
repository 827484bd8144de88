#!/usr/bin/env python3
"""Converts shapefiles to shapefiles in the standard dialect and compares what pyshp and GDAL read in the output with what pyshp
reads in the input: vertices, z, attributes, closed rings, encoding and coordinate system.

    standard_shapefiles.py --tesselink build/release/tesselink [--examples examples] [--data ../shared/data]

Without the data folder the examples alone are compared. Exit codes: 0 agrees, 1 deviates, 77 pyshp or GDAL is not there.
"""
import argparse
import math
import pathlib
import shutil
import struct
import subprocess
import sys
import tempfile

import shapefiles
from shapefiles import Deviation, check, partner, shapefile, single

POINTS = {1, 8, 11, 18, 21, 28}
RINGS = {5, 15, 25, 31}
WITH_Z = {11, 13, 15, 18, 31}
STRIP = 0
EXPLAINED = {
    "OSGeo__shapelib/3dpoints.shp": "pyshp takes the number of records from the index's header, which is wrong; the file's length counts",
}


class Rows:
    """A table as its published layout has it, byte by byte: fields, rows, deletion marks."""

    def __init__(self, path):
        self.bytes = path.read_bytes()
        count, self.header, self.length = struct.unpack_from("<IHH", self.bytes, 4)
        self.fields, offset = [], 1
        for at in range(32, self.header - 31, 32):
            if self.bytes[at] == 0x0D:
                break
            name = self.bytes[at:at + 11].split(b"\0")[0].rstrip(b" ")
            kind, length, decimals = chr(self.bytes[at + 11]), self.bytes[at + 16], self.bytes[at + 17]
            self.fields.append((name, kind, offset, length, decimals))
            offset += length
        self.count = min(count, (len(self.bytes) - self.header) // self.length) if self.length else 0

    def deleted(self, row):
        return row < self.count and self.bytes[self.header + self.length * row] == ord("*")

    def row(self, row, codec):
        """The values that are carried along, as text."""
        start, values = self.header + self.length * row, []
        for _, kind, offset, length, _ in self.fields:
            if kind not in "CNFDL" or not length:
                continue
            value = self.bytes[start + offset:start + offset + length] if row < self.count else b""
            value = value.split(b"\0")[0].rstrip(b" ")
            values.append(decoded(value, codec) if kind == "C" else decoded(value, codec).strip(" "))
        return values


def decoded(value, codec):
    try:
        return value.decode(codec or "utf-8")
    except (UnicodeDecodeError, LookupError):
        return value.decode("cp1252", "replace")


def codec_of(path):
    """What .cpg file and language byte say, as far as the drawings at hand need it; None: UTF-8 or else 1252."""
    cpg = partner(path, ".cpg")
    if cpg:
        name = cpg.read_text(errors="replace").strip().upper()
        return {"1250": "cp1250", "ANSI 1250": "cp1250", "ISO-8859-1": "iso8859-1"}.get(name)
    mark = partner(path, ".dbf").read_bytes()[29]
    return {0x01: "cp437", 0x02: "cp850", 0x03: "cp1252", 0x59: "cp1252"}.get(mark)


def parts_of(shape):
    if shape.shapeType in POINTS:
        return [[i] for i in range(len(shape.points))]
    parts = []
    for index, (start, end) in enumerate(zip(shape.parts, [*shape.parts[1:], len(shape.points)])):
        part = list(range(start, end))
        if shape.shapeType == 31 and shape.partTypes[index] == STRIP:
            part = part[::2] + part[1::2][::-1]
        parts.append(part)
    return parts


def expected(path, rows):
    """(vertices, row) of every record that the output should hold."""
    records = []
    with shapefile.Reader(shp=str(path), shx=str(partner(path, ".shx"))) as reader:
        for number in range(len(reader)):
            shape = reader.shape(number)
            if shape.shapeType == 0 or not shape.points or (rows and rows.deleted(number)):
                continue
            z = [single(v) for v in shape.z] if shape.shapeType in WITH_Z and getattr(shape, "z", None) is not None else []
            for part in parts_of(shape):
                vertices = [(*map(float, shape.points[i][:2]), z[i] if i < len(z) else 0.0) for i in part]
                vertices = [v for v in vertices if all(map(math.isfinite, v))]
                if shape.shapeType in RINGS and vertices and vertices[0][:2] != vertices[-1][:2]:
                    vertices.append(vertices[0])
                if vertices and (len(vertices) > 1 or shape.shapeType in POINTS):
                    records.append((vertices, number))
    return records


def check_geometry(output, records):
    high = any(v[2] for vertices, _ in records for v in vertices)
    with shapefile.Reader(shp=str(output), shx=str(output.with_suffix(".shx"))) as reader:
        check(len(reader) == len(records), f"{len(reader)} records, {len(records)} expected")
        for number, (vertices, _) in enumerate(records):
            shape = reader.shape(number)
            z = list(shape.z) if high else [0.0] * len(shape.points)
            read = [(*map(float, p[:2]), h) for p, h in zip(shape.points, z)]
            check(read == vertices, f"record {number + 1} is {read[:3]}..., not {vertices[:3]}...")
        if records:
            points = [v for vertices, _ in records for v in vertices]
            check(list(reader.bbox) == [f(p[i] for p in points) for f in (min, max) for i in (0, 1)], "the box is wrong")
            if high:
                check(list(reader.zbox) == [f(p[2] for p in points) for f in (min, max)], f"the z range is {reader.zbox}")


def check_table(output, path, rows, records):
    check(output.with_suffix(".cpg").read_text() == "UTF-8", "the .cpg file does not say UTF-8")
    with shapefile.Reader(dbf=str(output.with_suffix(".dbf")), encoding="utf-8") as reader:
        check(reader.numRecords == len(records), f"pyshp reads {reader.numRecords} rows, not {len(records)}")
        for record in reader.iterRecords():
            check(len(record) == len(reader.fields) - 1, "pyshp reads a short row")
    carried = [f for f in rows.fields if f[1] in "CNFDL" and f[3]] if rows else []
    if not carried:
        return
    ours = Rows(output.with_suffix(".dbf"))
    kept = [(f[1], f[4]) for f in ours.fields]
    check(kept == [(f[1], f[4]) for f in carried], f"the fields are {ours.fields}")
    codec = codec_of(path)
    for number, (_, row) in enumerate(records):
        got, wanted = ours.row(number, "utf-8"), rows.row(row, codec)
        check(got == wanted, f"row {number + 1} is {got}, not {wanted}")


def check_by_gdal(output, records):
    run = subprocess.run(["ogrinfo", "-ro", "-q", "-al", output], capture_output=True, text=True, errors="replace", check=True)
    check(not run.stderr, f"GDAL says {run.stderr.strip()!r}")
    check(run.stdout.count("OGRFeature(") == len(records), "GDAL reads another number of features")


def check_file(program, path, folder):
    output = folder / "out.shp"
    for file in folder.glob("out.*"):
        file.unlink()
    if not partner(path, ".shx"):
        return 0
    dbf = partner(path, ".dbf")
    try:
        rows = Rows(dbf) if dbf else None
        records = expected(path, rows)
    except Exception:  # pylint: disable=broad-except; what pyshp cannot read is the business of another comparison
        return 0
    run = subprocess.run([program, "convert", "-q", "--dialect", "standard", path, output], capture_output=True, text=True,
                         errors="replace", timeout=120)
    check(run.returncode == 0, run.stderr)
    check_geometry(output, records)
    check_table(output, path, rows, records)
    check_by_gdal(output, records)
    prj = partner(path, ".prj")
    written = output.with_suffix(".prj")
    check(written.exists() == bool(prj and prj.read_bytes().strip()), "a .prj file is there or is not")
    check(not written.exists() or written.read_bytes().strip() == prj.read_bytes().strip(), "the .prj file differs")
    return len(records)


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
            try:
                total += check_file(options.tesselink, path, pathlib.Path(folder))
            except (Deviation, subprocess.SubprocessError) as deviation:
                name = "/".join(path.parts[-2:])
                bad += name not in EXPLAINED
                print(f"{name}: {deviation}: {EXPLAINED[name]}" if name in EXPLAINED else f"DEVIATES {name}: {deviation}")
    print(f"{len(paths)} shapefiles, {total} records compared, {bad} deviate")
    return 1 if bad or not total else 0


sys.exit(main())
