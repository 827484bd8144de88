# SPDX-License-Identifier: MIT
"""What programs read in a file, as elements that can be compared: `tesselink cat`, ezdxf, GDAL, pyshp, and readers of the
text layouts for which no other program is at hand."""
import dataclasses
import json
import math
import re
import struct
import subprocess

import ezdxf
import shapefile
from ezdxf.lldxf.encoding import decode_dxf_unicode
from osgeo import gdal, ogr

from drawings import Deviation, check  # which keeps the log of ezdxf quiet, too

gdal.UseExceptions()
gdal.PushErrorHandler("CPLQuietErrorHandler")

POINT, LINE, CHAIN, TEXT, CIRCLE, ARC = "point", "line", "polyline", "text", "circle", "arc"
KINDS = {0: POINT, 1: LINE, 2: CHAIN, 3: TEXT, 4: CIRCLE, 6: ARC}
NO_CODE = "0900000"
COLOURS = {
    "BLACK": (0, 0, 0), "BLUE": (0, 0, 255), "DARKGRAY": (60, 60, 60), "GREEN": (60, 255, 0), "LIGHTGREEN": (50, 205, 50),
    "LIGHTBLUE": (173, 216, 230), "MAROON": (178, 96, 48), "PURPLE": (160, 32, 240), "BROWN": (165, 42, 42),
    "LIGHTGRAY": (211, 211, 211), "RED": (255, 0, 0), "PINK": (255, 12, 203), "YELLOW": (255, 255, 0), "ORANGE": (255, 165, 0),
    "SALMON": (250, 128, 144), "VIOLET": (238, 130, 232), "LIGHTYELLOW": (255, 255, 232), "WHITE": (255, 255, 255)}


def nearest(rgb, table):
    return min(table, key=lambda key: sum((a - b) ** 2 for a, b in zip(table[key], rgb)))


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
    bulges: tuple = ()  # of the segments of a chain
    drawn: tuple = None  # a chain stands for the curve, so near it: by a distance, and by a share of the radius
    parts: tuple = ()  # where each further part begins
    area: bool = None  # the parts are rings of one
    measures: tuple = None  # m of each vertex, None where it has none

    def but(self, **changes):
        other = object.__new__(Element)  # dataclasses.replace() takes five times as long
        other.__dict__.update(self.__dict__, **changes)
        return other


def normal(e):
    """One form for what is the same: a closed chain ends on its first vertex, a plain point has no symbol."""
    if e.closed and not e.parts and len(e.xyz) > 1 and e.xyz[0] != e.xyz[-1]:
        e = e.but(xyz=e.xyz + e.xyz[:1])
    if e.bulges:
        bulges = list(e.bulges[:len(e.xyz) - 1])
        while bulges and bulges[-1] == 0:
            bulges.pop()
        e = e.but(bulges=tuple(bulges))
    if e.kind == POINT and e.text == "NOSTATUS":
        e = e.but(text="")
    e = e.but(style="CONTINUOUS") if e.style == "" else e
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


TWO_BYTES = ("932", "936", "949", "950")


def table_codec(cpg, dbf):
    """What a table names as its encoding, as far as the drawings have one; None for nothing."""
    name = re.sub(r"[-_ ]", "", cpg.read_text(errors="replace").strip().upper()) if cpg else ""
    codec = {"ISO88591": "latin-1", "GBK": "cp936", "BIG5": "cp950", "SHIFTJIS": "cp932", "EUCKR": "cp949"}.get(name)
    number = re.fullmatch(r"(?:ANSI|CP|WINDOWS)?(\d{3,4})", name)
    language = {0x01: 437, 0x02: 850, 0x13: 932, 0x4D: 936, 0x4E: 949, 0x4F: 950, 0x78: 950, 0x79: 949, 0x7A: 936, 0x7B: 932, 0xC8: 1250}
    marked = language.get(dbf.read_bytes()[29])
    return codec or (f"cp{number[1]}" if number else None) if name else marked and f"cp{marked}"


def drawing_codec(path):
    """The code page that a drawing before AC1021 names."""
    head = path.read_bytes()
    release = re.search(rb"\$ACADVER[\r\n\0 ]+(?:1|\x01\0?)[\r\n ]*AC(\d{4})", head)
    page = re.search(rb"\$DWGCODEPAGE[\r\n\0 ]+(?:3|\x03\0?)[\r\n ]*([A-Za-z0-9_-]+)", head)
    known = page and re.fullmatch(r"(?:ANSI_|DOS)(\d{3,4})", page[1].decode().upper())
    if not known or (release and int(release[1]) >= 1021):
        return None
    return None if known[1] in TWO_BYTES else "cp" + known[1]


def partner(path, extension):
    same = [p for p in path.parent.iterdir() if p.stem == path.stem and p.suffix.lower() == extension]
    return same[0] if same else None


# ---- tesselink


def tesselink(program, *arguments):
    run = subprocess.run([program, *map(str, arguments)], capture_output=True, timeout=300, check=False)
    return run.returncode, run.stdout.decode("utf-8"), run.stderr.decode("utf-8", "replace")


def by_tesselink(program, path, *options, dialect="standard"):
    code, out, errors = tesselink(program, "cat", "--dialect", dialect, *options, path)
    check(code == 0, f"cat: exit code {code}: {errors.strip()[:200]}")
    return [from_cat(json.loads(line)) for line in out.splitlines()]


def from_cat(e):
    def number(value):
        return math.nan if value is None else value
    kind = KINDS[e["bType"]]
    xyz = tuple(zip(*(map(number, e[k]) for k in "xY"), map(number, e["Z"] + [0.0] * len(e["x"]))))
    curve = kind in (CIRCLE, ARC)
    angled = kind in (POINT, TEXT)
    return Element(
        kind, xyz, e["Layer"], e["Text"] if angled else "", number(e["TextSize"]) if kind in (POINT, TEXT) else 0.0,
        number(e["TextAng"]) if angled else 0.0, e["TextJust"] if kind == TEXT else 0, e["Closed"], e["Colour"],
        tuple(e["RGB"] >> shift & 255 for shift in (0, 8, 16)), e["LineStyle"], e["CDFCode"],
        number(e["Rad"]) if curve else None, number(e["AngStart"]) if kind == ARC else None,
        number(e["AngEnd"]) if kind == ARC else None, bulges=tuple(e.get("Bulges", ())), parts=tuple(e.get("Parts", ())),
        area=e.get("IsArea", False), measures=tuple(e.get("Measures", ())))


# ---- drawings


def by_ezdxf(path):
    document = ezdxf.readfile(path)
    auditor = document.audit()
    found = {e.message for e in auditor.errors + auditor.fixes}
    check(not found, f"ezdxf repairs: {sorted(found)[:3]}")
    bounded, fields = {}, own_fields(document)
    for e in document.modelspace():
        if e.dxftype() == "LWPOLYLINE" and e.has_reactors():  # the boundary of an area, which has the same vertices
            check(tuple(e.get_points("xyb")) == bounded.pop(e.dxf.handle, None), "a boundary is not that of its area")
        else:
            yield from_ezdxf(e, document.layers, bounded).but(values=own_values(e, fields))
    check(not bounded, "an area lacks a boundary")


def own_texts(e):
    """Texts of extended data; one that begins with "=" goes on with the one before."""
    texts = []
    for code, value in e.get_xdata("TESSELINK") if e.has_xdata("TESSELINK") else []:
        if code == 1000 and value.startswith("="):
            texts[-1] += value[1:]
        elif code == 1000:
            texts.append(value)
    return [re.sub(r"\^(.)", lambda m: "^" if m[1] == " " else chr(ord(m[1]) - 64), decode_dxf_unicode(t)) for t in texts]


def own_fields(document):
    """Name, type and length of each field of the first table that layer 0 tells of."""
    fields = [text.split(" ", 4) for text in own_texts(document.layers.get("0")) if text.startswith("field ")]
    return [(name, kind, length) for _, kind, length, _, name in fields]


def own_values(e, fields):
    def typed(kind, length, text):
        if kind in "NF":
            return float(text) if text.strip("*") else None
        if kind == "L":
            return text.strip("?") if length == "1" else None
        return f"{text[:4]}/{text[4:6]}/{text[6:]}" if kind == "D" and len(text) == 8 else text
    if not e.has_xdata("TESSELINK"):
        return None
    given = dict(text.split("=", 1) for text in own_texts(e)[1:])
    try:
        return tuple(typed(kind, length, given.get(name, "")) for name, kind, length in fields)
    except ValueError:
        return None  # of such numbers everybody makes something else


def from_hatch(e, at, bounded):
    xyz, bulges, parts = [], [], []
    for path in e.paths:
        ring = [(v[0], v[1], v[2] if len(v) > 2 else 0.0) for v in path.vertices]
        bounded[path.source_boundary_objects[0]] = tuple(ring)
        if ring[0][:2] != ring[-1][:2]:
            ring.append((*ring[0][:2], 0.0))
        parts.append(len(xyz))
        xyz += [(x, y, e.dxf.elevation.z) for x, y, _ in ring]
        bulges += [bulge for _, _, bulge in ring[:-1]] + [0.0]
    check(e.dxf.solid_fill and e.dxf.associative, "a HATCH is not filled, or not tied to its boundaries")
    return Element(CHAIN, tuple(xyz), bulges=tuple(bulges), parts=tuple(parts[1:]), area=True, **at)


def from_ezdxf(e, layers, bounded):
    kind = e.dxftype()
    at = {"layer": e.dxf.layer, "colour": e.dxf.color, "style": e.dxf.linetype, "rgb": e.rgb}
    if e.dxf.layer in layers:
        layer = layers.get(e.dxf.layer)
        at["colour"] = layer.color if e.dxf.color == 256 else e.dxf.color
        at["rgb"] = layer.rgb if e.dxf.color == 256 else e.rgb
        at["style"] = layer.dxf.linetype if e.dxf.linetype.upper() == "BYLAYER" else e.dxf.linetype
    if kind == "HATCH":
        return from_hatch(e, at, bounded)
    if kind == "LWPOLYLINE":
        points = e.get_points("xyb")
        return Element(CHAIN, tuple((x, y, e.dxf.elevation) for x, y, _ in points), closed=e.closed, bulges=tuple(v[2] for v in points), **at)
    if kind == "POINT":
        return Element(POINT, (tuple(e.dxf.location),), **at)
    if kind == "LINE":
        return Element(LINE, (tuple(e.dxf.start), tuple(e.dxf.end)), **at)
    if kind == "POLYLINE":
        xyz = tuple(tuple(v.dxf.location) for v in e.vertices)
        if not e.is_3d_polyline and e.dxf.hasattr("elevation"):
            check(all(v[2] == e.dxf.elevation.z for v in xyz), "a polyline's height is not that of its vertices")
        return Element(CHAIN, xyz, closed=e.is_closed, bulges=tuple(v.dxf.bulge for v in e.vertices), **at)
    if kind == "TEXT":
        just = e.dxf.halign + 16 * e.dxf.valign
        place = e.dxf.align_point if just and e.dxf.hasattr("align_point") else e.dxf.insert
        return Element(TEXT, (tuple(place),), text=e.plain_text(), size=e.dxf.height, angle=e.dxf.rotation, just=just, **at)
    if kind == "CIRCLE":
        return Element(CIRCLE, (tuple(e.dxf.center),), radius=e.dxf.radius, **at)
    check(kind == "ARC", f"a {kind} in a drawing")
    return Element(ARC, (tuple(e.dxf.center),), radius=e.dxf.radius, start=e.dxf.start_angle, end=e.dxf.end_angle, **at)


def by_gdal(path):
    """Places alone: its kinds, and chains for curves."""
    def leaves(shape):
        return [leaf for part in shape for leaf in leaves(part)] if shape.GetGeometryCount() else [shape]
    source = ogr.Open(str(path))
    for feature in source.GetLayer(0):
        shape = feature.GetGeometryRef()
        # The boundaries of a HATCH are features of their own.
        if shape is None or "AcDbHatch" in (feature.GetField("SubClasses") or "" if feature.GetFieldIndex("SubClasses") >= 0 else ""):
            continue
        chains = [tuple((p + (0.0,))[:3] for p in leaf.GetPoints() or []) for leaf in leaves(shape)]
        if shape.GetGeometryName() == "MULTIPOINT":
            chains = [sum(chains, ())]
        yield from (Element(POINT if shape.GetGeometryName().endswith("POINT") else CHAIN, c) for c in sorted(chains))


# ---- shapefiles


def with_own_fields(e, names, values, carried):
    """The values that the program itself puts into a table, as those of the element; carried ones stay attributes."""
    if carried:
        return e.but(values=tuple(values))
    told = dict(zip(names, values))
    rgb = tuple(bytes.fromhex(told["TrueColor"].removeprefix("#"))) or (0, 0, 0)
    check(told["ColorName"] == nearest(rgb, COLOURS), f"{told['ColorName']} is not the name nearest to {rgb}")
    e = e.but(layer=told["Desc"], code=told["Code"], colour=int(told["ColorNum"]), rgb=rgb, style=told.get("LineType", ""))
    if "Text" not in told:
        return e
    just = told["TextJust"]
    e = e.but(kind=TEXT, just=letters(just[1:], just[0])) if just else e
    return e.but(text=told["Text"], angle=float(told["TextAngle"]), size=float(told["TextSize"]))


def pyshp(path, *parts, encoding="utf-8", errors="strict"):
    files = {part: partner(path, f".{part}") for part in parts}
    return shapefile.Reader(**{part: str(file) for part, file in files.items() if file}, encoding=encoding, encodingErrors=errors)


def by_pyshp(path, carried):
    """What the program wrote: a record for each element, and Null shapes."""
    with pyshp(path, "shp", "shx", "dbf") as reader:
        names = [f[0] for f in reader.fields[1:]]
        for i in range(len(reader)):
            shape = reader.shape(i)
            if shape.shapeType != 0:
                yield with_own_fields(whole(shape), names, list(reader.record(i)), carried)


POINT_TYPES = (1, 8, 11, 18, 21, 28)


def vertices_of(shape):
    z = list(getattr(shape, "z", [])) + [0.0] * len(shape.points)
    return tuple((float(p[0]), float(p[1]), float(h)) for p, h in zip(shape.points, z))


def whole(shape):
    """A shape by those of its vertices that are somewhere and in a part."""
    starts = [0] if shape.shapeType in POINT_TYPES else shape.parts
    kept = [i for i, p in enumerate(shape.points) if starts and i >= starts[0] and math.isfinite(p[0]) and math.isfinite(p[1])]
    xyz = vertices_of(shape)
    m = [v if v is not None and v > -1e38 else None for v in getattr(shape, "m", ())]
    m = tuple(m[i] for i in kept) if m else ()
    behind = [sum(i < start for i in kept) for start in starts] + [len(kept)]
    area = shape.shapeType in (5, 15, 25)
    return Element(
        POINT if shape.shapeType in POINT_TYPES else CHAIN, tuple(xyz[i] for i in kept), closed=area, area=area,
        parts=tuple(a for a, b in zip(behind, behind[1:]) if a < b)[1:], measures=m if any(v is not None for v in m) else ())


def deleted_rows(path):
    """The rows that a table marks as deleted."""
    data = path.read_bytes() if path else b""
    header, length = struct.unpack_from("<HH", data, 8) if len(data) > 32 else (0, 0)
    return {i for i, at in enumerate(range(header, len(data), length)) if data[at] == 0x2A} if length else set()


def source_by_pyshp(path):
    """What any shapefile holds: its elements, and the record, from 0, of each."""
    elements, deleted = [], deleted_rows(partner(path, ".dbf"))
    with pyshp(path, "shp", "shx") as reader:
        for i in range(len(reader)):
            shape = reader.shape(i)
            e = whole(shape)
            if i in deleted or not e.xyz:
                continue
            if shape.shapeType == 31:
                xyz = ()
                for kind, start, end in zip(shape.partTypes, (0, *e.parts), (*e.parts, len(e.xyz))):
                    part = e.xyz[start:end]  # a strip of triangles: down one side and back up the other
                    xyz += part[::2] + part[1::2][::-1] if kind == 0 else part
                e = e.but(xyz=xyz, closed=True, measures=())
            elements.append((e, i))
    return elements


def attributes(path):
    """A row of nothing and the rows of a table by pyshp; texts are as the table's encoding, or else UTF-8 or 1252, has them."""
    cpg, dbf = partner(path, ".cpg"), partner(path, ".dbf")
    codec = table_codec(cpg, dbf)

    def text(value):
        for name in (codec or "utf-8", "cp1252"):
            try:
                return value.encode("ascii", "surrogateescape").decode(name)
            except UnicodeDecodeError:
                pass
        return value

    with pyshp(path, "dbf", encoding="ascii", errors="surrogateescape") as reader:
        check(all(f[1] in "CNFDL" for f in reader.fields), "fields that are not carried along")
        rows = [record and tuple(text(v) if isinstance(v, str) else v for v in record) for record in reader.iterRecords()]
        return (None,) * (len(reader.fields) - 1), rows


# ---- text layouts


def letters(vertical, horizontal):
    return {"B": 16, "C": 32, "T": 48}.get(vertical, 0) + {"C": 1, "R": 2}.get(horizontal, 0)


def by_landmark_layout(path):
    chain = None
    lines = path.read_bytes().splitlines()
    check(lines[0].startswith(b"METAFILE,") if lines else True, "no header line")
    for line in [*map(decoded, lines[1:]), ","]:
        key, rest = line.split(",", 1)
        fields = [f.strip() for f in rest.split(",")]
        if key == "XY":
            chain[2].append((float(fields[0]), float(fields[1]), 0.0))
            continue
        if chain and chain[2]:
            yield Element(CHAIN, tuple(chain[2]), layer=chain[0], closed=chain[1], rgb=COLOURS[chain[0]])
        chain = (fields[-1], key == "POLYGON", []) if key in ("LINE", "POLYGON") else None
        if key == "TEXT":
            text, rest = rest[rest.index("'") + 1:rest.rindex("'")], rest[rest.rindex("'") + 2:].split(",")
            yield Element(TEXT, ((float(rest[0]), float(rest[1]), 0.0),), layer=rest[-1], text=text, size=float(rest[2]),
                          angle=float(rest[4]), just=letters(*rest[5]), rgb=COLOURS[rest[-1]])
        else:
            check(chain or not key, f"a line begins {key!r}")


def leading_number(columns):
    found = re.match(r" *(-?(\d+\.?\d*|\.\d+)(E[-+]?\d+)?)", columns)
    return float(found[1]) if found else 0.0


def by_cdf_layout(path):
    head, chain = "", []
    for line in [*path.read_bytes().split(b"\r\n")[:-1], b"B"]:
        columns = decoded(line)
        if chain and columns[:2] != "CD":
            yield Element(CHAIN, tuple(chain), closed=head[8:9] == "1", code=head[1:8])
            chain = []
        if columns[0] == "C":
            chain.append((leading_number(columns[17:32]), leading_number(columns[2:17]), 0.0))
        elif columns[0] == "B":
            head = columns
        else:
            check(columns[0] == "D" and columns[40] == "H", f"a line begins {columns[:41]!r}")
            yield Element(
                TEXT, ((leading_number(columns[16:31]), leading_number(columns[1:16]), 0.0),), text=decoded(line[46:80]).strip(" "),
                size=leading_number(columns[32:37]), angle=leading_number(columns[37:40]), just=letters(columns[42], columns[41]),
                closed=head[8:9] == "1", code=head[1:8])
    points = partner(path, ".pts")
    for line in points.read_bytes().split(b"\r\n")[:-1] if points else ():
        found = re.fullmatch(rb"DXF Point \((.*)", line[:40].rstrip(b" "), re.DOTALL)
        check(found is not None, f"a line of the point file begins {line[:40]!r}")
        x, y = (leading_number(decoded(line[a:b])) for a, b in ((40, 50), (53, 63)))
        yield Element(POINT, ((x, y, 0.0),), text=decoded(found[1]))


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
    return [Element(CHAIN, tuple(chain), values=values) for values, chain in elements]
