# SPDX-License-Identifier: MIT
"""What of a drawing each format holds in the standard dialect, as rules: one for each loss, with the words that the table in
docs/dialects.md has for it. A rule takes elements and gives those that should be found in the file; it counts as a loss where it
changes one. A loss without words is none for a reader of that table: another way to write the same."""
import csv
import functools
import itertools
import math
import pathlib
import re

import numpy

from matrix_readers import ARC, CHAIN, CIRCLE, COLOURS, LINE, NO_CODE, POINT, TEXT, decoded, leading_number, nearest, raw

CHAINS, CURVES = (LINE, CHAIN), (CIRCLE, ARC)
with open(pathlib.Path(__file__).parents[2] / "data/dxf-colours.csv", encoding="ascii") as numbers:
    NUMBERED = {int(row["number"]): tuple(int(row[c]) for c in ("red", "green", "blue")) for row in csv.DictReader(numbers)}


def apply(rules, elements):
    """The elements that are left, and what was lost."""
    lost = []
    for words, rule in rules:
        changed = list(rule(elements))
        if words and changed != elements:
            lost.append(words)
        elements = changed
    return elements, lost


def each(change):
    """A rule for single elements: what it gives is one element, several, or None."""
    def rule(elements):
        for e in elements:
            changed = change(e)
            yield from changed if isinstance(changed, list) else [] if changed is None else [changed]
    return rule


def when(condition, **changes):
    """A rule that changes the elements of which a condition holds; changes that are functions are asked for each."""
    def change(e):
        return e.but(**{k: v(e) if callable(v) else v for k, v in changes.items()}) if condition(e) else e
    return each(change)


def always(_):
    return True


def without(*kinds):
    return each(lambda e: None if e.kind in kinds else e)


def is_text(e):
    return e.kind == TEXT


def is_degenerate(e):
    return (e.kind in CHAINS and len(e.xyz) == 1) or (e.kind in CURVES and not e.drawn and not e.radius > 0)


def has_curves(e):
    return e.kind in CURVES or any(e.bulges)


def is_open_at_its_end(e):
    return e.closed and any(part[0][:2] != part[-1][:2] for part in split(e, e.xyz))


def with_closing(e):
    """Each part with its first vertex at its end, where it is not there."""
    parts = [part if part[0][:2] == part[-1][:2] else part + part[:1] for part in split(e, e.xyz)]
    return e.but(xyz=sum(parts, ()), parts=tuple(itertools.accumulate(map(len, parts)))[:-1])


def clean(key):
    return lambda e: "".join(" " if c in "\r\n\0" else c for c in getattr(e, key))


def cut(key, room):
    """The first bytes, without half a letter."""
    return lambda e: raw(getattr(e, key))[:room].decode(errors="ignore")


# ---- colours and names


@functools.cache
def nearest_number(rgb):
    return nearest(rgb, {number: NUMBERED[number] for number in range(1, 256)})


def colour_name(e):
    """A shapefile tells no colour, which counts as black."""
    return nearest(e.rgb or COLOURS["BLACK"], COLOURS)


def is_coloured(e):
    """Black is a colour where a Landmark drawing or a true colour says so; else it stands for none."""
    return e.rgb and (any(e.rgb) or e.layer == "BLACK" or e.colour)


def coloured_by_layer(elements):
    """Elements whose number says "by layer" are read with the layer's, the first that one of its elements has."""
    layers = {}
    for e in elements:
        if 0 < e.colour < 256:
            layers.setdefault(e.layer, (e.colour, e.rgb))
    for e in elements:
        colour, rgb = layers.get(e.layer, (7, NUMBERED[7])) if e.colour == 256 else (e.colour, e.rgb)
        yield e.but(colour=colour, rgb=rgb or NUMBERED[colour])


def fold(name):
    """Letters that differ in case alone are one."""
    return "".join(c.upper().lower() if len(c.upper()) == 1 else c for c in name)


def allows(refused, name, i):
    """Whether a letter may stand where it stands in a name."""
    c = name[i]
    if c == " ":
        return 0 < i < len(name) - 1
    return (c >= "\x80" or c.isalnum() or c in "$-_") if refused is None else c > " " and c not in refused


def distinct_names(refused=None):
    """Layers by other names where signs are not allowed, or where two would differ in letter case alone."""
    def rule(elements):
        written, taken = {"": "0", "0": "0"}, {"0": 1}

        def name_like(base):
            name = base
            while fold(name) in taken:
                taken[fold(base)] += 1
                name = f"{base}_{taken[fold(base)]}"
            taken[fold(name)] = 1
            return name
        for e in elements:
            if e.layer not in written:
                signs = (c if allows(refused, e.layer, i) else "_" for i, c in enumerate(e.layer))
                written[e.layer] = name_like("".join(signs)[:240])
        page = None if refused else page_of(list(written.values()), [e.text for e in elements if is_text(e)])
        for given, name in written.items() if page else ():
            fitting = "".join(c if c.isascii() or is_in(page, c) else "_" for c in name)
            written[given] = name if fitting == name else name_like(fitting)
        return [e.but(layer=written[e.layer]) for e in elements]
    return rule


# ---- code pages


PAGES = ["cp1252", "cp1250", "cp1251", *(f"cp{n}" for n in range(1253, 1259)), "cp874", "cp932", "cp936", "cp949", "cp950"]


@functools.cache
def is_in(page, c):
    try:
        return "\xa0" <= c and not "\ue000" <= c < "\uf900" and c.encode(page).decode(page) == c
    except UnicodeError:
        return False


def page_of(names, texts):
    """The page of a drawing: the one that lacks fewest names, then fewest texts. Letters in no page do not count."""
    known = [[{c for c in text if not c.isascii() and any(is_in(p, c) for p in PAGES)} for text in kind] for kind in (names, texts)]
    return min(PAGES, key=lambda page: [sum(any(not is_in(page, c) for c in letters) for letters in kind) for kind in known])


def codes_shown(elements):
    """A letter that the page lacks, as it is written."""
    page = page_of(list({e.layer for e in elements}), [e.text for e in elements if is_text(e)])
    def shown(c):
        units = c.encode("utf-16-be")
        codes = "".join(f"\\U+{units[i]:02X}{units[i + 1]:02X}" for i in range(0, len(units), 2))
        return c if c.isascii() or is_in(page, c) else codes
    return [e.but(text="".join(map(shown, e.text))) if is_text(e) else e for e in elements]


# ---- areas


def is_level(e):
    return len({v[2] for v in e.xyz}) < 2


def rings(e):
    """Where each ring begins and ends, without the vertex that closes it."""
    for a, b in zip((0, *e.parts), (*e.parts, len(e.xyz))):
        yield a, b - (b - a > 2 and e.xyz[a] == e.xyz[b - 1] != e.xyz[b - 2])


def closed_rings(e):
    """An area whose rings end where they begin."""
    xyz, bulges, parts = [], [], []
    for a, b in rings(e):
        parts.append(len(xyz))
        closing = list(e.xyz[a:a + 1]) if b - a > 1 and e.xyz[a] != e.xyz[b - 1] else []
        xyz += [*e.xyz[a:b], *closing]
        bulges += [*(e.bulges + (0.0,) * len(e.xyz))[a:b], *[0.0 for _ in closing]]
    return e.but(xyz=tuple(xyz), parts=tuple(parts[1:]), bulges=tuple(bulges) if any(bulges) else ())


def hatched(e):
    """An area of rings that surround something; the others are chains and points behind it."""
    if not e.area or len(e.xyz) == 1 or not is_level(e):
        return e if not e.area or len(e.xyz) == 1 else e.but(area=False)
    around = [b - a > 2 or (b - a == 2 and any(e.bulges[a:b])) for a, b in rings(e)]
    if all(around):
        return e
    pieces = [e.but(xyz=xyz, parts=(), bulges=()) for xyz in split(e, e.xyz)]
    kept = [p.xyz for p, is_around in zip(pieces, around) if is_around]
    starts = [sum(map(len, kept[:i])) for i in range(1, len(kept))]
    alone = [p.but(area=False, kind=CHAIN if len(p.xyz) > 1 else POINT, closed=len(p.xyz) > 1)
             for p, is_around in zip(pieces, around) if not is_around]
    return [e.but(xyz=sum(kept, ()), parts=tuple(starts))] * bool(kept) + alone


# ---- columns


def fitted(value, width):
    """With fewer decimals, then fewer digits, where the columns are short."""
    def shorter():
        yield "0" if value == 0 else f"{value:.15G}"
        yield from (f"{value:.{n}f}" for n in range(width, -1, -1))
        yield from (f"{value:.{n}G}" for n in range(width, 0, -1))
    found = leading_number(next(text for text in shorter() if len(text) <= width))
    return value if math.isclose(found, value, rel_tol=1e-14) else found


def in_columns(width, *kinds):
    """Coordinates as columns of a width hold them."""
    return when(lambda e: e.kind in kinds and not e.drawn,
                xyz=lambda e: tuple((fitted(x, width), fitted(y, width), z) for x, y, z in e.xyz))


def in_point_file(elements):
    """Points stand in a file of their own, with a name and a number."""
    yield from (e for e in elements if e.kind != POINT)
    for number, e in enumerate((e for e in elements if e.kind == POINT), 1):
        yield e.but(text=decoded(raw(f"DXF Point ({e.text or e.layer}) {number}")[:40].rstrip(b" ")[11:]), angle=0.0, size=0.0)


# ---- what the formats hold

TOGETHER = ("groups of points", each(lambda e: [e.but(xyz=(v,)) for v in e.xyz] if e.kind == POINT and len(e.xyz) > 1 else e))
SYMBOLS = ("symbols", when(lambda e: e.kind == POINT and (e.text not in ("", "NOSTATUS") or e.angle), text="NOSTATUS", angle=0.0, size=0.0))
LINE_TYPES = ("line types", when(lambda e: e.style.upper() not in ("", "CONTINUOUS"), style="CONTINUOUS"))
CODES = ("entity codes", when(lambda e: e.code and not e.code.startswith(NO_CODE), code=NO_CODE))
ATTRIBUTES = ("attributes", when(always, values=None))
HEIGHTS = ("z", when(lambda e: any(v[2] for v in e.xyz), xyz=lambda e: tuple((x, y, 0.0) for x, y, _ in e.xyz)))
CURVES_DRAWN = ("curves", when(has_curves, drawn=(0.01, 1e-4)))
AS_POLYLINES = (None, when(lambda e: e.kind == LINE, kind=CHAIN))
WITH_CLOSING = (None, each(lambda e: with_closing(e) if is_open_at_its_end(e) else e))
CLOSED = ("closed marks", when(lambda e: e.closed, closed=False))
NEAREST = (None, when(lambda e: is_coloured(e) and 0 <= e.colour < 256 and (e.colour == 0 or NUMBERED[e.colour] != e.rgb),
                      colour=lambda e: nearest_number(e.rgb)))
COLOURS_NAMED = ("colours", when(lambda e: e.rgb, rgb=lambda e: COLOURS[colour_name(e)]))
WHOLE_SIZES = ("decimals of sizes", when(lambda e: is_text(e) and math.isfinite(e.size), size=lambda e: float(round(e.size))))
BASELINES = ("baselines", when(lambda e: is_text(e) and not e.just & 240, just=lambda e: e.just | 16))
PRINTABLE = ("line breaks", when(always, text=clean("text"), layer=clean("layer")))
LONG_TEXTS = ("long texts", when(always, layer=cut("layer", 50), text=cut("text", 100), style=cut("style", 50)))
NO_POINTS = ("points", without(POINT))


def split(e, values):
    return [values[a:b] for a, b in zip((0, *e.parts), (*e.parts, len(e.xyz)))]


def part_by_part(e):
    return [e.but(xyz=part, parts=()) for part in split(e, e.xyz)] if e.parts else e


by_part = each(part_by_part)


def doubled_area(ring):
    """Of a closed ring, negative where it runs clockwise."""
    x, y, _ = ring[0]
    return sum((a[0] - x) * (b[1] - y) - (b[0] - x) * (a[1] - y) for a, b in zip(ring, ring[1:]))


def runs_wrongly(e):
    """Whether all rings together run counter-clockwise, each seen from its first vertex."""
    return e.area and e.xyz and sum(map(doubled_area, split(e, e.xyz))) > 0


def boundaries(e):
    """An area by its rings alone, whichever way they run and whatever their order."""
    if not e.area or not e.xyz:
        return e
    found = sorted(ring if doubled_area(ring) < 0 else ring[::-1] for ring in split(e, e.xyz))
    return e.but(xyz=sum(found, ()), parts=tuple(itertools.accumulate(map(len, found)))[:-1])


def turned(key):
    return lambda e: tuple(v for part in split(e, getattr(e, key)) for v in part[::-1])


SINGLE_CHAINS = [
    ("measures", when(lambda e: any(e.measures or ()), measures=())), (None, when(lambda e: e.measures, measures=())),
    ("areas", when(lambda e: e.area, area=False)), ("parts", by_part)]
TURNED = (None, when(runs_wrongly, xyz=turned("xyz"), measures=turned("measures")))


def single_bytes(codec):
    """Texts that are known as such, in a format of one byte a letter."""
    def fitting(key):
        return lambda e: getattr(e, key).encode(codec, "replace").decode(codec)

    def written(key):
        return lambda e: getattr(e, key).encode(codec).decode("utf-8", "surrogateescape")
    return [("letters", when(always, text=fitting("text"), layer=fitting("layer"))),
            (None, when(always, text=written("text"), layer=written("layer")))]


STANDARD = {
    "dxf": [
        *SINGLE_CHAINS, TOGETHER, SYMBOLS,
        ("single vertices", when(is_degenerate, kind=POINT, radius=None, start=None, end=None, closed=False)), PRINTABLE,
        ("signs in names", distinct_names()),
        NEAREST,
        ("numbers of colours", when(lambda e: not 0 <= e.colour <= 256, colour=256)),
        ("true colours", when(lambda e: e.rgb and 0 <= e.colour < 256, rgb=lambda e: NUMBERED[e.colour])), CODES],
    "dxf 2007": [
        ("measures", when(lambda e: any(e.measures or ()), measures=())), (None, when(lambda e: e.measures, measures=())),
        (None, each(lambda e: closed_rings(e) if e.area and is_level(e) else e)), ("areas", each(hatched)),
        ("parts", each(lambda e: e if e.area else part_by_part(e))), TOGETHER, SYMBOLS,
        ("single vertices", when(is_degenerate, kind=POINT, radius=None, start=None, end=None, closed=False, area=False)), PRINTABLE,
        ("signs in names", distinct_names('<>/\\":;?*|,=`')),
        (None, when(lambda e: not is_coloured(e) and e.rgb and 0 <= e.colour < 256, rgb=lambda e: NUMBERED[e.colour])),
        NEAREST,
        ("numbers of colours", when(lambda e: not 0 <= e.colour <= 256, colour=256)), CODES],
    "shp": [
        WITH_CLOSING, TURNED, ("patches", when(lambda e: e.closed and not e.area, closed=False)), LONG_TEXTS],
    "shp points": [
        ("other shapes", without(*CHAINS, *CURVES)), TOGETHER, PRINTABLE, LONG_TEXTS],
    "shp polylines": [
        ("other shapes", without(POINT, TEXT)), ("areas", when(lambda e: e.area, area=False)),
        ("single vertices", each(lambda e: None if is_degenerate(e) and e.kind in CHAINS else e)), CURVES_DRAWN, AS_POLYLINES,
        WITH_CLOSING, CLOSED, PRINTABLE, LONG_TEXTS],
    "asc": [
        *SINGLE_CHAINS, NO_POINTS, HEIGHTS, CURVES_DRAWN, AS_POLYLINES, LINE_TYPES, CODES, ("layers", when(always, layer=colour_name)),
        COLOURS_NAMED, WHOLE_SIZES, BASELINES, PRINTABLE, ATTRIBUTES,
        (None, when(is_text, text=lambda e: decoded(raw(e.text))))],
    "cdf": [
        *SINGLE_CHAINS, HEIGHTS, CURVES_DRAWN, AS_POLYLINES, LINE_TYPES, TOGETHER, PRINTABLE,
        (None, when(is_text, angle=lambda e: math.fmod(e.angle, 360) % 360)), ("long numbers", in_columns(10, POINT)),
        ("points", in_point_file),
        ("unmatched layers", when(lambda e: e.code in ("", NO_CODE), layer="Unassociated", colour=7, rgb=COLOURS["WHITE"])),
        ("blank texts", each(lambda e: None if is_text(e) and not e.text.strip(" ") else e)),
        ("long texts", when(is_text, text=lambda e: decoded(raw(e.text)[:34]).strip(" "))),
        ("long numbers", in_columns(15, CHAIN, TEXT)), WHOLE_SIZES,
        ("long numbers", when(is_text, size=lambda e: fitted(e.size, 5), angle=lambda e: fitted(e.angle, 3))), BASELINES, ATTRIBUTES],
    "grd": [
        *SINGLE_CHAINS, NO_POINTS, ("texts", without(TEXT)), HEIGHTS, CURVES_DRAWN, AS_POLYLINES, WITH_CLOSING, CLOSED,
        ("layers", when(always, layer="")), ("colours", when(always, colour=0, rgb=lambda e: e.rgb and (0, 0, 0))), LINE_TYPES, CODES],
}

# ---- the same of the classic dialect


def single(value):
    """What single precision makes of a number, as it is shown."""
    return value and float(str(numpy.float32(value)))


# Kinds that are not written.
SKIPPED = {"dxf": (ARC,), "shp points": CHAINS + CURVES, "shp polylines": (POINT, TEXT), "asc": (POINT,), "grd": (POINT, TEXT)}
# What readers give up of elements as the standard dialect reads them.
CLASSIC_READING = {
    "shp": [("areas", when(lambda e: e.area, area=False)), ("parts", each(part_by_part)),
            ("measures", when(lambda e: any(e.measures or ()), measures=()))],
    "dxf": [BASELINES, ("curves", when(lambda e: any(e.bulges), bulges=())),
            ("digits", when(always, radius=lambda e: single(e.radius), start=lambda e: single(e.start), end=lambda e: single(e.end),
                            xyz=lambda e: tuple((x, y, single(z)) for x, y, z in e.xyz)))],
}
NAMED = ("layers", when(always, layer=colour_name))
# What writers give up of elements as the classic dialect reads them.
CLASSIC = {
    "dxf": [
        TOGETHER, SYMBOLS, ("closed marks", when(lambda e: e.closed and e.kind in CHAINS, closed=False)),
        ("vertices at the origin", when(lambda e: len(e.xyz) > 1, xyz=lambda e: tuple(v for v in e.xyz if any(v)))),
        ("true colours", when(lambda e: e.rgb and 0 < e.colour < 256, rgb=lambda e: NUMBERED[e.colour])),
        ("digits", when(always, xyz=lambda e: tuple((x, y, single(z)) for x, y, z in e.xyz))), CODES, ATTRIBUTES],
    "shp points": [
        TOGETHER, ("justification", when(lambda e: e.just, just=0)), HEIGHTS, LINE_TYPES, COLOURS_NAMED,
        ("long texts", when(always, layer=cut("layer", 49), text=cut("text", 99))), ATTRIBUTES],
    "shp polylines": [
        ("curves", when(lambda e: e.kind in CURVES, kind=CHAIN)), CLOSED, HEIGHTS, LINE_TYPES, COLOURS_NAMED,
        ("long texts", when(always, layer=cut("layer", 49))), ATTRIBUTES],
    "asc": [
        HEIGHTS, ("curves", when(lambda e: e.kind in CURVES, kind=CHAIN)), CLOSED, LINE_TYPES, CODES, NAMED, COLOURS_NAMED, WHOLE_SIZES,
        ATTRIBUTES],
    "cdf": [
        HEIGHTS, ("curves", when(lambda e: e.kind in CURVES, kind=CHAIN)), LINE_TYPES, TOGETHER, ("points", in_point_file),
        ("unmatched layers", when(lambda e: e.code in ("", NO_CODE), layer="Unassociated")),
        ("blank texts", each(lambda e: None if is_text(e) and not e.text.strip(" ") else e)),
        ("long texts", when(is_text, text=lambda e: decoded(raw(e.text)[:34]))), WHOLE_SIZES, ATTRIBUTES],
    "grd": [
        HEIGHTS, ("curves", when(lambda e: e.kind in CURVES, kind=CHAIN)), CLOSED, ("layers", when(always, layer="")),
        ("colours", when(always, colour=0, rgb=lambda e: e.rgb and (0, 0, 0))), LINE_TYPES, CODES],
}

# ---- what programs find of that

NOTHING_BUT_PLACES = {key: None for key in ("layer", "text", "size", "angle", "just", "colour", "rgb", "style", "code", "values", "closed")}


def stored(e):
    """The vertex that closes a chain goes without saying, unless it stands there twice."""
    return e.xyz[:-1] if len(e.xyz) > 1 and e.xyz[0] == e.xyz[-1] != e.xyz[-2] else e.xyz


def is_upright_at_its_end(e):
    chain = stored(e)
    return e.closed and len(chain) > 1 and chain[0][:2] == chain[-1][:2] and chain[0] != chain[-1]


def is_open(e):
    return e.closed and len(e.xyz) > 1 and e.xyz[0] != e.xyz[-1]


CLOSE = (None, when(is_open, xyz=lambda e: e.xyz + e.xyz[:1]))
CLOSE_CHAINS = (None, when(lambda e: not e.area and is_open(e), xyz=lambda e: e.xyz + e.xyz[:1]))
PLACES_ALONE = ("all but kinds and vertices, which alone are compared", when(always, **NOTHING_BUT_PLACES))

COLOURED = (None, when(always, rgb=lambda e: e.rgb if 0 <= e.colour < 256 and e.rgb != NUMBERED[e.colour] else None))
CARET = ("a ^ at the end of a text", when(always, text=lambda e: e.text.removesuffix("^")))

SEEN = {
    ("dxf", "ezdxf"): [("letters that the code page lacks (it shows their codes)", codes_shown), CARET, COLOURED],
    ("dxf", "GDAL"): [
        (None, when(has_curves, drawn=(math.inf, 1e-3))), AS_POLYLINES,
        ("arcs of polylines beyond half a circle (it draws some of them wrong)",
         when(lambda e: any(abs(bulge) > 1 for bulge in e.bulges), drawn=(math.inf, math.inf))), (None, when(is_text, kind=POINT)),
        ("the closing side of a chain where it is upright", when(is_upright_at_its_end, closed=False, xyz=stored)), CLOSE, PLACES_ALONE],
    ("dxf", "Tesselink"): [(None, coloured_by_layer), CLOSE],
    ("dxf 2007", "ezdxf"): [CARET, COLOURED],
    ("shp", "pyshp"): [("blanks at the ends of texts", when(always, text=lambda e: e.text.strip(" ")))],
    ("shp", "GDAL"): [
        (None, when(is_text, kind=POINT)), PLACES_ALONE, (None, when(always, measures=None)),
        (None, each(lambda e: sorted(parts, key=lambda p: p.xyz) if isinstance(parts := part_by_part(e.but(area=None)), list) else parts))],
    ("shp", "Tesselink"): [
        ("blanks behind texts", when(always, text=lambda e: e.text.rstrip(" "))), (None, when(always, values=None))],
    ("asc", "Tesselink"): [(None, when(always, colour=0))],
    ("cdf", "Tesselink"): [
        (None, when(lambda e: e.kind == POINT, layer="Unassociated", colour=7, rgb=COLOURS["WHITE"], code=NO_CODE,
                    text=lambda e: re.sub(r"\) \d+$", "", e.text)))],
}
SEEN["dxf 2007", "GDAL"] = [
    ("areas (it makes its own rings of them)", each(part_by_part)), (None, when(lambda e: e.area, area=False, closed=True)), *SEEN["dxf", "GDAL"]]
SEEN["dxf 2007", "Tesselink"] = [(None, coloured_by_layer), CLOSE_CHAINS, (None, each(boundaries))]
