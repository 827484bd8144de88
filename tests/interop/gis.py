#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Converts every drawing to GeoJSON and to a GeoPackage in the standard dialect. What GDAL finds there of a shapefile is what
it finds in the shapefile itself, with the attributes that pyshp finds; what it finds of a drawing is what the program read.

    gis.py --tesselink build/release/tesselink --data tests/data --examples examples

Exit codes: 0 agrees, 1 deviates, 77 a program that reads is not there.
"""
import argparse
import datetime
import json
import math
import multiprocessing
import pathlib
import sqlite3
import struct
import sys
import tempfile
from collections import Counter

try:
    import shapefile
    from osgeo import gdal, ogr
    import matrix_readers as read
except ImportError as error:
    print(f"skipped: {error}")
    sys.exit(77)
from matrix_readers import CHAIN, LINE, POINT, TEXT, Deviation, check, partner, tesselink

LARGE = 4_000_000  # bytes
ogr.UseExceptions()
KINDS = ("points", "lines", "areas", "texts")
POINTS, POLYGONS, PATCH = (1, 4), (3, 6), 31


class Unreadable(Exception):
    """The other programs do not read the source."""


# ---- geometries as lists of vertices


def vertices(shape):
    return [tuple((shape.GetPoint(i) + (0.0,))[:3]) for i in range(shape.GetPointCount())]


def leaves(shape):
    return [leaf for part in shape for leaf in leaves(part)] if shape.GetGeometryCount() else [shape]


def turned(ring):
    """A ring counter-clockwise from its least vertex on, each vertex once, for GDAL closes rings that nearly do; and twice its area."""
    area = sum((a[0] - ring[0][0]) * (b[1] - ring[0][1]) - (b[0] - ring[0][0]) * (a[1] - ring[0][1]) for a, b in zip(ring, ring[1:]))
    ring = ring[::-1] if area < 0 else ring
    ring = [tuple(round(c, 7) for c in v) for i, v in enumerate(ring) if math.dist(v, ring[i - 1]) > 1e-8] or [ring[0]]
    least = min(ring)
    starts = [i for i, v in enumerate(ring) if v == least]
    return min(tuple(ring[i:] + ring[:i]) for i in starts), area


def polygons(shape):
    """Of each polygon the outer ring and its holes."""
    parts = [shape] if ogr.GT_Flatten(shape.GetGeometryType()) == ogr.wkbPolygon else list(shape)
    return [[turned(vertices(ring)) for ring in part] for part in parts]


def plain(shape):
    """What can be compared: chains as they are, polygons whatever way their rings run."""
    if shape is None or shape.IsEmpty():
        return None
    if ogr.GT_Flatten(shape.GetGeometryType()) not in POLYGONS:
        return [v for v in map(vertices, leaves(shape))]
    return Counter((rings[0][0], frozenset(ring for ring, _ in rings[1:])) for rings in polygons(shape))


def check_rings(shape):
    if shape is None or ogr.GT_Flatten(shape.GetGeometryType()) not in POLYGONS:
        return
    for rings in polygons(shape):
        for i, (ring, area) in enumerate(rings):
            check(area >= 0 if i == 0 else area <= 0, f"a ring runs the wrong way: {str(ring)[:100]}")
    for ring in leaves(shape):
        check(ring.GetPointCount() >= 4 and ring.GetPoint(0) == ring.GetPoint(ring.GetPointCount() - 1), "a ring does not close")


def measures(shape):
    found = [leaf.GetPointZM(i) for leaf in leaves(shape) for i in range(leaf.GetPointCount())] if shape and shape.IsMeasured() else []
    return {v for v in found if v[3] > -1e38}


# ---- what the program wrote


def features(path, layer=0):
    return [shape for shape, _ in whole_features(path, layer)]


def whole_features(path, layer=0):
    """Of each feature its geometry, and which attributes have no value."""
    source = ogr.Open(str(path))
    return [(f.GetGeometryRef() and f.GetGeometryRef().Clone(), [not f.IsFieldSetAndNotNull(i) for i in range(f.GetFieldCount())])
            for f in source.GetLayer(layer)]


def from_geojson(path):
    text = json.loads(path.read_text("utf-8"))
    check(text["type"] == "FeatureCollection" and "crs" not in text, "no FeatureCollection, or with a member crs")
    return features(path), [f["properties"] for f in text["features"]]


def from_geopackage(path):
    """Of each table the geometries and the rows."""
    check([p.name for p in path.parent.iterdir() if p.name.startswith(path.name)] == [path.name], "files are left beside it")
    database = sqlite3.connect(path)
    check(database.execute("PRAGMA integrity_check").fetchall() == [("ok",)], "the database is damaged")
    check(not database.execute("PRAGMA foreign_key_check").fetchall(), "a row refers to none")
    database.row_factory = sqlite3.Row
    tables = {}
    for (name,) in database.execute("SELECT table_name FROM gpkg_contents").fetchall():
        rows = [{k: r[k] for k in r.keys()[2:]} for r in database.execute(f"SELECT * FROM {name}")]
        tables[name] = features(path, name), rows
        boxes = database.execute(f"SELECT count(*) FROM rtree_{name}_geom").fetchone()[0]
        check(boxes == sum(g is not None for g in tables[name][0]), f"the index of {name} has {boxes} boxes")
    return tables


def convert(program, source, output):
    as_they_stand = ["--from-crs", "EPSG:4326"] if output.suffix == ".geojson" else []
    code, _, errors = tesselink(program, "convert", "-q", "--dialect", "standard", *as_they_stand, source, output)
    check(code == 0, f"exit code {code}: {errors.strip()[:200]}")
    return output


# ---- shapefiles


def same(wanted, value):
    if isinstance(wanted, datetime.date):
        return value == wanted.isoformat()
    if wanted is None or isinstance(wanted, str):
        return (value or "").strip(" ") == (wanted or "").strip(" ") if isinstance(value, (str, type(None))) else False
    return value is not None and float(value) == float(wanted)


def compare_shapes(path, wanted, found, rows, output):
    check(len(found) == len(wanted), f"{output}: {len(found)} features, not {len(wanted)}")
    for i, ((a, _), b) in enumerate(zip(wanted, found)):
        check_rings(b)
        same_rings = a is not None and b is not None and sorted(map(str, map(turned_only, leaves(a)))) == sorted(map(str, map(turned_only, leaves(b))))
        nested = a is None or not (ogr.GT_Flatten(a.GetGeometryType()) in POLYGONS and same_rings) or a.IsValid()
        check(not nested or plain(a) == plain(b), f"{output}: feature {i} is {str(plain(b))[:200]}, not {str(plain(a))[:200]}")
        check(output == "geojson" or a is None or measures(a) == measures(b), f"{output}: feature {i} has other m values")
    if not partner(path, ".dbf"):
        return len(wanted)
    try:
        _, table = read.attributes(path)
    except (Deviation, shapefile.ShapefileException, ValueError):
        return len(wanted)  # fields that pyshp does not read
    deleted = read.deleted_rows(partner(path, ".dbf"))
    table = [row for i, row in enumerate(table) if i not in deleted]
    for i, (wanted_row, row) in enumerate(zip(table, rows)):
        values = list(row.values())
        check(len(values) == len(wanted_row), f"{output}: row {i} has {len(values)} values, not {len(wanted_row)}")
        for value, by_pyshp, is_null in zip(values, wanted_row, wanted[i][1]):
            agreed = is_null == (by_pyshp in (None, ""))  # the two programs differ in what is no value
            check(not agreed or same(by_pyshp, value), f"{output}: row {i} has {value!r}, not {by_pyshp!r}")
    return len(wanted)


def turned_only(ring):
    return turned(vertices(ring))[0]


def compare_shapefile(program, path, folder):
    deleted = read.deleted_rows(partner(path, ".dbf"))
    with read.pyshp(path, "shp", "shx") as reader:
        if reader.shapeType == PATCH:
            return 0
        records = (partner(path, ".shx").stat().st_size - 100) // 8 - len(deleted) if partner(path, ".shx") else 0
    try:
        wanted = whole_features(path)
    except RuntimeError as error:
        raise Unreadable(error) from error
    if len(wanted) != records:
        raise Unreadable("GDAL and pyshp find other records")
    geometries, properties = from_geojson(convert(program, path, folder / "a.geojson"))
    tables = from_geopackage(convert(program, path, folder / "a.gpkg"))
    check(len(tables) == 1, f"{len(tables)} tables")
    (in_table, rows), = tables.values()
    compare_shapes(path, wanted, in_table, rows, "gpkg")
    return compare_shapes(path, wanted, geometries, properties, "geojson")


# ---- drawings


def wanted_of(e):
    """The vertices of an element by parts; None where its curves are drawn."""
    if e.kind not in (POINT, TEXT, LINE, CHAIN) or any(e.bulges):
        return None
    starts = (0, *e.parts, len(e.xyz))
    parts = [list(e.xyz[a:b]) for a, b in zip(starts, starts[1:]) if a < b]
    if e.kind in (LINE, CHAIN) and not e.area:
        parts = [p + p[:1] if (e.closed and p[0] != p[-1]) or len(p) == 1 else p for p in parts]
    return parts


def compare_element(e, shape, properties, output):
    check_rings(shape)
    wanted = wanted_of(e)
    if e.area and wanted:
        wanted, found = (sorted(turned(list(p))[0] for p in parts) for parts in (wanted, map(vertices, leaves(shape))))
    else:
        found = [vertices(leaf) for leaf in leaves(shape)]
    check(wanted is None or wanted == found, f"{output}: {e.kind} is {str(found)[:200]}, not {str(wanted)[:200]}")
    told = {k: properties.get(k) for k in ("layer", "colour", "text", "textAngle", "textHeight")}
    colour = "#%02x%02x%02x" % e.rgb
    check(told["layer"] == (e.layer or None), f"{output}: layer {told['layer']!r}, not {e.layer!r}")
    check(told["colour"] in (colour, None if colour == "#000000" else colour), f"{output}: colour {told['colour']}, not {colour}")
    text = (e.text, e.angle, e.size) if e.kind == TEXT else (None, None, None)
    check((told["text"], told["textAngle"], told["textHeight"]) == text, f"{output}: text {told}, not {text}")


def kind_of(e):
    return {POINT: "points", TEXT: "texts"}.get(e.kind, "areas" if e.area else "lines")


def compare_drawing(program, path, folder):
    code, _, _ = tesselink(program, "info", "--dialect", "standard", path)
    if code != 0:
        raise Unreadable("is no drawing")
    elements = [e for e in read.by_tesselink(program, path) if all(math.isfinite(c) for v in e.xyz for c in v)]
    geometries, properties = from_geojson(convert(program, path, folder / "a.geojson"))
    tables = from_geopackage(convert(program, path, folder / "a.gpkg"))
    check(len(geometries) == len(elements), f"{len(geometries)} features, not {len(elements)}")
    for e, shape, told in zip(elements, geometries, properties):
        compare_element(e, shape, told, "geojson")
    for kind in KINDS:
        shapes, rows = tables.get(kind, ([], []))
        own = [e for e in elements if kind_of(e) == kind]
        check(len(shapes) == len(own), f"{len(shapes)} {kind}, not {len(own)}")
        for e, shape, told in zip(own, shapes, rows):
            compare_element(e, shape, told, "gpkg")
    return len(elements)


def compare(job):
    program, path = job
    with tempfile.TemporaryDirectory() as name:
        try:
            of_shapes = path.suffix.lower() == ".shp"
            return (compare_shapefile if of_shapes else compare_drawing)(program, path, pathlib.Path(name)), ""
        except (Unreadable, struct.error, shapefile.ShapefileException, IndexError) as error:
            return 0, f"not readable: {path.name}: {error!r}"
        except (Deviation, RuntimeError, sqlite3.Error) as deviation:
            return 0, f"DEVIATES {path}: {deviation}"


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    for name in ("--tesselink", "--data", "--examples"):
        parser.add_argument(name, type=pathlib.Path, required=True)
    options = parser.parse_args()
    paths = sorted(p for folder in (options.data, options.examples) for p in folder.rglob("*")
                   if p.suffix.lower() in (".shp", ".dxf", ".asc", ".cdf") and p.stat().st_size < LARGE)
    with multiprocessing.Pool(2) as pool:
        results = pool.map(compare, [(options.tesselink, p) for p in paths], chunksize=4)
    for told in filter(None, (told for _, told in results)):
        print(told)
    compared, faults = sum(count for count, _ in results), sum(told.startswith("DEVIATES") for _, told in results)
    print(f"{compared} elements of {sum(count > 0 for count, _ in results)} drawings, {faults} drawings deviate")
    return 1 if faults or not compared else 0


if __name__ == "__main__":
    sys.exit(main())
