#!/usr/bin/env python3
"""Converts drawings to CDF and compares what `tesselink cat` delivers of the CDF file with what it delivers of the drawing:
every chain and text with its vertices, as far as the columns hold them, and what the columns cut with what is said of it.

    cdf.py --tesselink build/release/tesselink [--examples examples] [--data ../shared/data]

Exit codes: 0 agrees, 1 deviates, 77 the folder of real drawings is not there and the examples agree.
"""
import argparse
import json
import math
import os
import pathlib
import re
import subprocess
import sys
import tempfile

POINT, LINE, POLYLINE, TEXT, CIRCLE, ARC = 0, 1, 2, 3, 4, 6
COORDINATE, OF_POINT, TEXT_COLUMNS = 15, 10, 34


class Deviation(Exception):
    pass


def check(condition, message):
    if not condition:
        raise Deviation(message)


def lenient(text):
    number = re.match(r"-?(\d+\.?\d*|\.\d+)(E[-+]?\d+)?", text)
    return float(number[0]) if number else 0.0


class Columns:
    """Numbers as columns hold them, and how many they cut."""

    def __init__(self):
        self.cut = 0

    def number(self, value, width=COORDINATE):
        if value is None:  # no number, or infinite
            self.cut += 1
            return 0.0
        text = "0" if value == 0 else f"{value:.15G}"
        self.cut += len(text) > width
        return lenient(text[:width])


def stored(values):
    """The array of one coordinate: a first value of 0 gives way to the second."""
    array = [0.0]
    for value in values:
        if len(array) == 1 and array[0] == 0:
            array[0] = value
        else:
            array.append(value)
    return array


def expected_chain(element, columns):
    vertices = list(zip(element["x"], element["Y"]))
    x, y = (stored([columns.number(v[i]) for v in vertices]) for i in (0, 1))
    closed = element["Closed"] and len(element["CDFCode"]) == 7
    return None if len(x) == len(y) == 1 and x[0] == y[0] == 0 else (POLYLINE, closed, x, y)


def expected_text(element, columns):
    text = "".join(c if c >= " " else " " for c in element["Text"])
    if not text.strip(" "):
        return None
    x, y = columns.number(element["x"][0]), columns.number(element["Y"][0])
    size = columns.number(float(round(element["TextSize"])), 5)
    angle = columns.number(element["TextAng"], 3)
    columns.number(float(len(text.encode())), 3)
    return None if x == y == 0 else (TEXT, text[:TEXT_COLUMNS].strip(" ") if text.isascii() else None, x, y, size, angle)


def compare_curve(element, found):
    """A chain on the circle, from the arc's start to its end."""
    cx, cy, radius = element["x"][0], element["Y"][0], element["Rad"]
    slack = 1e-6 * radius + 1e-9 * max(abs(cx), abs(cy), 1)
    if any(v == 0 for v in (found["x"][0], found["Y"][0])) or len(found["x"]) != len(found["Y"]):
        return  # out of step
    for x, y in zip(found["x"], found["Y"]):
        check(abs(math.hypot(x - cx, y - cy) - radius) <= slack, f"({x}, {y}) is not on the circle about ({cx}, {cy})")
    start, end = (0, 360) if element["bType"] == CIRCLE else (element["AngStart"], element["AngEnd"])
    for index, angle in ((0, start), (-1, end)):
        x, y = cx + radius * math.cos(math.radians(angle)), cy + radius * math.sin(math.radians(angle))
        check(math.hypot(x - found["x"][index], y - found["Y"][index]) <= 10 * slack, "a curve does not end where it should")


def compare(source, found):
    """Returns how many elements were compared, how many numbers of the drawing and of the points were cut, and how many
    points there are."""
    drawing, points = Columns(), Columns()
    count = point_lines = 0
    rest = iter(found)
    for number, element in enumerate(source, 1):
        kind = element["bType"]
        if kind == POINT:
            for x, y in zip(element["x"], element["Y"]):
                points.number(x, OF_POINT), points.number(y, OF_POINT)
                point_lines += 1
            continue
        wanted = None
        if kind in (LINE, POLYLINE):
            wanted = expected_chain(element, drawing)
        elif kind == TEXT:
            wanted = expected_text(element, drawing)
        if wanted is None and kind not in (CIRCLE, ARC):
            continue
        arrived = next(rest, None)
        count += 1
        check(arrived is not None, f"element {number} is missing")
        if kind in (CIRCLE, ARC):
            compare_curve(element, arrived)
        elif kind == TEXT:
            text = arrived["Text"] if wanted[1] is not None else None
            came = (arrived["bType"], text, arrived["x"][0], arrived["Y"][0], arrived["TextSize"], arrived["TextAng"])
            check(came == wanted, f"element {number} came back as {came} instead of {wanted}")
        else:
            came = (arrived["bType"], arrived["Closed"], arrived["x"], arrived["Y"])
            check(came == wanted, f"element {number} came back as {str(came)[:200]} instead of {str(wanted)[:200]}")
    check(next(rest, None) is None, "too many elements arrived")
    return count, drawing.cut, points.cut, point_lines


def told(summary, suffix):
    """How many numbers are said to have been cut."""
    texts = [w["text"] for w in summary["warnings"] if w["kind"] in ("cut digits" + suffix, "cut numbers" + suffix)]
    return sum(int(re.search(r": (\d+), the first one", text)[1]) for text in texts)


def run(program, *arguments):
    process = subprocess.run([program, *map(str, arguments)], capture_output=True, timeout=600)
    return process.returncode, process.stdout.decode("utf-8"), process.stderr.decode("utf-8", "replace")


def elements_of(program, path):
    code, out, errors = run(program, "cat", path)
    check(code == 0, f"cat: exit code {code}: {errors[:200]}")
    return [json.loads(line) for line in out.splitlines()]


def check_file(program, path, folder):
    """How many elements were compared; None for a drawing that cannot be read."""
    cdf, pts = folder / "out.cdf", folder / "out.pts"
    for file in (cdf, pts):
        file.unlink(missing_ok=True)
    code, out, _ = run(program, "convert", "--json", path, cdf)
    if code != 0:
        return None
    summary = json.loads(out)
    count, cut, cut_points, points = compare(elements_of(program, path), elements_of(program, cdf))
    said = told(summary, "")
    check(said == cut, f"{said} numbers are said to be cut, {cut} are")
    said = told(summary, " of points")
    check(said == cut_points, f"{said} numbers of points are said to be cut, {cut_points} are")
    lines = pts.read_bytes().count(b"\r\n") if pts.exists() else 0
    check(lines == points, f"{lines} lines of {points} points")
    return count + points


def check_chain(program, survey, folder):
    """A survey through every text format, a drawing and a shapefile: its chains arrive in the last file as they began."""
    steps = [(survey, "1.cdf", "--smart-assign"), ("1.cdf", "2.dxf"), ("2.dxf", "3.shp", "--shape-type=polylines"),
             ("3.shp", "4.grd", "--township=DESC", "--range=CODE", "--section=COLORNUM")]
    for source, target, *options in steps:
        code, _, errors = run(program, "convert", *options, folder / source, folder / target)
        check(code == 0, f"{target}: exit code {code}: {errors[:200]}")
    lines = (folder / "4.grd").read_bytes().decode().split("\r\n")
    check(lines.pop() == "", "the last line has no end")
    start = [e for e in elements_of(program, survey) if e["bType"] == POLYLINE]
    matched = [e for e in elements_of(program, folder / "1.cdf") if e["bType"] == POLYLINE]
    at = 0
    for number, (element, coded) in enumerate(zip(start, matched, strict=True), 1):
        head = lines[at].rsplit(",", 1)[0].split(",", 1)
        vertices = [tuple(map(float, line.split(","))) for line in lines[at + 1:at + 2 + len(element["x"]) - 1]]
        check(head[0] == "SEC" and int(lines[at].rsplit(",", 1)[1]) == len(vertices), f"chain {number} begins {lines[at]}")
        check(coded["CDFCode"] != "0900000" and head[1].startswith(coded["Layer"]), f"chain {number} is of {head[1]}")
        check(vertices == list(zip(element["x"], element["Y"])), f"chain {number} arrived as {vertices[:3]}")
        at += 1 + len(vertices)
    check(start and at == len(lines), f"{len(lines) - at} lines more than the survey's {len(start)} chains have")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--tesselink", required=True)
    parser.add_argument("--examples", type=pathlib.Path)
    parser.add_argument("--data", type=pathlib.Path)
    options = parser.parse_args()
    paths = sorted(p for p in options.examples.iterdir() if p.suffix in (".asc", ".shp", ".dxf")) if options.examples else []
    present = bool(options.data) and options.data.is_dir()
    if present:
        paths += sorted(p for p in options.data.rglob("*") if p.suffix.lower() in (".shp", ".dxf"))
    else:
        print("the real drawings were skipped: their folder is not there")
    bad = total = unread = 0
    with tempfile.TemporaryDirectory() as folder:
        os.environ["XDG_CONFIG_HOME"] = folder
        if options.examples:
            check_chain(options.tesselink, options.examples.resolve() / "quarter-section.asc", pathlib.Path(folder))
        for path in paths:
            try:
                count = check_file(options.tesselink, path, pathlib.Path(folder))
                unread += count is None
                total += count or 0
            except (Deviation, subprocess.TimeoutExpired) as deviation:
                bad += 1
                print(f"DEVIATES {'/'.join(path.parts[-2:])}: {deviation}")
    print(f"{len(paths)} drawings, {unread} of them not readable, {total} elements compared, {bad} deviate")
    return 1 if bad or not total else 0 if present else 77


sys.exit(main())
