#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Makes quarter-section.shp, wells.shp and sections.shp, with their indexes and tables, from quarter-section.asc.

Uses pyshp (Debian: python3-pyshp), so the files come from a writer that is not our own. Run it in any
folder; the files land beside this script, byte for byte the same every time.
"""
import math
import pathlib

import shapefile

FOLDER = pathlib.Path(__file__).resolve().parent
TABLE_DATE = (2024, 5, 1)  # pyshp would write today's date into the tables

# One row a shape: layer, label, and how many of the drawing's chains it takes as its parts.
SHAPES = [
    ("SECTION", "SECTION 14", 1),
    ("QUARTER", "NORTH-SOUTH QUARTER LINE", 1),
    ("QUARTER", "EAST-WEST QUARTER LINE", 1),
    ("SIXTEENTH", "NE/4 SIXTEENTH LINES", 2),
    ("SECTION", "ADJOINING SECTION LINES", 6),
    ("ROAD", "COUNTY ROAD 312", 1),
    ("RIGHT OF WAY", "66 FT R/W", 2),
    ("WATER", "MILLER'S CREEK", 1),
    ("WATER", "NORTH FORK", 1),
    ("WATER", "STOCK POND", 1),
    ("LEASE", "HANSEN LEASE", 1),
    ("LEASE", "O'DELL TRACT", 1),
    ("PIPELINE", "6 IN. GAS LINE", 1),
]

# The wells are the drawing's red texts. Layer and total depth by well name.
WELLS = {
    "HANSEN 1": ("OIL", 8412),
    "HANSEN 2": ("OIL", 8390),
    "HANSEN 3A": ("DRY HOLE", 8655),
    "RUIZ 14-1": ("GAS", 6120),
    "RUIZ 14-2": ("GAS", 6084),
    "O'DELL 1": ("WATER", 412),
    "STATE 14-C": ("OIL", 8507),
}

# The plat's section and its neighbours in township 3N, range 68W: number, and place in miles from section 14.
SECTIONS = [(14, 0, 0), (15, -1, 0), (11, 0, 1), (10, -1, 1)]


def read_drawing(path):
    """Returns the drawing's chains, each a list of (x, y), and its texts as (text, x, y, colour)."""
    chains, texts = [], []
    for line in path.read_text(encoding="ascii").splitlines():
        fields = line.replace("XY ", "XY,").split(",")
        if fields[0] in ("LINE", "POLYGON"):
            chains.append([])
        elif fields[0] == "XY":
            chains[-1].append((float(fields[1]), float(fields[2])))
        elif fields[0] == "VECTOR":
            x1, y1, x2, y2 = map(float, fields[1:5])
            chains[-1] += [(x1, y1), (x2, y2)]
        elif fields[0] == "TEXT":
            texts.append((fields[1][1:-1], float(fields[2]), float(fields[3]), fields[-1]))
    return chains, texts


def set_table_date(path):
    year, month, day = TABLE_DATE
    with open(path, "r+b") as table:
        table.seek(1)
        table.write(bytes((year - 1900, month, day)))


def write_plat(chains, path):
    remaining = iter(chains)
    with shapefile.Writer(str(path), shapeType=shapefile.POLYLINE) as plat:
        plat.field("LAYER", "C", 16)
        plat.field("LABEL", "C", 32)
        plat.field("LENGTH_FT", "N", 12, 2)
        for layer, label, count in SHAPES:
            parts = [next(remaining) for _ in range(count)]
            plat.line(parts)
            plat.record(layer, label, sum(math.dist(a, b) for part in parts for a, b in zip(part, part[1:])))
    if next(remaining, None) is not None:
        raise SystemExit("quarter-section.asc holds more chains than SHAPES accounts for")
    set_table_date(path.with_suffix(".dbf"))


def write_wells(texts, path):
    with shapefile.Writer(str(path), shapeType=shapefile.POINT) as wells:
        wells.field("LAYER", "C", 16)
        wells.field("LABEL", "C", 32)
        wells.field("DEPTH_FT", "N", 8, 0)
        for name, x, y, colour in texts:
            if colour == "RED":
                layer, depth = WELLS[name]
                wells.point(x, y)
                wells.record(layer, name, depth)
    set_table_date(path.with_suffix(".dbf"))


def write_sections(chains, path):
    south_west, north_west, north_east, south_east = (chains[0][i] for i in (0, 2, 4, 6))
    east = [b - a for a, b in zip(south_west, south_east)]
    north = [b - a for a, b in zip(south_west, north_west)]
    with shapefile.Writer(str(path), shapeType=shapefile.POLYGON) as sections:
        sections.field("SEC", "N", 2, 0)
        sections.field("TWP", "C", 4)
        sections.field("RGE", "C", 4)
        for number, miles_east, miles_north in SECTIONS:
            ring = [tuple(round(c + miles_east * e + miles_north * n, 2) for c, e, n in zip(corner, east, north))
                    for corner in (south_west, north_west, north_east, south_east, south_west)]
            sections.poly([ring])
            sections.record(number, "3N", "68W")
    set_table_date(path.with_suffix(".dbf"))


def main():
    chains, texts = read_drawing(FOLDER / "quarter-section.asc")
    write_plat(chains, FOLDER / "quarter-section.shp")
    write_wells(texts, FOLDER / "wells.shp")
    write_sections(chains, FOLDER / "sections.shp")


if __name__ == "__main__":
    main()
