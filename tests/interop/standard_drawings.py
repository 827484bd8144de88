#!/usr/bin/env python3
"""Holds drawings that tesselink writes in the standard dialect against ezdxf, GDAL and tesselink's own reader.

Every drawing is converted to another one. ezdxf must have nothing to repair in that, GDAL must open it without a
warning, and its elements must come back with their kind, vertices, layer, colour and text.

    standard_drawings.py --tesselink build/release/tesselink --examples examples [--data ../shared/data]

Exit codes: 0 agrees, 1 deviates, 77 the folder of real drawings (or ezdxf) is not there and the rest agrees.
"""

import argparse
import os
import random
import re
import shutil
import subprocess
import sys
import tempfile

import drawings
from drawings import ARC, CIRCLE, POINT, Deviation, check

import ezdxf
from ezdxf import recover

# Beside what has a tolerance (numbers are written with 15 digits, z with 7) all of this must be equal.
EXACT = ("Closed", "Colour", "TextJust")
NEAR = ("Rad", "AngStart", "AngEnd", "TextSize")


def elements_of(path):
    return list(map(as_written, split_points(drawings.elements_of("--dialect", "standard", path))))


def split_points(elements):
    """A point of several vertices is written as several points."""
    for e in elements:
        for i in range(len(e["x"]) if e["bType"] == POINT else 1):
            yield {**e, **{key: [e[key][i]] for key in ("x", "Y", "Z")}} if e["bType"] == POINT else e


def as_written(e):
    """A circle without radius is written as a point, a closed chain ends on its first vertex."""
    if e["bType"] in (CIRCLE, ARC) and e["Rad"] == 0:
        e = {**e, "bType": POINT}
    if e["bType"] == POINT:
        return {**e, "Text": "", "TextAng": 0.0, "AngStart": 0.0, "AngEnd": 0.0}
    z = e["Z"] + [0.0] * (len(e["x"]) - len(e["Z"]))
    vertices = list(zip(e["x"], e["Y"], z))
    if e["Closed"] and vertices[0] != vertices[-1]:
        vertices.append(vertices[0])
    return {**e, "x": [v[0] for v in vertices], "Y": [v[1] for v in vertices], "Z": [v[2] for v in vertices]}


def layer_as_written(name):
    return re.sub(r"[^A-Za-z0-9$_\u0080-\U0010ffff -]|^ | $", "_", name)


def near(a, b, tolerance):
    return len(a) == len(b) and all(abs(x - y) <= tolerance * max(1, abs(x)) for x, y in zip(a, b))


def compare(before, after):
    check(len(before) == len(after), f"{len(before)} elements came back as {len(after)}")
    for number, (a, b) in enumerate(zip(before, after), 1):
        what = f"element {number} of kind {a['bType']}: "
        check(a["bType"] == b["bType"], what + f"came back as {b['bType']}")
        check(b["Layer"] == layer_as_written(a["Layer"]), what + f"layer {a['Layer']} came back as {b['Layer']}")
        if a["bType"] != POINT:
            check(a["Text"] == b["Text"], what + f"text {a['Text']!r} came back as {b['Text']!r}")
            check(near([a["TextAng"]], [b["TextAng"]], 1e-12), what + "its angle changed")
        for key in EXACT:
            check(a[key] == b[key], what + f"{key} {a[key]} came back as {b[key]}")
        for key in NEAR if a["bType"] != POINT else ():
            check(near([a[key]], [b[key]], 1e-6), what + f"{key} {a[key]} came back as {b[key]}")
        check(near(a["x"], b["x"], 1e-12) and near(a["Y"], b["Y"], 1e-12) and near(a["Z"], b["Z"], 1e-5),
              what + "its vertices changed")


def audit(path):
    document, loading = recover.readfile(path)
    auditor = document.audit()
    found = loading.errors + loading.fixes + auditor.errors + auditor.fixes
    check(not found, "ezdxf: " + "; ".join(e.message for e in found[:3]))


def open_with_gdal(path):
    if shutil.which("ogrinfo"):
        run = subprocess.run(["ogrinfo", "-ro", "-al", "-q", path], capture_output=True, text=True, errors="replace")
        check(run.returncode == 0 and not run.stderr, f"GDAL: {run.stderr.strip()[:200]}")


def convert(path, output):
    """The number of elements that came back; None for what is no drawing."""
    code, _, errors = drawings.tesselink("convert", "-O", "-q", "--dialect", "standard", path, output)
    if code != 0:
        check("is no DXF drawing" in errors, f"convert: exit code {code}: {errors.strip()[:200]}")
        return None
    audit(output)
    open_with_gdal(output)
    before = elements_of(path)
    compare(before, elements_of(output))
    return len(before)


def generated(folder):
    """Drawings of everything that ezdxf makes, with the texts that a code page lacks."""
    for maker in (drawings.add_arcs, drawings.add_polylines, drawings.add_splines, drawings.add_texts):
        document = ezdxf.new("R2018")
        maker(document.modelspace(), random.Random(11))
        for text in ("Größe ½ €", "Жук 100%% ^J", "\U0001F600", "\\U+0041"):
            document.modelspace().add_text(text, dxfattribs={"insert": (0, 0), "layer": "Öl (Жук)"})
        path = os.path.join(folder, maker.__name__ + ".dxf")
        document.saveas(path)
        yield path


def real_drawings(data):
    for folder, _, names in sorted(os.walk(os.path.join(data, "dxf"))):
        yield from (os.path.join(folder, name) for name in sorted(names) if name.lower().endswith(".dxf"))


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--tesselink", default="build/release/tesselink")
    parser.add_argument("--examples", default="examples")
    parser.add_argument("--data", default="../shared/data")
    options = parser.parse_args()
    drawings.TESSELINK = os.path.abspath(options.tesselink)
    faults = converted = elements = 0
    with tempfile.TemporaryDirectory() as folder:
        inputs = [os.path.join(options.examples, name)
                  for name in ("all-entities.dxf", "quarter-section.asc", "quarter-section.shp", "wells.shp")]
        for path in [*inputs, *generated(folder), *real_drawings(options.data)]:
            try:
                count = convert(path, os.path.join(folder, "standard.dxf"))
                converted += count is not None
                elements += count or 0
            except Deviation as deviation:
                faults += 1
                print(f"FAULT {path}: {deviation}")
    print(f"{converted} drawings converted, {elements} elements came back, {faults} faults")
    return 1 if faults else 0 if os.path.isdir(os.path.join(options.data, "dxf")) else 77


if __name__ == "__main__":
    sys.exit(main())
