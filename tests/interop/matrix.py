#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Converts every drawing to every format in the standard dialect and compares what programs read there with what the drawing
holds: ezdxf and GDAL in drawings, pyshp and GDAL in shapefiles, readers of the layouts in the rest, Tesselink in all. What a
shapefile holds is also held against pyshp; what a drawing holds is for drawings.py.

What a format cannot hold is a rule in matrix_rules.py. The rules that had something to lose must be those of the tables in
docs/dialects.md, under "Standard"; with a folder of a few drawings less may be lost.

    matrix.py --tesselink build/release/tesselink --examples examples --docs docs/dialects.md --data tests/data

Exit codes: 0 agrees, 1 deviates, 77 a program that reads is not there.
"""
import argparse
import datetime
import gc
import math
import multiprocessing
import os
import pathlib
import random
import struct
import sys
import tempfile
import traceback
from collections import Counter, defaultdict

try:
    import ezdxf
    import shapefile
    import generated_drawings
    import matrix_readers as read
    import matrix_rules as rules
except ImportError as error:
    print(f"skipped: {error}")
    sys.exit(77)
from matrix_readers import CHAIN, CIRCLE, POINT, TEXT, Deviation, check, normal, partner, tesselink

INPUTS = ("shp", "dxf", "asc", "cdf", "mol")
# Of what is lost, what a run says; any of them.
TOLD = {
    "areas": ["areas that became"], "attributes": ["its attributes"], "baselines": ["whose baseline"],
    "blank texts": ["nothing but blanks"], "closed marks": ["without a mark", "that chains are closed", "areas that became"], "colours": ["whose colour"],
    "curves": ["whose curves"], "decimals of sizes": ["size was rounded"], "entity codes": ["whose entity code"],
    "groups of points": ["of several points"], "justification": ["whose justification"], "layers": ["whose layer"],
    "letters": ["letters"], "line breaks": ["control characters"], "line types": ["whose line type"],
    "long numbers": ["digits", "became others"], "long texts": ["cut"], "measures": ["m values", "not written"],
    "numbers of colours": ["is no colour"], "other shapes": ["not written"], "parts": ["elements of several parts"],
    "patches": ["MultiPatch"], "points": ["not written", "point file"], "signs in names": ["has another name"],
    "single vertices": [""],  # counted as written as another kind
    "symbols": ["whose symbol"], "texts": ["not written"], "true colours": ["not quite"], "unmatched layers": ["no entity type"],
    "z": ["no z"],
    # Of the classic dialect.
    "arcs": ["not written"], "origin": ["not written"], "digits": ["rounded to 7 digits"], "vertices at the origin": ["vertices at (0, 0, 0)"],
}
OUTPUTS = ("shp", "shp points", "shp polylines", "dxf", "dxf 2007", "asc", "cdf", "grd")
FORMATS = ("shp", "dxf", "asc", "cdf", "grd")
COLUMNS = ("shp", "dxf", "dxf 2007", "asc", "cdf", "grd")  # of the standard dialect
SLOW, MANY = 20_000_000, 100  # bytes; drawings, from which on every loss must be found
SURVEY = """METAFILE,AXIS,M,1,0,0
LINE, , , , ,RED
XY,0,5
XY,3,0
POLYGON, , , , ,BROWN
XY,1,1
XY,2,1
XY,2,2
VECTOR,1,2,3,4,GREEN
TEXT, 'Lease 12, north',4,5,2,,30,TC,,BLUE
"""


# ---- comparison


def near(a, b, share):
    return a == b or (math.isnan(a) and math.isnan(b)) or abs(a - b) <= share * max(abs(a), abs(b))


def same_value(wanted, value):
    """Values of tables, as pyshp gives them."""
    def plain(v):
        if isinstance(v, datetime.date):
            return v.strftime("%Y/%m/%d")
        return float(v) if isinstance(v, (int, float)) else (v or "").strip(" ")
    if isinstance(wanted, bool) and isinstance(value, str):
        return value in ("TtYy" if wanted else "FfNn")
    return plain(wanted) == plain(value)


def on_curve(e, found):
    """A chain on the circle, between the arc's ends, as near as it should be. GDAL's run clockwise."""
    (cx, cy, _), radius = e.xyz[0], e.radius
    nearest = min(e.drawn[0], e.drawn[1] * radius)
    slack = 1e-6 * radius + 1e-9 * max(abs(cx), abs(cy), 1)
    for (x, y, _), (x2, y2, _) in zip(found, found[1:] or found):
        check(abs(math.hypot(x - cx, y - cy) - radius) <= slack, f"({x}, {y}) is not on the circle about ({cx}, {cy})")
        sagitta = radius - math.hypot((x + x2) / 2 - cx, (y + y2) / 2 - cy)
        check(sagitta <= 1.001 * nearest + 1e-9 * (radius + max(abs(cx), abs(cy))), f"a chord of a circle is {sagitta} off its radius of {radius}")
    start, end = (0, 360) if e.kind == CIRCLE else (e.start, e.end)
    ends = [(cx + radius * math.cos(a), cy + radius * math.sin(a)) for a in map(math.radians, (start, end))]

    def off(*vertices):
        return max(math.dist(a, b[:2]) for a, b in zip(ends, vertices))
    check(min(off(found[0], found[-1]), off(found[-1], found[0])) <= 10 * slack, "a curve does not end where it should")


def on_bulges(e, found):
    """A chain through the vertices, straight or along the arc between two of them."""
    slack = 1e-9 * max(max(map(abs, v[:2])) for v in e.xyz) + 1e-9
    found = [v for v, before in zip(found, [None, *found]) if before is None or math.dist(v[:2], before[:2]) > slack]
    check(math.dist(e.xyz[0][:2], found[0][:2]) <= slack, "a chain begins elsewhere")
    at = 0
    for (x, y, _), (x2, y2, _), bulge in zip(e.xyz, e.xyz[1:], e.bulges + (0.0,) * len(e.xyz)):
        if math.dist((x, y), (x2, y2)) <= slack:
            continue
        end = next((i for i in range(at + 1, len(found)) if math.dist((x2, y2), found[i][:2]) <= slack), None)
        check(end is not None, f"a chain does not pass ({x2}, {y2})")
        if bulge == 0:
            check(end == at + 1, f"a straight segment has {end - at - 1} vertices between its ends")
        else:
            side = (1 / bulge - bulge) / 4
            cx, cy = (x + x2) / 2 - (y2 - y) * side, (y + y2) / 2 + (x2 - x) * side
            start, stop = (math.degrees(math.atan2(b - cy, a - cx)) for a, b in ((x, y), (x2, y2)))
            on_curve(read.Element(read.ARC, ((cx, cy, 0.0),), radius=math.hypot(x - cx, y - cy), start=start, end=stop, drawn=e.drawn),
                     found[at:end + 1])
        at = end
    check(at == len(found) - 1, "a chain goes on behind its end")


def compare_one(e, found):
    check(found.kind == (CHAIN if e.drawn else e.kind), f"is a {found.kind}, not a {e.kind}")
    if e.drawn and e.drawn[1] < math.inf:
        (on_bulges if e.kind == CHAIN else on_curve)(e, found.xyz)
    elif not e.drawn:
        check(len(e.xyz) == len(found.xyz), f"has {len(found.xyz)} vertices, not {len(e.xyz)}")
        for a, b in zip(e.xyz, found.xyz) if e.xyz != found.xyz else ():
            check(near(a[0], b[0], 1e-14) and near(a[1], b[1], 1e-14) and near(a[2], b[2], 1e-14), f"has a vertex {b}, not {a}")
        same = len(e.bulges) == len(found.bulges) and all(near(a, b, 1e-14) for a, b in zip(e.bulges, found.bulges))
        check(same, f"bulges are {found.bulges}, not {e.bulges}")
        for key in ("radius", "start", "end"):
            a, b = getattr(e, key), getattr(found, key)
            turn = key != "radius" and None not in (a, b) and abs(math.remainder(a - b, 360)) < 1e-4
            check(None in (a, b) or turn or near(a, b, 1e-14), f"{key} is {b}, not {a}")
        check(None in (e.closed, found.closed) or e.closed == found.closed, f"closed is {found.closed}, not {e.closed}")
    check(e.parts == found.parts, f"has parts at {found.parts}, not {e.parts}")
    for key in ("layer", "text", "just", "colour", "rgb", "code", "area", "measures"):
        a, b = getattr(e, key), getattr(found, key)
        check(None in (a, b) or a == b, f"{key} is {b!r}, not {a!r}")
    same = None in (e.style, found.style) or e.style.upper() == found.style.upper()
    check(same, f"line type is {found.style}, not {e.style}")
    check(None in (e.size, found.size) or near(e.size, found.size, 1e-14), f"size is {found.size}, not {e.size}")
    turned = 0 if None in (e.angle, found.angle) else math.remainder(e.angle - found.angle, 360)
    check(math.isnan(turned) or abs(turned) <= 1e-11, f"angle is {found.angle}, not {e.angle}")
    if None not in (e.values, found.values):
        same = len(e.values) == len(found.values) and all(map(same_value, e.values, found.values))
        check(same, f"attributes are {found.values}, not {e.values}")


def compare(expected, found):
    expected, found = (list(map(normal, elements)) for elements in (expected, found))
    for number, (e, f) in enumerate(zip(expected, found), 1):
        try:
            compare_one(e, f)
        except Deviation as deviation:
            raise Deviation(f"element {number} ({e.kind}) {deviation}") from None
    check(len(expected) == len(found), f"{len(found)} elements, not {len(expected)}")


# ---- programs


def pyshp(job):
    elements = list(read.by_pyshp(job.output, job.carried))
    vertices = [v for e in elements for v in e.xyz]
    with shapefile.Reader(shp=str(job.output), shx=str(job.output.with_suffix(".shx"))) as reader:
        if vertices:
            check(list(reader.bbox) == [f(v[i] for v in vertices) for f in (min, max) for i in (0, 1)], f"the box is {reader.bbox}")
        if reader.shapeType in (11, 13, 15, 18):
            check(list(reader.zbox) == [f(v[2] for v in vertices) for f in (min, max)], f"the range of z is {reader.zbox}")
    check(job.output.with_suffix(".cpg").read_text() == "UTF-8", "the .cpg file does not say UTF-8")
    given = partner(job.source.path, ".prj") if job.source.format == "shp" else None
    system, written = given.read_bytes().strip() if given else b"", job.output.with_suffix(".prj")
    check((written.read_bytes().strip() if written.exists() else b"") == system, "the coordinate system is another")
    return elements


def own_areas(job):
    return [rules.boundaries(e) for e in own(job)]  # that an area is nested as a hatch is, drawings.py looks at


def own(job):
    return read.by_tesselink(job.program, job.output)


PROGRAMS = {
    "shp": {"pyshp": pyshp, "GDAL": lambda job: read.by_gdal(job.output), "Tesselink": own},
    "dxf": {"ezdxf": lambda job: read.by_ezdxf(job.output), "GDAL": lambda job: read.by_gdal(job.output), "Tesselink": own},
    "dxf 2007": {"ezdxf": lambda job: read.by_ezdxf(job.output), "GDAL": lambda job: read.by_gdal(job.output), "Tesselink": own_areas},
    "asc": {"a reader of the layout": lambda job: read.by_landmark_layout(job.output), "Tesselink": own},
    "cdf": {"a reader of the layout": lambda job: read.by_cdf_layout(job.output), "Tesselink": own},
    "grd": {"a reader of the layout": lambda job: read.by_grid_layout(job.output)},
}


# ---- one drawing


class Source:
    """A drawing to be converted."""

    def __init__(self, options, path, folder):
        self.program, self.path, self.folder = options.tesselink, path, folder
        self.format = path.suffix.lower()[1:]
        self.sections = options.examples / "sections.dbf"
        self.chosen = self.records = None
        self.names, self.rows, self.empty = [], [], ()
        table = partner(path, ".dbf") if self.format == "shp" else None
        if table and table.stat().st_size > 32:
            with shapefile.Reader(dbf=str(table), encoding="latin-1") as reader:
                self.names = [f[0] for f in reader.fields[1:]]
                texts = [f[0] for f in reader.fields[1:] if f[1] == "C" and f[0].strip()] or [n for n in self.names if n.strip()]
            self.chosen = (texts[0], texts[-1]) if texts else None
            self.empty, self.rows = read.attributes(path)

    def elements(self, fields, dialect="standard"):
        elements = read.by_tesselink(self.program, self.path, *fields, dialect=dialect)
        # A shapefile tells no colours, except for layers without a name.
        return [e if self.format != "shp" or e.colour else e.but(rgb=None) for e in elements]


class Job:
    """One conversion: what was asked, and where the output lies."""

    def __init__(self, source, output):
        self.program, self.source, self.format = source.program, source, output.split()[0]
        self.column = output if output in COLUMNS else self.format
        self.carried = source.format == "shp" and self.format in ("shp", "dxf") and bool(source.names)
        self.output = source.folder / f"out.{self.format}"
        self.fields, self.options = [], []
        if self.format == "shp":
            self.options = ["--shape-type", *output.split()[1:]] if " " in output else []
        elif self.format == "grd":
            names = [n for n in source.names if n.strip() and n.isascii()]
            self.townships = (names * 3)[:3] if names else ["TWP", "RGE", "SEC"]
            self.options = [o for pair in zip(("--township", "--range", "--section"), self.townships) for o in pair]
            self.options += [] if names else ["--table", source.sections]
        elif output == "dxf 2007":
            self.options = ["--release", "2007"]
        if self.format not in ("shp", "grd") and source.chosen:
            self.fields = ["--layer-field", source.chosen[0], "--text-field", source.chosen[1]]

    def truth(self):
        """What the drawing holds, with the attributes that the output should have."""
        elements, source = self.source.elements(self.fields), self.source
        records = [record for _, record in source.records] if source.records else None
        if records is not None and not self.fields:
            compare([e for e, _ in source.records], [e.but(closed=e.closed, values=None) for e in elements])
        if self.carried and records:
            return list(with_rows(elements, records, source))
        if self.format == "grd":
            return elements if source.names else with_townships(elements if records else rules.by_part(elements), records)
        return [e.but(values=()) for e in elements] if len(source.names) > 2 else elements


def with_rows(elements, records, source):
    """A label has the row of the shape before it."""
    records, row = iter(records), source.empty
    for e in elements:
        if e.kind != TEXT:
            n = next(records)
            row = source.rows[n] if n < len(source.rows) else source.empty
        yield e.but(values=row)


def with_townships(elements, records):
    given = [("3N", "68W", section) for section in ("14", "15", "11", "10")]
    chain = 0
    for i, e in enumerate(elements):
        row = records[i] if records else chain
        chain += e.kind not in (POINT, TEXT)
        yield e.but(values=given[row] if row < len(given) else ("", "", ""))


class Result:
    def __init__(self):
        self.lost = defaultdict(set)  # by (row, column)
        self.count = Counter()
        self.failures = []

    def add(self, other):
        for key, words in other.lost.items():
            self.lost[key] |= words
        self.count += other.count
        self.failures += other.failures


def attempt(result, what, function, *arguments):
    try:
        function(*arguments, result)
    except Exception as error:  # pylint: disable=broad-except; programs raise what they like on what they cannot read
        shown = "" if isinstance(error, Deviation) else traceback.format_exc(limit=-2)
        result.failures.append((what, f"{type(error).__name__}: {error} {shown}"))


def steps(source, output):
    """What the output does to elements as they were read, which depends on what their texts are known to be."""
    if output not in ("asc", "cdf") or source.format not in ("dxf", "shp"):
        return rules.STANDARD[output]
    dbf = partner(source.path, ".dbf") if source.format == "shp" else None
    codec = read.drawing_codec(source.path) if source.format == "dxf" else dbf and read.table_codec(partner(source.path, ".cpg"), dbf)
    single = codec if codec and codec[2:] not in read.TWO_BYTES else "cp1252"
    return rules.single_bytes(single) + rules.STANDARD[output]


def is_nothing(word, output, elements):
    """Whether nobody misses what is lost: layer 0, blanks around a text, points that are in a file of their own."""
    if word in ("layers", "unmatched layers"):
        skipped = {"grd": (POINT, TEXT), "asc": (POINT,)}.get(output, ())
        return all(e.layer in ("", "0", "Unassociated", output == "asc" and rules.colour_name(e)) or e.kind in skipped for e in elements)
    if word == "long texts":
        return output == "cdf" and all(len(e.text.strip()) <= 34 for e in elements)
    return word == "points" and output == "cdf"


def convert(source, output, result):
    job = Job(source, output)
    for file in source.folder.glob("out.*"):
        file.unlink()
    truth = list(job.truth())
    code, _, errors = tesselink(job.program, "convert", "-O", "--dialect", "standard", *job.options, *job.fields, source.path,
                                job.output)
    check(code == 0, f"exit code {code}: {errors.strip()[:200]}")
    expected, lost = rules.apply(steps(source, output), truth)
    if job.format == "grd" and len(source.names) > 3:
        lost.append("attributes")
    if job.format == "grd" and source.format == "dxf" and any(e.parts for e in source.elements(job.fields)):
        lost.append("parts")
    silent = [word for word in lost if not any(told in errors for told in TOLD[word]) and not is_nothing(word, output, truth)]
    check(not silent, f"lost, but not told: {', '.join(silent)}; told was {errors.strip()}")
    result.lost[source.format, job.column] |= set(lost)
    result.count["conversions"] += 1
    for name, program in PROGRAMS[job.column].items():
        attempt(result, f"{source.path.name} -> {output} by {name}", look, job, name, program, expected)


def convert_classic(source, output, result):
    """Whether the run tells of all that the classic dialect gives up, in reading and in writing."""
    job = Job(source, output)
    for file in source.folder.glob("out.*"):
        file.unlink()
    code, _, errors = tesselink(job.program, "convert", "-O", *job.options, *job.fields, source.path, job.output)
    check(code in (0, 3), f"exit code {code}: {errors.strip()[:200]}")
    given = [*job.fields, *["--blocks", "points"] * (source.format == "dxf")]
    whole, known = source.elements(given), source.elements(given, "classic")
    # Types that are not read are counted, and so is a single vertex at the origin, which counts as none.
    whole = [] if "not read" in errors else whole
    held = [e for e in whole if len(e.xyz) > 1 or not e.xyz or any(e.xyz[0][:2])]
    written = [[e for e in elements if e.kind not in rules.SKIPPED.get(output, ())] for elements in (held, known)]
    lost = [rules.apply(rules.CLASSIC_READING.get(source.format, []), written[0])[1] + ["origin"] * (len(held) < len(whole)),
            rules.apply(rules.CLASSIC[output], written[1])[1]]
    if len(written[1]) < len(known):
        lost[1].append({"shp": "other shapes", "dxf": "arcs", "asc": "points", "grd": "texts"}[job.format])
    silent = [word for word in lost[0] + lost[1]
              if not any(told in errors for told in TOLD[word]) and not is_nothing(word, output, written[1])]
    check(not silent, f"lost, but not told: {', '.join(silent)}; told was {errors.strip()}")
    result.lost["classic", source.format, "reading"] |= set(lost[0])
    result.lost["classic", source.format, job.format] |= set(lost[1])
    result.count["classic conversions"] += 1


def look(job, name, program, expected, result):
    seen, lost = rules.apply(rules.SEEN.get((job.column, name), []), expected)
    result.lost[job.column, name] |= set(lost)
    compare(seen, program(job))
    result.count[name] += len(seen)


def all_of(task):
    """Everything about one drawing. What cannot be read must be refused in so many words."""
    options, path = task
    result = Result()
    with tempfile.TemporaryDirectory() as folder:
        code, _, errors = tesselink(options.tesselink, "cat", "--dialect", "standard", path)
        if code != 0:
            result.count["refused"] += 1
            if code != 1 or not errors.rstrip().splitlines()[-1].startswith("tesselink: "):
                result.failures.append((path.name, f"exit code {code}: {errors.strip()[:200]}"))
            if path.suffix == ".mol":
                for output in COLUMNS:
                    result.lost["mol", output].add("everything (it is refused)")
            return result
        try:
            source = Source(options, path, pathlib.Path(folder))
            source.records = read.source_by_pyshp(path) if source.format == "shp" else None
        except (Deviation, struct.error, shapefile.ShapefileException, UnicodeError, ValueError):
            result.count["not readable by pyshp"] += 1
            return result
        for output in OUTPUTS:
            if output.startswith("shp") and (source.format == "shp") != (output == "shp"):
                continue  # a shapefile becomes one of its own type
            attempt(result, f"{path.name} -> {output}", convert, source, output)
        for output in OUTPUTS:
            if output in ("shp", "dxf 2007"):
                continue
            if source.format != "shp" or partner(path, ".shx"):  # which the classic dialect needs
                attempt(result, f"{path.name} -> {output}, classic", convert_classic, source, output)
    return result


# ---- the tables

HEADINGS = {"shp": "shapefile", "dxf": "DXF", "dxf 2007": "DXF 2007", "asc": "Landmark", "cdf": "CDF", "grd": "T/R Digitizer", "mol": "overlay"}


def tables(lost):
    """The two tables of the document."""
    def words(row, column):
        return ", ".join(sorted(lost.get((row, column), ()))) or "nothing"
    yield "| from, to | " + " | ".join(HEADINGS[c] for c in COLUMNS) + " |"
    yield "|---" * (len(COLUMNS) + 1) + "|"
    yield from (f"| {HEADINGS[row]} | " + " | ".join(words(row, c) for c in COLUMNS) + " |" for row in INPUTS)
    yield from ("", "| in | program | does not find |", "|---|---|---|")
    yield from (f"| {HEADINGS[f]} | {program} | {words(f, program)} |" for f in COLUMNS for program in PROGRAMS[f])


def classic_table(lost):
    def words(row, column):
        return ", ".join(sorted(lost.get(("classic", row, column), ()))) or "nothing"
    columns = ("reading", *FORMATS)
    yield "| from, to | on reading | " + " | ".join(HEADINGS[c] for c in FORMATS) + " |"
    yield "|---" * (len(columns) + 1) + "|"
    yield from (f"| {HEADINGS[row]} | " + " | ".join(words(row, c) for c in columns) + " |" for row in INPUTS if row != "mol")


def cells(lines):
    found = {}
    for line in lines:
        row = [cell.strip() for cell in line.strip("|").split("|")]
        row = row if len(row) != 3 else [row[0] + row[1], row[2]]
        found.update({(row[0], i): set(cell.split(", ")) - {"nothing"} for i, cell in enumerate(row[1:])})
    return found


def inputs(options, folder):
    paths = [p for p in options.examples.iterdir() if p.suffix[1:] in INPUTS]
    for maker in (generated_drawings.add_polylines, generated_drawings.add_texts):
        drawing = ezdxf.new("R2018")
        maker(drawing.modelspace(), random.Random(11))
        for text in ("Größe ½ €", "Жук 100%% ^J", "\U0001F600", "\\U+0041", "50%%%d", "a|b, 'c' \"d\""):
            drawing.modelspace().add_text(text, dxfattribs={"insert": (0, 0), "layer": "Öl (Жук)"})
        paths.append(folder / f"{maker.__name__}.dxf")
        drawing.saveas(paths[-1])
    paths.append(folder / "survey.asc")
    paths[-1].write_text(SURVEY, newline="\r\n")
    for kind in ("asc", "cdf"):  # what was converted serves as an input as well
        paths.append(folder / f"all.{kind}")
        tesselink(options.tesselink, "convert", "-q", "--dialect", "standard", options.examples / "all-entities.dxf", paths[-1])
    return paths + [p for p in options.data.rglob("*") if p.suffix.lower() in (".shp", ".dxf") and p.stat().st_size < SLOW]


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    for name in ("--tesselink", "--examples", "--docs", "--data"):
        parser.add_argument(name, type=lambda text: pathlib.Path(text).resolve(), required=True)
    parser.add_argument("--only", default="", help="drawings whose names hold this")
    options = parser.parse_args()
    total = Result()
    with tempfile.TemporaryDirectory() as folder, multiprocessing.Pool(2, gc.set_threshold, (100_000,)) as pool:
        os.environ["XDG_CONFIG_HOME"] = folder
        tasks = [(options, p) for p in inputs(options, pathlib.Path(folder)) if options.only in str(p)]
        for result in pool.imap_unordered(all_of, sorted(tasks, key=lambda task: -task[1].stat().st_size)):
            total.add(result)
    faults = len(total.failures)
    for what, why in sorted(total.failures):
        print(f"DEVIATES {what}: {why}")
    standard, classic = (part.splitlines() for part in options.docs.read_text(encoding="utf-8").split("### Standard")[-1].split("### Classic"))
    for document, made in ((standard, list(tables(total.lost))), (classic, list(classic_table(total.lost)))):
        documented = cells(document)
        unnamed = [key for key, words in cells(made).items() if not words <= documented.get(key, set())]
        # Readers of the classic dialect lose more than is looked for here.
        if unnamed or (len(tasks) > MANY and document is standard and not set(made) <= set(document)):
            faults += 1
            print(f"DEVIATES: {options.docs} has other tables than those found here:", *made, sep="\n")
    print(f"{len(tasks)} drawings, {dict(total.count)}, {faults} deviate")
    return 1 if faults or not total.count["conversions"] else 0


if __name__ == "__main__":
    sys.exit(main())
