"""What programs read in a file, as elements that can be compared: `tesselink cat`, ezdxf, GDAL, pyshp, and readers of the
text layouts for which no other program is at hand."""
import dataclasses
import json
import logging
import math
import re
import struct
import subprocess

import shapefile
from ezdxf import recover
from osgeo import gdal, ogr

from shapefiles import check, partner

logging.disable(logging.CRITICAL)

POINT, LINE, CHAIN, TEXT, CIRCLE, ARC = "point", "line", "polyline", "text", "circle", "arc"
KINDS = {0: POINT, 1: LINE, 2: CHAIN, 3: TEXT, 4: CIRCLE, 6: ARC}
NO_CODE = "0900000"
COLOURS = {
    "BLACK": (0, 0, 0), "BLUE": (0, 0, 255), "DARKGRAY": (60, 60, 60), "GREEN": (60, 255, 0), "LIGHTGREEN": (50, 205, 50),
    "LIGHTBLUE": (173, 216, 230), "MAROON": (178, 96, 48), "PURPLE": (160, 32, 240), "BROWN": (165, 42, 42),
    "LIGHTGRAY": (211, 211, 211), "RED": (255, 0, 0), "PINK": (255, 12, 203), "YELLOW": (255, 255, 0), "ORANGE": (255, 165, 0),
    "SALMON": (250, 128, 144), "VIOLET": (238, 130, 232), "LIGHTYELLOW": (255, 255, 232), "WHITE": (255, 255, 255)}


@dataclasses.dataclass(frozen=True)
class Element:
    """What is None, the format or the program does not tell."""
    kind: str
    xyz: tuple
    layer: str = None
    text: str = None
    size: float = None
    angle: float = None
    just: int = None
    closed: bool = None
    colour: int = None
    rgb: tuple = None
    style: str = None
    code: str = None
    radius: float = None
    start: float = None
    end: float = None
    values: tuple = None  # the attributes of the record
    drawn: bool = False  # a chain stands for the curve
    beyond: tuple = ()  # coordinates x that have no y left

    def but(self, **changes):
        return dataclasses.replace(self, **changes)


def normal(e):
    """One form for what is the same: a closed chain ends on its first vertex, a plain point has no symbol."""
    if e.closed and len(e.xyz) > 1 and e.xyz[0] != e.xyz[-1]:
        e = e.but(xyz=e.xyz + e.xyz[:1])
    if e.kind == POINT and e.text == "NOSTATUS":
        e = e.but(text="")
    if e.style == "":
        e = e.but(style="CONTINUOUS")
    for key in ("text", "layer"):
        value = getattr(e, key)
        if value and any("\udc80" <= c <= "\udcff" for c in value):
            e = e.but(**{key: decoded(raw(value))})
    return e.but(code="") if e.code and e.code.startswith(NO_CODE) else e


def raw(text):
    """The bytes of a text, in which bytes that are no UTF-8 stand escaped."""
    return text.encode("utf-8", "surrogateescape")


def decoded(line):
    """Bytes of a text file as the command line shows them."""
    try:
        return line.decode("utf-8")
    except UnicodeDecodeError:
        return "".join(LETTERS_1252[byte] for byte in line)


# A byte without a letter is the letter of its own number.
LETTERS_1252 = [bytes([b]).decode("cp1252", "ignore") or chr(b) for b in range(256)]


def undecoded(text):
    """The bytes that are shown as such a text, where they are no UTF-8."""
    return bytes(map(LETTERS_1252.index, text))


def table_codec(cpg, dbf):
    """What a table names as its encoding, as far as the drawings have one; None for nothing."""
    name = cpg.read_text(errors="replace").strip().upper() if cpg else ""
    codec = {"1250": "cp1250", "ANSI 1250": "cp1250", "ISO-8859-1": "latin-1"}.get(name)
    return codec if name else {0x01: "cp437", 0x02: "cp850", 0xC8: "cp1250"}.get(dbf.read_bytes()[29])


def drawing_codec(path):
    """The code page that a drawing before AC1021 names."""
    head = path.read_bytes()
    release = re.search(rb"\$ACADVER[\r\n\0 ]+(?:1|\x01\0?)[\r\n ]*AC(\d{4})", head)
    page = re.search(rb"\$DWGCODEPAGE[\r\n\0 ]+(?:3|\x03\0?)[\r\n ]*([A-Za-z0-9_-]+)", head)
    known = page and re.fullmatch(r"(?:ANSI_|DOS)(\d{3,4})", page[1].decode().upper())
    if not known or (release and int(release[1]) >= 1021):
        return None
    return None if known[1] in ("932", "936", "949", "950") else "cp" + known[1]


# ---- tesselink


def tesselink(program, *arguments):
    run = subprocess.run([program, *map(str, arguments)], capture_output=True, timeout=300, check=False)
    return run.returncode, run.stdout.decode("utf-8"), run.stderr.decode("utf-8", "replace")


def by_tesselink(program, path, *options):
    """The elements, and whether the reading ended early."""
    code, out, errors = tesselink(program, "cat", *options, path)
    check(code in (0, 3), f"cat: exit code {code}: {errors.strip()[:200]}")
    return [from_cat(json.loads(line)) for line in out.splitlines()], code == 3


def number(value):
    return math.nan if value is None else value


def from_cat(e):
    kind = KINDS[e["bType"]]
    # Where x and y are out of step, the shorter array counts.
    xyz = tuple(zip(*(map(number, e[k]) for k in "xY"), map(number, e["Z"] + [0.0] * len(e["x"]))))
    curve = kind in (CIRCLE, ARC)
    angled = kind in (POINT, TEXT)
    return Element(
        kind, xyz, e["Layer"], e["Text"] if angled else "", number(e["TextSize"]) if kind == TEXT else 0.0,
        number(e["TextAng"]) if angled else 0.0, e["TextJust"] if kind == TEXT else 0, e["Closed"], e["Colour"],
        tuple(e["RGB"] >> shift & 255 for shift in (0, 8, 16)), e["LineStyle"], e["CDFCode"],
        number(e["Rad"]) if curve else None, number(e["AngStart"]) if kind == ARC else None,
        number(e["AngEnd"]) if kind == ARC else None, beyond=tuple(map(number, e["x"][len(e["Y"]):])))


# ---- drawings


def by_ezdxf(path):
    """The elements, and what ezdxf finds to repair."""
    document, auditor = recover.readfile(path, errors="surrogateescape")
    found = {e.message for e in auditor.errors + auditor.fixes}
    return [from_ezdxf(e) for e in document.modelspace()], found


def from_ezdxf(e):
    kind = e.dxftype()
    at = {"layer": e.dxf.layer, "colour": e.dxf.color, "style": e.dxf.linetype}
    if kind == "POINT":
        return normal(Element(POINT, (tuple(e.dxf.location),), **at))
    if kind == "LINE":
        return normal(Element(LINE, (tuple(e.dxf.start), tuple(e.dxf.end)), **at))
    if kind == "POLYLINE":
        xyz = tuple(tuple(v.dxf.location) for v in e.vertices)
        if not e.is_3d_polyline and e.dxf.hasattr("elevation"):
            check(all(v[2] == e.dxf.elevation.z for v in xyz), "a polyline's height is not that of its vertices")
        return normal(Element(CHAIN, xyz, closed=e.is_closed, **at))
    if kind == "TEXT":
        just = e.dxf.halign + 16 * (e.dxf.valign if e.dxf.valign in (1, 2, 3) else 0)
        place = e.dxf.align_point if just and e.dxf.hasattr("align_point") else e.dxf.insert
        return normal(Element(TEXT, (tuple(place),), text=e.plain_text(), size=e.dxf.height, angle=e.dxf.rotation, just=just, **at))
    if kind == "CIRCLE":
        return normal(Element(CIRCLE, (tuple(e.dxf.center),), radius=e.dxf.radius, **at))
    check(kind == "ARC", f"a {kind} in a drawing")
    return normal(Element(ARC, (tuple(e.dxf.center),), radius=e.dxf.radius, start=e.dxf.start_angle, end=e.dxf.end_angle, **at))


class Warnings:
    """What GDAL says while it is at work."""

    def __enter__(self):
        self.texts = []
        gdal.PushErrorHandler(lambda _kind, _number, text: self.texts.append(text))
        return self.texts

    def __exit__(self, *_):
        gdal.PopErrorHandler()


def by_gdal_dxf(path):
    with Warnings() as texts:
        source = ogr.Open(str(path))
        check(source is not None, f"GDAL does not open the drawing: {texts}")
        elements = [from_gdal_dxf(feature) for feature in source.GetLayer(0)]
    return elements, set(texts)


LABEL = re.compile(r',(\w):"?([^",)]*)"?')


def from_gdal_dxf(feature):
    shape = feature.GetGeometryRef()
    check(shape is not None, "GDAL reads an entity without a place")
    xyz = tuple((p + (0.0,))[:3] for p in shape.GetPoints() or [])
    at = {"layer": feature.GetField("Layer"), "style": feature.GetField("Linetype")}
    style = feature.GetStyleString() or ""
    if style.startswith("LABEL"):
        # The text itself comes first and may hold anything.
        told = dict(LABEL.findall(style[style.rindex('"'):]))
        place = int(told["p"]) - 1
        just = (0, 32, 48, 16)[place // 3] + place % 3
        return normal(Element(TEXT, xyz, text=feature.GetField("Text") or "", size=float(told.get("s", "0g")[:-1]),
                              angle=float(told.get("a", 0)), just=just, **at))
    return normal(Element(POINT if shape.GetGeometryName() == "POINT" else CHAIN, xyz, **at))


# ---- shapefiles

OWN_FIELDS = ["Desc", "Code", "ColorNum", "ColorName"]
TEXT_FIELDS = ["Text", "TextAngle", "TextSize"]


def with_own_fields(e, names, values, carried):
    """The values that the program itself puts into a table, as those of the element; carried ones stay attributes."""
    if carried:
        return normal(e.but(values=tuple(values)))
    told = dict(zip(names, values))
    e = e.but(layer=told["Desc"], code=told["Code"], colour=int(told["ColorNum"]), rgb=COLOURS[told["ColorName"]])
    if "Text" in told:
        e = e.but(text=told["Text"], angle=float(told["TextAngle"]), size=float(told["TextSize"]))
    return normal(e)


def by_pyshp(path, carried, with_table=True):
    files = {key: str(path.with_suffix("." + key)) for key in ("shp", "shx", "dbf")[:3 if with_table else 2]}
    with shapefile.Reader(**files, encoding="utf-8") as reader:
        names = [f[0] for f in reader.fields[1:]] if with_table else []
        elements = []
        for i in range(len(reader)):
            shape = reader.shape(i)
            z = shape.z if hasattr(shape, "z") else [0.0] * len(shape.points)
            xyz = tuple((float(p[0]), float(p[1]), float(h)) for p, h in zip(shape.points, z))
            e = Element(POINT if shape.shapeTypeName.startswith("POINT") else CHAIN, xyz)
            elements.append(with_own_fields(e, names, list(reader.record(i)), carried) if with_table else e)
    return elements, set()


def by_gdal_shp(path, carried, with_table=True):
    with Warnings() as texts:
        source = ogr.Open(str(path))
        check(source is not None, f"GDAL does not open the shapefile: {texts}")
        layer = source.GetLayer(0)
        plan = layer.GetLayerDefn()
        names = [plan.GetFieldDefn(i).GetName() for i in range(plan.GetFieldCount())]
        elements = []
        for feature in layer:
            shape = feature.GetGeometryRef()
            check(shape.GetGeometryCount() == 0, "GDAL reads a shape of several parts")
            xyz = tuple((p + (0.0,))[:3] for p in shape.GetPoints())
            e = Element(POINT if shape.GetGeometryName() == "POINT" else CHAIN, xyz)
            values = [feature.GetField(i) for i in range(len(names))]
            elements.append(with_own_fields(e, names, values, carried) if with_table else e)
    return elements, set(texts)


def record_numbers(path):
    """The record, from 0, of each element that a shapefile holds, by pyshp; those of deleted rows are left out."""
    numbers = []
    deleted = DeletedRows(partner(path, ".dbf"))
    with shapefile.Reader(shp=str(path), shx=str(partner(path, ".shx"))) as reader:
        for i in range(len(reader)):
            shape = reader.shape(i)
            if shape.shapeType == 0 or not shape.points or i in deleted:
                continue
            single = shape.shapeType in (1, 8, 11, 18, 21, 28)
            numbers += [i] * (1 if single else len(shape.parts))
    return numbers


class DeletedRows:
    def __init__(self, path):
        self.bytes = path.read_bytes() if path else b""
        self.header, self.length = struct.unpack_from("<HH", self.bytes, 8) if len(self.bytes) > 32 else (0, 0)

    def __contains__(self, row):
        at = self.header + self.length * row
        return bool(self.length) and self.bytes[at:at + 1] == b"*"

    def __bool__(self):
        return any(row in self for row in range((len(self.bytes) - self.header) // self.length if self.length else 0))


def attributes(path):
    """A row of nothing and the rows of a table by pyshp; texts are as the table's encoding, or else UTF-8 or 1252, has them."""
    cpg, dbf = partner(path, ".cpg"), partner(path, ".dbf")
    codec = table_codec(cpg, dbf)

    def text(value):
        if not isinstance(value, str):
            return value
        for name in (codec or "utf-8", "cp1252"):
            try:
                return value.encode("latin-1").decode(name)
            except UnicodeDecodeError:
                pass
        return value

    with shapefile.Reader(dbf=str(dbf), encoding="latin-1") as reader:
        check(all(f[1] in "CNFDL" for f in reader.fields), "fields that are not carried along")
        rows = [tuple(map(text, record)) if record is not None else None for record in reader.iterRecords()]
        return (None,) * (len(reader.fields) - 1), rows


# ---- text layouts


def letters(vertical, horizontal):
    return {"B": 16, "C": 32, "T": 48}.get(vertical, 0) + {"C": 1, "R": 2}.get(horizontal, 0)


def by_landmark_layout(path):
    elements, chain = [], None

    def done():
        if chain and chain[2]:
            elements.append(Element(CHAIN, tuple(chain[2]), layer=chain[0], closed=chain[1], rgb=COLOURS.get(chain[0])))

    lines = path.read_bytes().splitlines()
    check(lines[0].startswith(b"METAFILE,") if lines else True, "no header line")
    for line in map(decoded, lines[1:]):
        key, rest = line.split(",", 1)
        fields = [f.strip() for f in rest.split(",")]
        if key == "XY":
            chain[2].append((float(fields[0]), float(fields[1]), 0.0))
            continue
        done()
        chain = None
        if key in ("LINE", "POLYGON"):
            chain = (fields[-1], key == "POLYGON", [])
        elif key == "VECTOR":
            x1, y1, x2, y2 = map(float, fields[:4])
            chain = (fields[-1], False, [(x1, y1, 0.0), (x2, y2, 0.0)])
        else:
            check(key == "TEXT", f"a line begins {key!r}")
            text, rest = rest[rest.index("'") + 1:rest.rindex("'")], rest[rest.rindex("'") + 2:].split(",")
            elements.append(Element(TEXT, ((float(rest[0]), float(rest[1]), 0.0),), layer=rest[-1], text=text,
                                    size=float(rest[2]), angle=float(rest[4]), just=letters(*rest[5]), rgb=COLOURS.get(rest[-1])))
    done()
    return list(map(normal, elements)), set()


def leading_number(columns):
    found = re.match(r" *(-?(\d+\.?\d*|\.\d+)(E[-+]?\d+)?)", columns)
    return float(found[1]) if found else 0.0


def by_cdf_layout(path):
    elements, head, chain = [], None, []

    def done():
        if chain:
            elements.append(normal(Element(CHAIN, tuple(chain), closed=head[8:9] == "1", code=head[1:8])))
            chain.clear()

    for raw in path.read_bytes().split(b"\r\n")[:-1]:
        line = decoded(raw)
        if line[0] == "C":
            if line[1] == "U":
                done()
            chain.append((leading_number(line[17:32]), leading_number(line[2:17]), 0.0))
            continue
        done()
        if line[0] == "B":
            head = line
            continue
        check(line[0] == "D" and line[40] == "H", f"a line begins {line[:41]!r}")
        text = decoded(raw[46:80]).strip(" ")
        elements.append(normal(Element(
            TEXT, ((leading_number(line[16:31]), leading_number(line[1:16]), 0.0),), text=text, size=leading_number(line[32:37]),
            angle=leading_number(line[37:40]), just=letters(line[42], line[41]), closed=head[8:9] == "1", code=head[1:8])))
    done()
    points = partner(path, ".pts")
    for raw in points.read_bytes().split(b"\r\n")[:-1] if points else ():
        found = re.fullmatch(rb"DXF Point \((.*)", raw[:40].rstrip(b" "), re.DOTALL)
        check(found is not None, f"a line of the point file begins {raw[:40]!r}")
        x, y = (leading_number(decoded(raw[a:b])) for a, b in ((40, 50), (53, 63)))
        elements.append(Element(POINT, ((x, y, 0.0),), text=decoded(found[1])))
    return elements, set()


def by_grid_layout(path):
    elements, left = [], 0
    for line in path.read_bytes().decode("utf-8", "surrogateescape").split("\r\n")[:-1]:
        fields = line.split(",")
        if left == 0:
            check(fields[0] == "SEC" and len(fields) == 5, f"a chain begins {line!r}")
            left, chain = int(fields[4]), []
            elements.append((tuple(f.strip(" ") for f in fields[1:4]), chain))
        else:
            chain.append((float(fields[0]), float(fields[1]), 0.0))
            left -= 1
    check(left == 0, f"{left} vertices are missing")
    return [Element(CHAIN, tuple(chain), values=values) for values, chain in elements], set()
