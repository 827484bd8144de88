"""What of a drawing each format holds, as rules: one for each loss, with the words that the table in docs/dialects.md has for
it. A rule takes elements and gives those that should be found in the file; it counts as a loss where it changes one.

A loss without words is none for a reader of that table: another way to write the same."""
import csv
import functools
import math
import pathlib

from matrix_readers import ARC, CHAIN, CIRCLE, COLOURS, LINE, NO_CODE, POINT, TEXT, decoded, leading_number, raw

CURVES = (CIRCLE, ARC)
with open(pathlib.Path(__file__).parents[2] / "data/dxf-colours.csv", encoding="ascii") as colours:
    NUMBERED = {int(row["number"]): tuple(int(row[c]) for c in ("red", "green", "blue")) for row in csv.DictReader(colours)}
CHAINS = (LINE, CHAIN)


def each(change):
    """A rule for single elements: what it gives is one element, several, or None."""
    def rule(elements):
        for e in elements:
            changed = change(e)
            if isinstance(changed, list):
                yield from changed
            elif changed is not None:
                yield changed
    return rule


def apply(rules, elements):
    """The elements that are left, and what was lost."""
    lost = []
    for words, rule in rules:
        changed = list(rule(elements))
        if words and changed != elements:
            lost.append(words)
        elements = changed
    return elements, lost


# ---- in words of single elements


def without(*kinds):
    return each(lambda e: None if e.kind in kinds else e)


def apart(e):
    return [e.but(xyz=(v,)) for v in e.xyz] if e.kind == POINT and len(e.xyz) > 1 else e


def plain_point(e):
    return e.but(text="NOSTATUS", angle=0.0) if e.kind == POINT and (e.text not in ("", "NOSTATUS") or e.angle) else e


def is_degenerate(e):
    return (e.kind in CHAINS and len(e.xyz) == 1) or (e.kind in CURVES and not e.drawn and not e.radius > 0)


def degenerate_as_point(e):
    return e.but(kind=POINT, radius=None, start=None, end=None, closed=False) if is_degenerate(e) else e


def flat(e):
    return e.but(xyz=tuple((x, y, 0.0) for x, y, _ in e.xyz)) if any(v[2] for v in e.xyz) else e


def drawn(e):
    return e.but(drawn=True) if e.kind in CURVES else e


def solid(e):
    return e.but(style="CONTINUOUS") if e.style.upper() not in ("", "CONTINUOUS") else e


def line_as_polyline(e):
    return e.but(kind=CHAIN) if e.kind == LINE else e


def unassociated(e):
    return e.but(layer="Unassociated", colour=7, rgb=COLOURS["WHITE"]) if e.code in ("", NO_CODE) else e


def unmarked_without_code(e):
    return e.but(closed=False) if e.closed and not e.code else e


def without_code(e):
    return e if not e.code or e.code.startswith(NO_CODE) else e.but(code=NO_CODE)


def without_values(e):
    return e.but(values=None)


def with_closing_vertex(e):
    return e.but(xyz=e.xyz + e.xyz[:1]) if e.closed and e.xyz[0][:2] != e.xyz[-1][:2] else e


def unmarked(e):
    return e.but(closed=False) if e.closed else e


def text_as_point(e):
    return e.but(kind=POINT) if e.kind == TEXT else e


def without_just(e):
    return e.but(just=0) if e.just else e


def baseline_as_bottom(e):
    return e.but(just=e.just | 16) if e.kind == TEXT and not e.just & 240 else e


def size_as_whole(e):
    return e.but(size=float(round(e.size))) if e.kind == TEXT and math.isfinite(e.size) else e


def printable(e):
    clean = {key: "".join(" " if c in "\r\n\0" else c for c in getattr(e, key)) for key in ("text", "layer")}
    return e.but(**clean) if any(getattr(e, key) != clean[key] for key in clean) else e


def cut(value, room):
    """The first bytes, without half a letter."""
    return raw(value)[:room].decode(errors="ignore")


def cut_bytes(layer, text):
    return each(lambda e: e.but(layer=cut(e.layer, layer), text=cut(e.text, text)))


# ---- colours


@functools.cache
def nearest(rgb):
    """The name; a shapefile tells no colour, which counts as black."""
    rgb = rgb or COLOURS["BLACK"]
    return min(COLOURS, key=lambda name: sum((a - b) ** 2 for a, b in zip(COLOURS[name], rgb)))


def named_colour(e):
    return e.but(rgb=e.rgb and COLOURS[nearest(e.rgb)])


def layer_is_colour(e):
    return e.but(layer=nearest(e.rgb))


def number_in_range(e):
    return e.but(colour=256) if not 0 <= e.colour <= 256 else e


@functools.cache
def nearest_number(rgb):
    return min(range(1, 256), key=lambda number: sum((a - b) ** 2 for a, b in zip(NUMBERED[number], rgb)))


def numbered_colour(e):
    """A colour without a number; 0 says "by block", which shows white where there is no block."""
    return e.but(colour=nearest_number(e.rgb)) if e.colour == 0 and e.rgb and any(e.rgb) else e


def rgb_of(number):
    return NUMBERED[number]


def colour_of_number(e):
    return e.but(rgb=rgb_of(e.colour)) if e.rgb and 0 <= e.colour < 256 else e


# ---- names in drawings


def name_of(name):
    def allowed(i, c):
        return c >= "\x80" or c.isascii() and (c.isalnum() or c in "$-_" or (c == " " and 0 < i < len(name) - 1))
    return "".join(c if allowed(i, c) else "_" for i, c in enumerate(name))[:240]


def distinct_names(elements):
    """Layers by other names where signs are not allowed, or where two would differ in letter case alone."""
    written, taken = {"": "0", "0": "0"}, {"0": 1}
    for e in elements:
        if e.layer not in written:
            base = name = name_of(e.layer)
            while name.lower() in taken:
                taken[base.lower()] += 1
                name = f"{base}_{taken[base.lower()]}"
            taken[name.lower()] = 1
            written[e.layer] = name
        yield e.but(layer=written[e.layer])


# ---- columns


def text_of(value):
    return "0" if value == 0 else f"{value:.15G}"


def fitted(value, width):
    """With fewer decimals, then fewer digits, where the columns are short."""
    def shorter():
        yield text_of(value)
        yield from (f"{value:.{n}f}" for n in range(width, -1, -1))
        yield from (f"{value:.{n}G}" for n in range(width, 0, -1))
    return next(text for text in shorter() if len(text) <= width)


def cut_off(value, width):
    return text_of(value)[:width]


def in_columns(shorten, width, *kinds):
    """Coordinates as columns of a width hold them."""
    def rule(e):
        if e.kind not in kinds or e.drawn:
            return e
        return e.but(xyz=tuple((*(leading_number(shorten(c, width)) for c in v[:2]), v[2]) for v in e.xyz))
    return rule


def number_in_columns(shorten, key, width):
    def rule(e):
        return e.but(**{key: leading_number(shorten(getattr(e, key), width))}) if e.kind == TEXT else e
    return rule


def within_turn(e):
    return e.but(angle=math.fmod(e.angle, 360) % 360) if e.kind == TEXT else e


def text_in_columns(e):
    return e.but(text=decoded(raw(e.text)[:34]).strip(" ")) if e.kind == TEXT else e


def in_point_file(elements):
    """Points stand in a file of their own, with a name and a number."""
    yield from (e for e in elements if e.kind != POINT)
    for number, e in enumerate((e for e in elements if e.kind == POINT), 1):
        yield e.but(text=decoded(raw(f"DXF Point ({e.text or e.layer}) {number}")[:40].rstrip(b" ")[11:]), angle=0.0)


# ---- the classic dialect


def without_origin(e):
    """Vertices at (0, 0, 0) count as missing; as the end of a line they are there."""
    if e.kind == LINE:
        return None if e.xyz[0] == (0, 0, 0) else e
    if e.kind == POINT:
        return None if e.xyz[0] == (0, 0, 0) else e
    return e.but(xyz=tuple(v for v in e.xyz if v != (0, 0, 0))) if e.kind == CHAIN else e


def without_empty(e):
    return e if e.xyz else None


def letters_swapped(e):
    """Both letters of the justification, read in the other order than they were written in."""
    return e.but(just=(32 if e.just & 15 == 1 else 0) + (1 if e.just & 240 == 32 else 0)) if e.kind == TEXT else e


def bytes_as(codec):
    """Texts whose bytes a program takes for those of a code page."""
    def rule(e):
        text, layer = (raw(value).decode(codec, "surrogateescape") for value in (e.text, e.layer))
        return e.but(text=text, layer=layer)
    return rule


def with_known_line_type(e):
    return e if e.kind == CHAIN or e.style.upper() in ("", "CONTINUOUS", "BYLAYER", "BYBLOCK") else e.but(style="BYLAYER")


def as_utf8_or_1252(e):
    def read(value):
        try:
            return raw(value).decode()
        except UnicodeDecodeError:
            return raw(value).decode("cp1252", "replace")
    return e.but(text=read(e.text), layer=read(e.layer))


def in_halves(e):
    return e.but(text="".join(chr(unit) for unit in utf16(e.text)))


def untold_numbers(e):
    """Where pyshp finds no number, date or logical value, GDAL may find the beginning of one, or another none."""
    return e.but(values=tuple(... if v is None else v for v in e.values)) if e.values else e


def without_caret(e):
    """Where "^" and a letter stand for a control character, programs disagree in which."""
    return e.but(text=None) if "^" in e.text else e


def trimmed(e):
    return e.but(text=e.text.strip(" "))


def without_upright_closing(e):
    # The vertex that closes a chain goes without saying, unless it stands there twice.
    closing = e.closed and len(e.xyz) > 1 and e.xyz[0] == e.xyz[-1] != e.xyz[-2]
    stored = e.xyz[:-1] if closing else e.xyz
    upright = e.closed and len(stored) > 1 and stored[0][:2] == stored[-1][:2] and stored[0] != stored[-1]
    return e.but(closed=False, xyz=stored) if upright else e


def closed_in_space(e):
    return e.but(xyz=e.xyz + e.xyz[:1]) if e.closed and len(e.xyz) > 1 and e.xyz[0] != e.xyz[-1] else e


def first_zero_gives_way(e):
    """A first x (or y) of 0 leaves that array empty: the next one takes its place."""
    def stored(values):
        array = [0.0]
        for value in values:
            if len(array) == 1 and array[0] == 0:
                array[0] = value
            else:
                array.append(value)
        return array
    if e.drawn:
        angle = math.radians(e.start if e.kind == ARC else 0)
        begin = (e.xyz[0][0] + e.radius * math.cos(angle), e.xyz[0][1] + e.radius * math.sin(angle))
        return e.but(kind=CHAIN, drawn=False, xyz=None) if any(abs(v) < 1e-11 for v in begin) else e
    if e.kind != CHAIN:
        return e
    x, y = (stored([v[i] for v in e.xyz]) for i in (0, 1))
    return e.but(xyz=tuple(zip(x, y, [0.0] * len(x))), beyond=tuple(x[len(y):]))


def as_many_as_x(e):
    """The classic Landmark writer goes by the number of x; a y that is not there is 0."""
    return e.but(xyz=e.xyz + tuple((x, 0.0, 0.0) for x in e.beyond), beyond=()) if e.beyond else e


# ---- what the formats hold

TOGETHER = ("groups of points", each(apart))
SYMBOLS = ("symbols", each(plain_point))
LINE_TYPES = ("line types", each(solid))
CODES = ("entity codes", each(without_code))
ATTRIBUTES = ("attributes", each(without_values))
HEIGHTS = ("z", each(flat))
CURVES_DRAWN = ("curves", each(drawn))
CLOSED = ("closed marks", each(unmarked))
WITH_CLOSING = (None, each(with_closing_vertex))
CLOSED_AS_STORED = ("closed marks", each(unmarked))
ALONE = ("single vertices", each(lambda e: None if is_degenerate(e) and e.kind in CHAINS else e))
COLOURS_NAMED = ("colours", each(named_colour))
WHOLE_SIZES = ("decimals of sizes", each(size_as_whole))
BASELINES = ("baselines", each(baseline_as_bottom))
OTHER_KINDS = "other shapes"
AS_POLYLINES = (None, each(line_as_polyline))
PRINTABLE = ("line breaks", each(printable))



def single_bytes(codec):
    """Texts that are known as such, in a format of one byte a letter."""
    def fitting(value):
        return value.encode(codec, "replace").decode(codec)

    def written(value):
        return value.encode(codec).decode("utf-8", "surrogateescape")
    return [("letters", each(lambda e: e.but(text=fitting(e.text), layer=fitting(e.layer)))),
            (None, each(lambda e: e.but(text=written(e.text), layer=written(e.layer))))]


def cdf(shorten, before):
    return [
        HEIGHTS, CURVES_DRAWN, AS_POLYLINES, LINE_TYPES, TOGETHER, PRINTABLE, *before,
        ("long numbers", each(in_columns(shorten, 10, POINT))),
        ("points", in_point_file),
        ("unmatched layers", each(unassociated)),
        ("blank texts", each(lambda e: None if e.kind == TEXT and not e.text.strip(" ") else e)),
        ("long texts", each(text_in_columns)),
        ("long numbers", each(in_columns(shorten, 15, CHAIN, TEXT))),
        WHOLE_SIZES, ("long numbers", each(number_in_columns(shorten, "size", 5))),
        ("long numbers", each(number_in_columns(shorten, "angle", 3))), BASELINES, ATTRIBUTES]


STANDARD = {
    "dxf": [
        TOGETHER, SYMBOLS, ("single vertices", each(degenerate_as_point)), PRINTABLE,
        ("signs in names", distinct_names), (None, each(numbered_colour)), ("numbers of colours", each(number_in_range)),
        ("true colours", each(colour_of_number)), CODES, ATTRIBUTES],
    "shp points": [
        (OTHER_KINDS, without(*CHAINS, *CURVES)), TOGETHER, ("justification", each(without_just)), (None, each(text_as_point)),
        LINE_TYPES, PRINTABLE, ("long texts", cut_bytes(50, 100)), COLOURS_NAMED],
    "shp polylines": [
        (OTHER_KINDS, without(POINT, TEXT)), ALONE, CURVES_DRAWN, AS_POLYLINES, WITH_CLOSING, CLOSED, LINE_TYPES, PRINTABLE,
        ("long texts", cut_bytes(50, 100)), COLOURS_NAMED],
    "asc": [
        ("points", without(POINT)), HEIGHTS, CURVES_DRAWN, AS_POLYLINES, LINE_TYPES, CODES, ("layers", each(layer_is_colour)),
        COLOURS_NAMED, WHOLE_SIZES, BASELINES, PRINTABLE, ATTRIBUTES],
    "cdf": cdf(fitted, [(None, each(within_turn))]),
    "grd": [
        ("points", without(POINT)), ("texts", without(TEXT)), HEIGHTS, CURVES_DRAWN, AS_POLYLINES, WITH_CLOSING, CLOSED,
        ("layers", each(lambda e: e.but(layer=""))),
        ("colours", each(lambda e: e.but(colour=0, rgb=e.rgb and (0, 0, 0)))), LINE_TYPES, CODES],
}

ARCS = ("arcs", without(ARC))
ATTRIBUTES_ALL = ("attributes", each(without_values))
BARS = ("bars", each(lambda e: e.but(layer=e.layer.replace("|", " "), text=e.text.replace("|", " "))))


def looks_geographic(e):
    return e.kind in CURVES and abs(e.xyz[0][0]) <= 180 and abs(e.xyz[0][1]) <= 90


def in_steps(e):
    """A vertex every 10 degrees, and a closing one for which the end's number of degrees is taken as radians."""
    if e.kind not in CURVES:
        return e
    if e.xyz is None:
        return e.but(kind=CHAIN, radius=None, start=None, end=None)
    (cx, cy, _), radius = e.xyz[0], e.radius
    start, end = (0, 360) if e.kind == CIRCLE else (e.start, e.end)
    pi, step = 3.14159265358979, 31.4159265358979 / 180
    angles, angle = [], start * pi / 180
    while angle <= end * pi / 180:
        angles.append(angle)
        angle += step
    return e.but(kind=CHAIN, closed=False, start=None, end=end, xyz=tuple(
        (cx + radius * math.cos(a), cy + radius * math.sin(a), 0.0) for a in [*angles, end]))


CLASSIC = {
    "dxf": [
        TOGETHER, SYMBOLS, ARCS, ("vertices at the origin", each(without_origin)), CLOSED_AS_STORED, PRINTABLE,
        ("true colours", each(colour_of_number)), CODES, ATTRIBUTES],
    "shp points": [
        (OTHER_KINDS, without(*CHAINS, *CURVES)), HEIGHTS, TOGETHER, ("justification", each(without_just)),
        (None, each(text_as_point)), LINE_TYPES, PRINTABLE, BARS, ("long texts", cut_bytes(49, 99)),
        COLOURS_NAMED, ATTRIBUTES_ALL],
    "shp polylines": [
        (OTHER_KINDS, without(POINT, TEXT)), HEIGHTS, CURVES_DRAWN, AS_POLYLINES, WITH_CLOSING, CLOSED,
        LINE_TYPES, PRINTABLE, BARS, ("long texts", cut_bytes(49, 99)), COLOURS_NAMED, ATTRIBUTES_ALL],
    "asc": [
        ("points", without(POINT)), HEIGHTS, (None, each(as_many_as_x)),
        ("places of curves", each(lambda e: e.but(xyz=None) if looks_geographic(e) else e)),
        ("curves", each(in_steps)), AS_POLYLINES, CLOSED_AS_STORED, LINE_TYPES, CODES,
        ("layers", each(layer_is_colour)), COLOURS_NAMED, WHOLE_SIZES, PRINTABLE, ATTRIBUTES],
    "cdf": cdf(cut_off, [("closed marks", each(unmarked_without_code))]),
    "grd": STANDARD["grd"],
}
FORMATS = {"standard": STANDARD, "classic": CLASSIC}


# ---- what programs find of that


def text_codes(text):
    """A text as a drawing of code page 1252 has it, but for the caret; GDAL takes the code page for Latin-1."""
    out, i = "", 0
    while i < len(text):
        percents = len(text) - i - len(text[i:].lstrip("%"))
        if percents > 1:
            after = text[i + percents:i + percents + 1]
            is_code = percents > 2 or (after.isascii() and after.isalnum())
            out += ("%%%" if is_code else "%") * percents
            i += percents
            continue
        c = text[i]
        if c == "\\" and text[i + 1:i + 3] in ("U+", "u+", "M+", "m+"):
            out += "\\U+005C"
        else:
            out += c.encode("cp1252").decode("latin-1") if fits_1252(c) else "".join(f"\\U+{unit:04X}" for unit in utf16(c))
        i += 1
    return out


def fits_1252(c):
    try:
        c.encode("cp1252")
    except UnicodeEncodeError:
        return False
    return True


def utf16(c):
    units = c.encode("utf-16-be")
    return [units[i] << 8 | units[i + 1] for i in range(0, len(units), 2)]


def as_codes(e):
    return e.but(text=text_codes(e.text), layer="".join(text_codes(c) if c > "~" else c for c in e.layer))


def coloured_by_layer(elements):
    """Elements whose number says "by layer" are read with the layer's, the first that one of its elements has."""
    layers = {}
    for e in elements:
        if 0 < e.colour < 256:
            layers.setdefault(e.layer, e.colour)
    for e in elements:
        e = e.but(colour=layers.get(e.layer, 7)) if e.colour == 256 else e
        yield e.but(rgb=rgb_of(e.colour))


def without_texts_and_colours(e):
    return e.but(text="", size=0.0, angle=0.0, just=0, colour=0, rgb=None, style="", code=NO_CODE, values=None)


def geometry(e):
    return e.but(layer=None, text=None, size=None, angle=None, just=None, colour=None, rgb=None, style=None, code=None)


LAYOUT = "a reader of the layout"
AS_GDAL = (None, each(lambda e: drawn(line_as_polyline(e))))
FLAT_CLOSING = ("the closing side of a chain where it is upright", each(without_upright_closing))
LONG_LINES = ("letters of texts and names beyond 256", each(lambda e: e.but(text=e.text and e.text[:256], layer=e.layer[:256])))
PLACEMENT = ("vertical placement of texts", each(lambda e: e.but(just=e.just & 15)))
CARETS = ("what a ^ in a text means", each(without_caret))
SWAPPED = ("justification (its letters stand in the other order)", each(letters_swapped))
BLANKS = ("blanks at the ends of texts", each(trimmed))
NO_ORIGIN = ("points at the origin", each(lambda e: None if e.kind == POINT and e.xyz[0][:2] == (0, 0) else e))
NO_POINT_FILE = ("points (it reads no point files)", without(POINT))

SEEN = {
    ("dxf", "standard", "ezdxf"): [
        ("letters beyond U+FFFF (it shows halves)", each(in_halves)),
        ("a ^ at the end of a text", each(lambda e: e.but(text=e.text.removesuffix("^"))))],
    ("dxf", "standard", "GDAL"): [
        AS_GDAL, FLAT_CLOSING, ("letters beyond Latin-1 and %% (it shows codes)", each(as_codes)), LONG_LINES],
    ("dxf", "standard", "Tesselink"): [(None, coloured_by_layer), (None, each(closed_in_space))],
    ("shp", "standard", "pyshp"): [BLANKS],
    ("shp", "standard", "GDAL"): [BLANKS, (None, each(untold_numbers))],
    ("shp", "standard", "Tesselink"): [("texts, colours (they stay attributes)", each(without_texts_and_colours))],
    ("asc", "standard", "Tesselink"): [(None, each(lambda e: e.but(colour=0)))],
    ("cdf", "standard", "Tesselink"): [NO_POINT_FILE],
    ("dxf", "classic", "ezdxf"): [
        ("letters beyond ASCII", each(bytes_as("cp1252"))), CARETS, PLACEMENT, ("line types", each(with_known_line_type))],
    ("dxf", "classic", "GDAL"): [
        ("chains of one vertex (it shows points)", each(degenerate_as_point)), AS_GDAL,
        ("letters beyond ASCII", each(bytes_as("latin-1"))), CARETS, PLACEMENT, LONG_LINES],
    ("dxf", "classic", "Tesselink"): [
        (None, coloured_by_layer), (None, each(without_empty)), BASELINES, (None, each(as_utf8_or_1252))],
    ("shp", "classic", "pyshp"): [("attributes (it refuses the table)", each(geometry))],
    ("shp", "classic", "GDAL"): [("attributes (it finds none)", each(geometry))],
    ("shp", "classic", "Tesselink"): [("attributes of the shape's own row", each(geometry)), NO_ORIGIN],
    ("asc", "classic", LAYOUT): [SWAPPED],
    ("asc", "classic", "Tesselink"): [
        SWAPPED, ("colours", each(lambda e: e.but(colour=0, rgb=(0, 0, 0)))), ("chains", without(CHAIN))],
    ("cdf", "classic", "Tesselink"): [
        NO_POINT_FILE, ("a first x or y of 0 (the next one takes its place)", each(first_zero_gives_way))],
}

MEANING = {
    "arcs": "not written at all",
    "attributes": "of a shapefile: all but layer and text; in T/R Digitizer all but township, range and section; in a classic "
                  "shapefile all but the layer",
    "attributes of the own row": "the next row's stand for them",
    "axes": "an x or y of 0 in a chain's first vertex; that of the next one takes its place",
    "baselines": "of texts; they become bottoms",
    "bars": "blanks stand for them",
    "blank texts": "texts of nothing but blanks",
    "chains of `XY, x, y`": "as the classic writer puts them",
    "closed marks": "the chain ends on its first vertex all the same, except where a classic drawing or survey holds it as "
                    "it was stored",
    "colours": "but for the nearest of eighteen, and in a shapefile their numbers; T/R Digitizer has none",
    "curves": "circles and arcs: chains stand for them, in a classic survey with a stray end",
    "decimals of sizes": "of texts",
    "deleted rows": "their shapes are read",
    "entity codes": "of CDF",
    "everything (it is refused)": "with exit code 1",
    "everything (nothing is written)": "with exit code 3",
    "groups of points": "that the points of one element belong together",
    "justification": "of texts",
    "layers": "a survey has a colour in their place; T/R Digitizer has none",
    "letters": "that the code page of the input lacks, or Windows-1252 where it names none; a ? stands for each",
    "line breaks": "in names and texts; blanks stand for them",
    "line types": "",
    "long numbers": "digits of coordinates beyond 15 columns (of points 10), of sizes beyond 5, of angles beyond 3; in the classic "
                    "dialect they may read as another number",
    "long texts": "beyond 100 bytes in a shapefile, and names beyond 50; texts beyond 34 in CDF",
    "m and PointZ": "shapes of the types PointZ, MultiPointZ, MultiPatch and all with m",
    "numbers of colours": "above 256 and below 0",
    "origin": "points, texts and circles at x = 0, y = 0",
    "other shapes": "a file holds points and texts, or lines and curves; two conversions make two files",
    "places of curves": "circles and arcs within 180 by 90 are in UTM metres",
    "points": "CDF lists them in a .pts file beside it, by name, x and y",
    "signs in names": "others than letters, digits, $, -, _ and blanks within; and which of two layers is in capitals",
    "single vertices": "chains of one vertex: points in a drawing, left out of a shapefile",
    "symbols": "names and angles of point symbols",
    "texts": "",
    "true colours": "the nearest number stands for a colour that has none, and none for black",
    "unmatched layers": "layers that were not matched with an entity type, and their colours",
    "vertices at the origin": "at (0, 0, 0)",
    "`VECTOR` records": "nothing behind one is read",
    "z": "",
}
