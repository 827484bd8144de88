#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Transforms points between ten pairs of systems and compares them with cs2cs; with a grid that this writes, and where grids are
missing with what projinfo ranks first; then curves and texts with what their own vertices say.

    projections.py --tesselink build/release/tesselink --data tests/data

Exit codes: 0 agrees, 1 deviates, 77 a program that reads is not there.
"""
import argparse
import json
import math
import os
import pathlib
import random
import shutil
import struct
import subprocess
import sys
import tempfile

TEXAS, OHIO, GULF, LOUISIANA = (-99.5, 30, -97.5, 31.5), (-83.5, 40.2, -82, 41.5), (-94.5, 27, -93, 28), (-93.3, 30.5, -92, 32)
# From, to, whether each has latitude first, and the area of the points. At sea cs2cs takes other operations than projinfo
# ranks first there.
PAIRS = [
    ("EPSG:4267", "EPSG:4326", True, True, TEXAS), ("EPSG:4269", "EPSG:4326", True, True, OHIO),
    ("EPSG:4269", "EPSG:2277", True, False, TEXAS), ("EPSG:2277", "EPSG:26914", False, False, TEXAS),
    ("EPSG:26914", "EPSG:2277", False, False, TEXAS), ("EPSG:32039", "EPSG:26714", False, False, TEXAS),
    ("EPSG:3734", "EPSG:32617", False, False, OHIO), ("EPSG:26715", "EPSG:4326", False, True, LOUISIANA),
    ("EPSG:32614", "EPSG:4267", False, True, TEXAS), ("EPSG:26914", "EPSG:26915", False, False, GULF)]
NEEDING = [("EPSG:4267", "EPSG:4269", TEXAS), ("EPSG:32039", "EPSG:26914", TEXAS), ("EPSG:4267", "EPSG:4326", TEXAS),
           ("EPSG:26715", "EPSG:26915", GULF), ("EPSG:4269", "EPSG:4152", OHIO), ("EPSG:26917", "EPSG:6346", OHIO),
           ("EPSG:4267", "EPSG:4152", OHIO), ("EPSG:2277", "EPSG:32614", TEXAS), ("EPSG:4267", "EPSG:4617", OHIO)]
METRES_PER_DEGREE = 111_320
LOCAL = 'LOCAL_CS["Plant grid",LOCAL_DATUM["Plant",0],UNIT["Foot_US",0.3048006096012192],AXIS["East",EAST],AXIS["North",NORTH]]'


class Deviation(Exception):
    pass


def check(holds, message):
    if not holds:
        raise Deviation(message)


def run(*command, text=None, **environment):
    done = subprocess.run([str(part) for part in command], input=text, capture_output=True, text=True,
                          env={**os.environ, "PROJ_NETWORK": "OFF", **environment})
    return done.returncode, done.stdout, done.stderr


def cs2cs(source, target, points, swaps=(False, False), **environment):
    lines = "".join("%.12f %.12f\n" % (point[::-1] if swaps[0] else point) for point in points)
    code, text, errors = run("cs2cs", "-f", "%.12f", source, target, text=lines, **environment)
    check(code == 0, f"cs2cs {source} {target}: {errors}")
    found = [tuple(map(float, line.split()[:2])) for line in text.splitlines()]
    return [point[::-1] for point in found] if swaps[1] else found


def drawing(path, entities):
    groups = [(0, "SECTION"), (2, "ENTITIES"), *(g for e in entities for g in e), (0, "ENDSEC"), (0, "EOF")]
    path.write_text("".join(f"{code}\n{value!r}\n" if isinstance(value, float) else f"{code}\n{value}\n" for code, value in groups))


def point(x, y):
    return [(0, "POINT"), (10, x), (20, y)]


def elements(program, path, *options, **environment):
    code, text, errors = run(program, "cat", "--dialect", "standard", *options, path, **environment)
    check(code == 0, f"{options}: {errors}")
    return [json.loads(line) for line in text.splitlines()]


def places(program, path, *options, **environment):
    return [v for e in elements(program, path, *options, **environment) for v in zip(e["x"], e["Y"])]


def distance(a, b, in_degrees):
    return math.dist(a, b) * (METRES_PER_DEGREE if in_degrees else 1)


def points_in(area, count):
    west, south, east, north = area
    return [(random.uniform(west, east), random.uniform(south, north)) for _ in range(count)]


def compare_with_cs2cs(program, folder):
    total, worst = 0, 0
    for source, target, lat_first, lat_last, area in PAIRS:
        geographic = points_in(area, 200)
        base = "EPSG:4267" if source in ("EPSG:32039", "EPSG:26715") else "EPSG:4269"
        points = geographic if lat_first else cs2cs(base, source, geographic, (True, False))
        points = [(round(x, 9), round(y, 9)) for x, y in points]
        drawing(folder / "points.dxf", [point(*p) for p in points])
        wanted = cs2cs(source, target, points, (lat_first, lat_last))
        found = places(program, folder / "points.dxf", "--from-crs", source, "--to-crs", target)
        check(len(found) == len(wanted), f"{source} to {target}: {len(found)} points, not {len(wanted)}")
        away = max(distance(a, b, lat_last) for a, b in zip(found, wanted))
        check(away <= 1e-6, f"{source} to {target}: {away} m from cs2cs")
        total, worst = total + len(found), max(worst, away)
    return f"{total} points of {len(PAIRS)} pairs, the worst {worst:.1e} m from cs2cs"


def needs(source, target, place):
    """Whether what projinfo ranks first lacks a grid or is a ballpark, and the grids."""
    bbox = ",".join(f"{v + d:.7f}" for d in (-1e-6, 1e-6) for v in place)
    _, text, errors = run("projinfo", "-s", source, "-t", target, "--bbox", bbox, "--summary")
    first = text.splitlines()[text.startswith("Candidate"):]
    first = next((line for line in first if not line.startswith("Note")), "")
    check(first, f"projinfo {source} {target}: {errors}")
    return "grid missing" in first or "ballpark" in first


def compare_refusals(program, folder):
    refused = 0
    for source, target, area in NEEDING:
        for place in points_in(area, 3):
            base = "EPSG:4267" if source in ("EPSG:32039", "EPSG:26715") else "EPSG:4269"
            at = place if source[5:6] == "4" else cs2cs(base, source, [place], (True, False))[0]
            drawing(folder / "place.dxf", [point(*at)])
            options = ("--from-crs", source, "--to-crs", target, folder / "place.dxf")
            code, _, errors = run(program, "cat", *options)
            check((code != 0) == needs(source, target, place), f"{source} to {target} at {place}: exit code {code}, {errors}")
            check(code == 0 or "--allow-ballpark" in errors, errors)
            check(code == 0 or run(program, "cat", "--allow-ballpark", *options)[0] == 0, f"{source} to {target} is not allowed")
            refused += code != 0
    check(0 < refused < 3 * len(NEEDING), f"{refused} refused")
    local = ("--from-crs", folder / "local.prj", folder / "place.dxf")
    (folder / "local.prj").write_text(LOCAL)
    check(run(program, "cat", "--to-crs", "EPSG:26914", *local)[0] == 1, "a local system leads elsewhere")
    check(run(program, "cat", "--to-crs", folder / "local.prj", *local)[0] == 0, "a local system does not lead to itself")
    return f"{refused} of {3 * len(NEEDING)} refused, as projinfo ranks"


def ntv2(path, south, north, east, west, shift):
    """A grid of 1 degree whose shifts, in seconds, grow with the latitude; longitudes are positive west, as in the format."""
    seconds = [v * 3600.0 for v in (south, north, east, west)]
    rows, columns = north - south + 1, west - east + 1

    def record(name, value):
        kinds = {int: lambda v: struct.pack("<ii", v, 0), float: lambda v: struct.pack("<d", v), str: lambda v: v.ljust(8).encode()}
        return name.ljust(8).encode() + kinds[type(value)](value)

    head = [("NUM_OREC", 11), ("NUM_SREC", 11), ("NUM_FILE", 1), ("GS_TYPE", "SECONDS"), ("VERSION", "TEST"), ("SYSTEM_F", "NAD27"),
            ("SYSTEM_T", "NAD83"), ("MAJOR_F", 6378206.4), ("MINOR_F", 6356583.8), ("MAJOR_T", 6378137.0), ("MINOR_T", 6356752.314)]
    head += [("SUB_NAME", "TEST"), ("PARENT", "NONE"), ("CREATED", ""), ("UPDATED", ""), ("S_LAT", seconds[0]), ("N_LAT", seconds[1]),
             ("E_LONG", seconds[2]), ("W_LONG", seconds[3]), ("LAT_INC", 3600.0), ("LONG_INC", 3600.0), ("GS_COUNT", rows * columns)]
    nodes = [struct.pack("<ffff", shift[0] + row, shift[1] + row, 0, 0) for row in range(rows) for _ in range(columns)]
    path.write_bytes(b"".join(record(*r) for r in head) + b"".join(nodes) + b"END".ljust(16))


def compare_with_a_grid(program, folder):
    options = ("--from-crs", "EPSG:4267", "--to-crs", "EPSG:4269")
    points = points_in(TEXAS, 100)
    drawing(folder / "points.dxf", [point(*p) for p in points])
    _, _, refusal = run(program, "cat", *options, folder / "points.dxf")
    name = next((word.strip(",;") for word in refusal.split() if ".tif" in word), None)
    check(name, f"no grid is named: {refusal}")
    database = next(pathlib.Path(line) / "proj.db" for line in run("projinfo", "--searchpaths")[1].splitlines()
                    if (pathlib.Path(line) / "proj.db").exists())
    grids = folder / "grids"
    grids.mkdir()
    shutil.copy(database, grids)
    ntv2(grids / name, 29, 33, 96, 101, (0.5, 1.25))
    there = {"PROJ_DATA": str(grids), "PROJ_LIB": str(grids)}
    found = places(program, folder / "points.dxf", *options, **there)
    wanted = [(x - (1.25 + y - 29) / 3600, y + (0.5 + y - 29) / 3600) for x, y in points]
    check(max(distance(a, b, True) for a, b in zip(found, wanted)) < 1e-3, "not what the grid says")
    away = max(distance(a, b, True) for a, b in zip(found, cs2cs("EPSG:4267", "EPSG:4269", points, (True, True), **there)))
    check(away <= 1e-6, f"{away} m from cs2cs with a grid")
    code, text, errors = run(program, "convert", "--json", *options, folder / "points.dxf", folder / "out.dxf", **there)
    used = json.loads(text)["coordinateSystem"]["operations"]
    check(code == 0 and [(u["grids"], u["count"]) for u in used] == [([name], 100)], f"{used} {errors}")
    drawing(folder / "beyond.dxf", [point(*points[0]), point(-80, 30)])
    code, text, errors = run(program, "convert", "--json", *options, folder / "beyond.dxf", folder / "beyond-out.dxf", **there)
    told = {w["kind"] for w in json.loads(text)["warnings"]}
    check(code == 0 and "not transformed" in told and json.loads(text)["skipped"]["point"] == 1, f"beyond the grid: {text}")
    return f"a grid {name}, {away:.1e} m from cs2cs"


def compare_directions(program, folder):
    """A text and an arc against chains in their place, and from feet to metres in one projection."""
    x, y, angle, height = 3_100_000.0, 10_000_000.0, 30.0, 12.0
    along = [(x + 100 * math.cos(math.radians(angle + t)), y + 100 * math.sin(math.radians(angle + t))) for t in (0, 90)]
    text = [(0, "TEXT"), (10, x), (20, y), (40, height), (50, angle), (1, "A 1")]
    circle = [(0, "CIRCLE"), (10, x), (20, y), (40, 500.0)]
    drawing(folder / "text.dxf", [text, point(x, y), *(point(*p) for p in along), circle])
    for target in ("EPSG:26915", "EPSG:3082"):
        written, *marks, ring = elements(program, folder / "text.dxf", "--from-crs", "EPSG:2277", "--to-crs", target)
        at, ahead, up = ((mark["x"][0], mark["Y"][0]) for mark in marks)
        vertices = list(zip(ring["x"], ring["Y"]))
        turned = math.degrees(math.atan2(ahead[1] - at[1], ahead[0] - at[0]))
        check(abs(math.remainder(written["TextAng"] - turned, 360)) < 1e-3, f"angle {written['TextAng']}, not {turned}")
        check(abs(written["TextSize"] / (math.dist(up, at) * height / 100) - 1) < 1e-4, f"height {written['TextSize']}")
        check(ring["bType"] == 2 and len(vertices) > 100, "a circle is distorted")
        radii = [math.dist(v, at) / (500 * 0.3048006096) for v in vertices]
        check(all(abs(r - 1) < 5e-3 for r in radii) and max(radii) - min(radii) < 1e-4, f"radii {min(radii)} to {max(radii)}")
    written, *_, ring = elements(program, folder / "text.dxf", "--from-crs", "EPSG:2277", "--to-crs", "EPSG:32139")
    check(written["TextAng"] == angle and abs(written["TextSize"] / height - 1200 / 3937) < 1e-12, f"{written}")
    check(ring["bType"] == 4 and abs(ring["Rad"] / 500 - 1200 / 3937) < 1e-12, f"{ring}")
    return "texts and curves turn and scale as their surroundings"


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--tesselink", required=True)
    parser.add_argument("--data")
    program = os.path.abspath(parser.parse_args().tesselink)
    if not shutil.which("cs2cs") or not shutil.which("projinfo"):
        print("skipped: cs2cs and projinfo are not here")
        return 77
    random.seed(27)
    failed = 0
    with tempfile.TemporaryDirectory() as folder:
        for test in (compare_with_cs2cs, compare_refusals, compare_with_a_grid, compare_directions):
            try:
                print(f"{test.__name__}: {test(program, pathlib.Path(folder))}")
            except Deviation as deviation:
                failed += 1
                print(f"{test.__name__}: DEVIATES: {deviation}")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
